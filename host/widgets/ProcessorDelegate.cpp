#include "host/widgets/ProcessorDelegate.h"

void CProcessorDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
}

QSize CProcessorDelegate::sizeHint(const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    return {0, QStyledItemDelegate::sizeHint(option, index).height()};
}

bool CProcessorDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index)
{
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}
