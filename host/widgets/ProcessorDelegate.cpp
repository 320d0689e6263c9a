#include "host/widgets/ProcessorDelegate.h"

#include "host/widgets/ElidedTexts.h"
#include "host/widgets/ProcessorRow.h"
#include "host/widgets/ProcessorRowPainter.h"
#include "host/widgets/SvgIcons.h"
#include "host/widgets/ToolTip.h"

#include <QAbstractItemView>
#include <QHelpEvent>

namespace {

QString wholeText(const ProcessorRow& row)
{
    QString text = row.name;
    if (!row.count.isEmpty() && row.type != NodeRoot) // the root's text has no space there
        text += QLatin1Char(' ');
    text += row.count;
    if (!row.detail.isEmpty())
        text += QLatin1Char('\n') + row.detail;
    return text;
}

} // namespace

CProcessorDelegate::CProcessorDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
    , m_icons(SvgIcons::shared())
    , m_texts(std::make_unique<ElidedTexts>())
{
    ProcessorRowPainter(*m_icons, *m_texts).load();
}

CProcessorDelegate::~CProcessorDelegate() = default;

void CProcessorDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    paintRow(*painter, option, index, RowEnd::Nothing);
}

void CProcessorDelegate::paintRow(QPainter& painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index, RowEnd end) const
{
    ProcessorRowPainter(*m_icons, *m_texts).paint(painter, option, ProcessorRow(index), end);
}

QSize CProcessorDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                                   const QModelIndex& index) const
{
    const QVariant hint = index.data(Qt::SizeHintRole);
    if (hint.isValid())
        return {0, hint.toSize().height()};
    const bool processor = processorRowType(index) == NodeProcessor;
    return {0,
            processor ? ProcessorRowMetrics::kProcessorHeight : ProcessorRowMetrics::kOtherHeight};
}

bool CProcessorDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index)
{
    return showHelp(event, view, option, index, RowEnd::Nothing);
}

bool CProcessorDelegate::showHelp(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index,
                                  RowEnd end)
{
    const bool hasOwn = index.data(Qt::ToolTipRole).isValid();
    if (event->type() != QEvent::ToolTip || !view || !index.isValid() || hasOwn)
        return QStyledItemDelegate::helpEvent(event, view, option, index);

    const ProcessorRow row(index);
    QStyleOptionViewItem shown(option);
    shown.state |= QStyle::State_MouseOver; // as the row is painted, which Qt does not tell
    const ProcessorRowLayout layout(row, shown, end);
    const QRect& warning = layout.warning;
    if (row.hasBackup && layout.icon.contains(event->pos()))
        CToolTip::ShowText(tr("Has a backup"), event->globalPos(), view->viewport(), layout.icon);
    else if (warning.contains(event->pos()))
        CToolTip::ShowText(tr("Monitor warning"), event->globalPos(), view->viewport(), warning);
    else if (ProcessorRowPainter::isElided(shown, row, end))
        CToolTip::ShowText(wholeText(row), event->globalPos(), view->viewport(), option.rect);
    else
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    return true;
}
