// What the tree's view does with rows that move: they stay selected, current and under their field.

#include "base/NodeType.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorSelectionModel.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QLineEdit>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QStandardItem>

#include <algorithm>
#include <utility>

void CProcessorTreeView::moveTo(const QList<QUuid>& processors, const QUuid& group)
{
    const QPointer<CProcessorTreeView> self(this);
    changeTree([processors, group, self](CProcessorTreeModel& tree) {
        // It may have waited for its turn.
        if (self && !self->mayChange())
            return;
        QList<QPersistentModelIndex> rows;
        for (const QUuid& processor : processors) {
            if (const QStandardItem* item = tree.getItem(processor))
                rows.append(item->index());
        }
        if (self)
            ++self->m_batches;
        {
            const auto end = qScopeGuard([&self] {
                if (self && --self->m_batches == 0)
                    self->selectReturned();
            });
            tree.moveProcessors(rows, group);
        }
        if (self && tree.getItem(group))
            self->selectMoved(processors);
    });
}

/// Selects what was to be moved, also what stood there already.
void CProcessorTreeView::selectMoved(const QList<QUuid>& moved)
{
    QItemSelection selection;
    for (const QUuid& processor : moved) {
        const QStandardItem* item = treeModel() ? treeModel()->getItem(processor) : nullptr;
        if (!item || nodeType(*item) != NodeProcessor)
            continue;
        expand(item->index().parent());
        selection.select(item->index(), item->index());
    }
    const QModelIndexList rows = selection.indexes();
    const auto isSelected = [this](const QModelIndex& row) {
        return selectionModel()->isSelected(row);
    };
    const bool isSettled = rows.size() == selectionModel()->selectedIndexes().size()
                           && std::all_of(rows.begin(), rows.end(), isSelected);
    if (!isSettled && !rows.isEmpty())
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

/// Takes note of a row that is about to be removed to come again. Returns whether it is one.
bool CProcessorTreeView::keepMoving(const QModelIndex& parent, int first, int last)
{
    const QModelIndex index = model()->index(first, 0, parent);
    const QUuid id = index.data(UuidRole).toUuid();
    auto* const selection = qobject_cast<CProcessorSelectionModel*>(selectionModel());
    if (!selection || first != last || !treeModel() || !treeModel()->moves().isMoving(id))
        return false;
    MovingRow moving;
    moving.id = id;
    moving.parent = parent;
    moving.row = first;
    moving.isSelected = selection->isSelected(index);
    moving.isCurrent = currentIndex() == index;
    moving.isStanding = standingRow() == index;
    if (m_editedRow == index && openField()) {
        moving.field = openField();
        detachField(moving.field);
    }
    m_movingRows.append(moving);
    // Qt would have a neighbour take over from it.
    const QScopedValueRollback<bool> isMoving(m_isMoving, true);
    if (moving.isCurrent)
        selection->clearCurrentIndex();
    return true;
}

void CProcessorTreeView::onMoveEnded(const QUuid& id)
{
    const auto isIt = [&id](const MovingRow& moving) { return moving.id == id; };
    const auto found = std::find_if(m_movingRows.begin(), m_movingRows.end(), isIt);
    if (found == m_movingRows.end())
        return;
    const MovingRow moving = *found;
    m_movingRows.erase(found);
    const QStandardItem* item = treeModel() ? treeModel()->getItem(id) : nullptr;
    if (item)
        putBack(moving, item->index());
    else
        replaceLost(moving);
}

void CProcessorTreeView::putBack(const MovingRow& moved, const QModelIndex& index)
{
    if (moved.isCurrent || moved.field)
        expand(index.parent());
    auto* const selection = qobject_cast<CProcessorSelectionModel*>(selectionModel());
    if (moved.isSelected)
        m_returned.append(index);
    if (selection && moved.isCurrent) {
        // The view stays where the user scrolled it.
        const QScopedValueRollback<bool> isMoving(m_isMoving, true);
        selection->restoreCurrent(index);
    }
    if (m_batches == 0)
        selectReturned();
    if (moved.field)
        attachField(moved.field, index);
}

/// Selects the rows that have come back, all at once: Qt merges each selection with what is
/// selected.
void CProcessorTreeView::selectReturned()
{
    QItemSelection rows;
    const QList<QPersistentModelIndex> returned = std::exchange(m_returned, {});
    for (const QPersistentModelIndex& index : returned) {
        if (index.isValid())
            rows.select(index, index);
    }
    auto* const selection = qobject_cast<CProcessorSelectionModel*>(selectionModel());
    const QScopedValueRollback<bool> isMoving(m_isMoving, true);
    if (selection && !rows.isEmpty())
        selection->restore(rows);
}

/// While rows move all is painted anew: where they are would take a layout of the view for each.
QRegion CProcessorTreeView::visualRegionForSelection(const QItemSelection& selection) const
{
    return m_isMoving ? viewport()->rect() : CTreeView::visualRegionForSelection(selection);
}

/// Of a row that left for a place that is gone: it was removed after all.
void CProcessorTreeView::replaceLost(const MovingRow& lost)
{
    if (lost.field)
        dropField(lost.field);
    ++m_removedSoFar;
    if (lost.isStanding && lost.parent.isValid())
        takeOver(lost.parent, lost.row - 1, lost.row);
}
