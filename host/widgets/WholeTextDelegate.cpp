#include "host/widgets/WholeTextDelegate.h"

#include "host/widgets/ToolTip.h"

#include <QAbstractItemView>
#include <QHelpEvent>

bool WholeTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    const bool hasOwn = index.data(Qt::ToolTipRole).isValid();
    if (event->type() != QEvent::ToolTip || hasOwn || !isElided(option, index))
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    CToolTip::ShowText(displayText(index.data(), option.locale), event->globalPos(),
                       view->viewport(), option.rect);
    return true;
}

QStyleOptionViewItem WholeTextDelegate::visiblePart(const QStyleOptionViewItem& option) const
{
    return option;
}

bool WholeTextDelegate::isElided(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem item = visiblePart(option);
    initStyleOption(&item, index);
    const QStyle* style = item.widget ? item.widget->style() : nullptr;
    if (!style)
        return false;
    const QRect room = style->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    return item.fontMetrics.horizontalAdvance(item.text) > room.width() - 2 * margin;
}
