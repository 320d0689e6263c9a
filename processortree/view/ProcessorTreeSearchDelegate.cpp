#include "processortree/view/ProcessorTreeSearchDelegate.h"

#include "base/PaintScope.h"

void CProcessorTreeSearchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const
{
    const CPaintScope painting;
    CProcessorDelegate::paint(painter, option, index);
}

QWidget* CProcessorTreeSearchDelegate::createEditor(QWidget*, const QStyleOptionViewItem&,
                                                    const QModelIndex&) const
{
    return nullptr;
}
