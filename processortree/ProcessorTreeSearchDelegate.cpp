#include "processortree/ProcessorTreeSearchDelegate.h"

void CProcessorTreeSearchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const
{
    CProcessorDelegate::paint(painter, option, index);
}

QWidget* CProcessorTreeSearchDelegate::createEditor(QWidget*, const QStyleOptionViewItem&,
                                                    const QModelIndex&) const
{
    return nullptr;
}
