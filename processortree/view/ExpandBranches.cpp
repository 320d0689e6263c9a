#include "processortree/view/ExpandBranches.h"

#include <QTreeView>

namespace {

void expandBelow(QTreeView& view, const QModelIndex& parent)
{
    const QAbstractItemModel* model = view.model();
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex child = model->index(row, 0, parent);
        if (!model->hasChildren(child))
            continue;
        view.expand(child);
        expandBelow(view, child);
    }
}

} // namespace

void expandBranches(QTreeView& view)
{
    if (view.model())
        expandBelow(view, view.rootIndex());
}
