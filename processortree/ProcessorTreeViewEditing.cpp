// The field for a name in the tree's view.

#include "plugin/TargetSelectHandler.h"
#include "processortree/ArrivalWatch.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorTreeView.h"

namespace {

/// Whether the row's menu would offer it.
bool mayRename(const QModelIndex& index)
{
    const auto type = nodeType(index);
    if (type != NodeProcessor)
        return type == NodeGroup;
    const QUuid id = index.data(UuidRole).toUuid();
    return !askHost(&Host::GetProcessorNode, id).hostFlag13
           || askHost(&Host::CanRenameProcessor, id);
}

} // namespace

void CProcessorTreeView::RenameSelection()
{
    const QList<QPersistentModelIndex> selected = selectedRows();
    const Life alive(this);
    if (selected.size() == 1 && mayRename(selected.first()) && alive)
        openEditor(selected.first());
}

void CProcessorTreeView::openEditor(const QPersistentModelIndex& index)
{
    // Qt warns of what cannot be edited.
    if (!index.isValid() || !index.flags().testFlag(Qt::ItemIsEditable) || state() == EditingState)
        return;
    m_arrivals->stop();
    edit(index);
}

/// Tab would go on with the next row, which nobody asked whether it may be renamed.
void CProcessorTreeView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool goesOn = hint == QAbstractItemDelegate::EditNextItem
                        || hint == QAbstractItemDelegate::EditPreviousItem;
    CTreeView::closeEditor(editor, goesOn ? QAbstractItemDelegate::NoHint : hint);
}
