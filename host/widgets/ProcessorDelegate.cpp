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
    if (!row.count.isEmpty())
        text += QLatin1Char(' ') + row.count;
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
    ProcessorRowPainter(*m_icons, *m_texts).paint(*painter, option, ProcessorRow(index));
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
    const bool hasOwn = index.data(Qt::ToolTipRole).isValid();
    if (event->type() != QEvent::ToolTip || !view || !index.isValid() || hasOwn)
        return QStyledItemDelegate::helpEvent(event, view, option, index);

    const ProcessorRow row(index);
    const QRect warning = ProcessorRowLayout(row, option.rect).warning;
    if (warning.contains(event->pos()))
        CToolTip::ShowText(tr("Monitor warning"), event->globalPos(), view->viewport(), warning);
    else if (ProcessorRowPainter::isElided(option, row))
        CToolTip::ShowText(wholeText(row), event->globalPos(), view->viewport(), option.rect);
    else
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    return true;
}
