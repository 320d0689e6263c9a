// What the tree's view does while rows are removed.

#include "base/NodeType.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QLineEdit>

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
    if (m_isMoving) {
        viewport()->update();
        return;
    }
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
    if (keepMoving(parent, first, last)) {
        CTreeView::rowsAboutToBeRemoved(parent, first, last);
        return;
    }
    CTreeView::rowsAboutToBeRemoved(parent, first, last);
    if (!openField())
        m_field = nullptr;
    ++m_removedSoFar;
    replaceRemoved(parent, first, last);
}

/// The row that the user stands on: the first one that is selected, or else the current one.
QModelIndex CProcessorTreeView::standingRow() const
{
    const QModelIndex selected = firstSelected(selectionModel());
    return selected.isValid() ? selected : currentIndex();
}

/// Finds another row to stand on when the one that the user stands on is removed.
void CProcessorTreeView::replaceRemoved(const QModelIndex& parent, int first, int last)
{
    const QModelIndex standing = standingRow();
    if (standing.parent() != parent || standing.row() < first || standing.row() > last)
        return;
    if (nodeType(standing) == NodeGroup) {
        selectionModel()->select(model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
        return;
    }
    takeOver(parent, first - 1, last + 1);
}

/// Makes a processor of `parent` current once the last of the requested deletions has arrived: the
/// next one from row `below` downward, or else from row `above` upward. Where there are no such
/// rows the first processor that is in no group becomes current at once.
void CProcessorTreeView::takeOver(const QModelIndex& parent, int above, int below)
{
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
    if (above < 0 && below >= model()->rowCount(parent)) {
        const QModelIndex root = model()->index(0, 0);
        if (parent != root)
            chooseAmong(root, 0, model()->rowCount(root), 1);
        return;
    }
    if (m_removedSoFar == m_pendingDeletions
        && !chooseAmong(parent, below, model()->rowCount(parent), 1))
        chooseAmong(parent, above, -1, -1);
}
