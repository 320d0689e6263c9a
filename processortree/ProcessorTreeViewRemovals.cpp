// What the tree's view does while rows are removed.

#include "processortree/NodeType.h"
#include "processortree/ProcessorTreeModel.h"
#include "processortree/ProcessorTreeView.h"

#include <utility>

namespace {

/// The first one of selectedIndexes(), without a list of all for each row that is removed.
QModelIndex firstSelected(const QItemSelectionModel* selection)
{
    const Qt::ItemFlags selectable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    const QItemSelection ranges = selection ? selection->selection() : QItemSelection();
    for (const QItemSelectionRange& range : ranges) {
        for (int row = range.top(); range.isValid() && row <= range.bottom(); ++row) {
            const QModelIndex index = range.model()->index(row, range.left(), range.parent());
            if ((index.flags() & selectable) == selectable)
                return index;
        }
    }
    return {};
}

} // namespace

/// Where one row after the other is removed, the last current one is shown, when all have gone:
/// each time the view would lay out its rows anew.
void CProcessorTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    if (!treeModel() || !treeModel()->isRemoving()) {
        // A group is current only until the selection model clears it, and may be renamed
        // meanwhile: Qt would close the field on it.
        const bool isPassing = nodeType(previous) == NodeGroup;
        CTreeView::currentChanged(current, isPassing ? QModelIndex() : previous);
        return;
    }
    const auto show = [this] {
        m_isCurrentDue = false;
        CTreeView::currentChanged(currentIndex(), {});
    };
    if (!std::exchange(m_isCurrentDue, true))
        QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void CProcessorTreeView::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last)
{
    // The root goes with a reset only, and that says so itself.
    if (!parent.isValid())
        return;
    CTreeView::rowsAboutToBeRemoved(parent, first, last);
    ++m_removedSoFar;
    replaceRemoved(parent, first, last);
}

/// Finds another row to stand on when the one that the user stands on is removed.
void CProcessorTreeView::replaceRemoved(const QModelIndex& parent, int first, int last)
{
    const QModelIndex selected = firstSelected(selectionModel());
    const QModelIndex standing = selected.isValid() ? selected : currentIndex();
    if (standing.parent() != parent || standing.row() < first || standing.row() > last)
        return;
    if (nodeType(standing) == NodeGroup) {
        selectionModel()->select(model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
        return;
    }
    const auto isProcessorAt = [&](const QModelIndex& under, int row) {
        const QModelIndex index = model()->index(row, 0, under);
        return index.flags().testFlag(Qt::ItemIsEnabled) && nodeType(index) == NodeProcessor;
    };
    const auto choose = [this](const QModelIndex& index) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    };
    // The choice may end the view.
    const auto chooseAmong = [&](const QModelIndex& under, int from, int to, int step) {
        for (int row = from; row != to; row += step) {
            if (isProcessorAt(under, row)) {
                choose(model()->index(row, 0, under));
                return true;
            }
        }
        return false;
    };
    if (last - first + 1 >= model()->rowCount(parent)) {
        const QModelIndex root = model()->index(0, 0);
        if (parent != root)
            chooseAmong(root, 0, model()->rowCount(root), 1);
        return;
    }
    if (m_removedSoFar == m_pendingDeletions
        && !chooseAmong(parent, last + 1, model()->rowCount(parent), 1))
        chooseAmong(parent, first - 1, -1, -1);
}
