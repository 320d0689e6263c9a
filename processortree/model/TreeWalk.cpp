#include "processortree/model/TreeWalk.h"

#include "base/NodeType.h"

#include <QAbstractItemModel>
#include <QStandardItem>

void collectProcessors(const QModelIndex& parent, QList<QUuid>& found)
{
    const QAbstractItemModel* model = parent.model();
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex child = model->index(row, 0, parent);
        if (nodeType(child) == NodeProcessor)
            found.append(child.data(UuidRole).toUuid());
        collectProcessors(child, found);
    }
}

bool isSelfOrBelow(const QStandardItem* item, const QStandardItem* ancestor)
{
    while (item && item != ancestor)
        item = item->parent();
    return item != nullptr;
}
