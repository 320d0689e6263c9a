#include "search/CompleterProcessorDelegate.h"

#include "Interface/ProcessorNode.h"
#include "base/PaintScope.h"
#include "base/ProcessorTexts.h"
#include "host/widgets/SvgIcons.h"
#include "host/widgets/ToolTip.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>

namespace {

constexpr int kIconSize = 24;
constexpr int kIconLeft = 10;
constexpr int kTextLeft = 41;
constexpr int kTextRight = 24; // from the right edge
constexpr int kLeastRight = 4;
constexpr int kTextPixels = 12;
constexpr int kTextWeight = 50;
constexpr int kBackupMode = 2;

constexpr QRgb kStrong = qRgb(240, 240, 246);
constexpr QRgb kNormal = qRgb(200, 200, 205);
constexpr QRgb kWeak = qRgb(136, 136, 146);

struct Icons
{
    QString online = QStringLiteral(":/Image/Target/Processor/online_normal.svg");
    QString offline = QStringLiteral(":/Image/Target/Processor/offline_normal.svg");
    QString backupOnline = QStringLiteral(":/Image/Target/Processor/backup-online_normal.svg");
    QString backupOffline = QStringLiteral(":/Image/Target/Processor/backup-offline_normal.svg");
};

const Icons& icons()
{
    static const Icons icons;
    return icons;
}

const QString& iconOf(const ProcessorNode& record)
{
    if (record.redundancyMode == kBackupMode)
        return record.online ? icons().backupOnline : icons().backupOffline;
    return record.online ? icons().online : icons().offline;
}

ProcessorNode recordOf(const QModelIndex& index)
{
    return index.data(NodeDataRole).value<ProcessorNode>();
}

QFont textFont(const QStyleOptionViewItem& option)
{
    QFont font = option.font;
    font.setWeight(kTextWeight);
    font.setPixelSize(kTextPixels);
    return font;
}

QRect nameRect(const QRect& row)
{
    return {row.left() + kTextLeft, row.top(), row.width() - kTextLeft - kTextRight,
            row.height() / 2};
}

/// Below the name. An address that needs more room extends beyond it, because a part of an address
/// is useless.
QRect detailRect(const QRect& row, int needed)
{
    const QRect name = nameRect(row);
    const int most = row.width() - kTextLeft - kLeastRight;
    return {name.left(), name.bottom() + 1, qBound(name.width(), needed, most),
            row.height() - name.height()};
}

QString fitted(const QFontMetrics& metrics, const QString& text, const QRect& room)
{
    return room.width() > 0 ? metrics.elidedText(text, Qt::ElideRight, room.width()) : QString();
}

} // namespace

CCompleterProcessorDelegate::CCompleterProcessorDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
    , m_icons(SvgIcons::shared())
{
    const Icons& all = icons();
    for (const QString& path : {all.online, all.offline, all.backupOnline, all.backupOffline})
        m_icons->load(path);
}

CCompleterProcessorDelegate::~CCompleterProcessorDelegate() = default;

void CCompleterProcessorDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
    const CPaintScope painting;
    const QRect& row = option.rect;
    painter->save();
    QStyleOptionViewItem background = option;
    background.showDecorationSelected = true;
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &background, painter, option.widget);

    const ProcessorNode record = recordOf(index);
    m_icons->paint(*painter,
                   QPointF(row.left() + kIconLeft, row.top() + (row.height() - kIconSize) / 2.0),
                   iconOf(record), kIconSize);

    const QFont font = textFont(option);
    const QFontMetrics metrics(font);
    const bool isStrong = option.state & (QStyle::State_Selected | QStyle::State_MouseOver);
    painter->setFont(font);
    painter->setPen(QColor(isStrong ? kStrong : kNormal));
    painter->drawText(nameRect(row), Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine,
                      fitted(metrics, record.name, nameRect(row)));
    painter->setPen(QColor(isStrong ? kNormal : kWeak));
    const QString detail = processorDetail(record);
    const QRect room = detailRect(row, metrics.horizontalAdvance(detail) + 1);
    painter->drawText(room, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                      fitted(metrics, detail, room));
    painter->restore();
}

bool CCompleterProcessorDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                            const QStyleOptionViewItem& option,
                                            const QModelIndex& index)
{
    const QString name = recordOf(index).name;
    const QRect room = nameRect(option.rect);
    const bool isElided = fitted(QFontMetrics(textFont(option)), name, room) != name;
    if (!event || !view || event->type() != QEvent::ToolTip || !isElided
        || !room.contains(event->pos()))
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    CToolTip::ShowText(name, event->globalPos(), view->viewport(), room);
    return true;
}
