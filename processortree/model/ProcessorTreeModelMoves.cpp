// Moves of rows in the processor tree, and what a drag of rows carries.

#include "base/NodeType.h"
#include "base/RecordCell.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorTreeModelChange.h"
#include "processortree/model/TreeWalk.h"

#include <QDataStream>
#include <QMimeData>
#include <QScopeGuard>

#include <algorithm>

namespace {

const QString kProcessorMimeType = QStringLiteral("PROCESSOR INFO");

QByteArray dragPayload(bool allProcessors)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << allProcessors;
    return bytes;
}

} // namespace

QStringList CProcessorTreeModel::mimeTypes() const
{
    return {kProcessorMimeType};
}

QMimeData* CProcessorTreeModel::mimeData(const QModelIndexList& indexes) const
{
    bool allProcessors = true;
    for (const QModelIndex& index : indexes) {
        const auto type = nodeType(index);
        if (!type || *type < NodeProcessor) {
            allProcessors = false;
            break;
        }
    }
    auto* payload = new QMimeData;
    const QStringList types = mimeTypes();
    if (!types.isEmpty())
        payload->setData(types.first(), dragPayload(allProcessors));
    return payload;
}

bool CProcessorTreeModel::moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                                   const QModelIndex& destinationParent, int destinationChild)
{
    if (sourceParent == destinationParent || !sourceParent.isValid() || !destinationParent.isValid()
        || sourceRow < 0 || destinationChild < 0)
        return false;
    QStandardItem* source = itemFromIndex(sourceParent);
    QStandardItem* destination = itemFromIndex(destinationParent);
    if (!source || !destination || sourceRow >= source->rowCount()
        || destinationChild > destination->rowCount())
        return false;
    const int movable = qMin(count, source->rowCount() - sourceRow);
    for (int row = sourceRow; row < sourceRow + movable; ++row) {
        if (source->child(row) && isSelfOrBelow(destination, source->child(row)))
            return false;
    }

    const Change change(this);
    const QPersistentModelIndex from = sourceParent;
    const QPersistentModelIndex to = destinationParent;
    m_index.setMoving(true);
    const auto end = qScopeGuard([this] { m_index.setMoving(false); });
    for (int moved = 0; moved < movable && from.isValid(); ++moved) {
        const Move move(this, index(sourceRow, 0, from).data(UuidRole).toUuid());
        const QList<QStandardItem*> row = itemFromIndex(from)->takeRow(sourceRow);
        // Whoever hears of the row's leaving may take its destination away, or rows behind it.
        if (row.isEmpty())
            break;
        if (QStandardItem* parent = itemFromIndex(to))
            parent->insertRow(qMin(destinationChild, parent->rowCount()), row);
        else
            qDeleteAll(row);
    }
    return true;
}

QList<QPersistentModelIndex>
CProcessorTreeModel::moveProcessors(const QList<QPersistentModelIndex>& indexes,
                                    const QUuid& targetId)
{
    QList<QPersistentModelIndex> moved;
    QList<QUuid> movedIds;
    for (const QPersistentModelIndex& index : indexes) {
        // Looked up for each: whoever hears of a move may change the tree.
        const QStandardItem* target = groupItem(targetId);
        const QStandardItem* item = itemFromIndex(index);
        if (!target || !item || nodeType(*item) != NodeProcessor)
            continue;
        const QUuid id = item->data(UuidRole).toUuid();
        const QPersistentModelIndex arrived = moveProcessor(index, target->index());
        if (arrived.isValid()) {
            moved.append(arrived);
            movedIds.append(id);
        }
    }
    const QStandardItem* target = groupItem(targetId);
    const auto handler = GetTargetSelectHandler();
    if (handler && target && !moved.isEmpty()) {
        const auto group = target == m_root
                               ? ProcessorGroupNode()
                               : target->data(NodeDataRole).value<ProcessorGroupNode>();
        handler->SetProcessorGroup(group, targetId, movedIds);
    }
    return moved;
}

/// Moves the processor at `index` to its place under `target`; an invalid index when it stands
/// there already.
QPersistentModelIndex CProcessorTreeModel::moveProcessor(const QModelIndex& index,
                                                         const QPersistentModelIndex& target)
{
    const QStandardItem* item = itemFromIndex(index);
    const QPersistentModelIndex source = index.parent();
    if (source == target)
        return {};
    const CRecordHandle handle = recordHandle(item->data(NodeDataRole));
    const auto key = handle.cell() ? handle.cell()->settle() : recordKey(item->data(NodeDataRole));
    if (!moveRows(source, index.row(), 1, target,
                  m_order.insertionRow(*itemFromIndex(target), key)))
        return {};
    const QStandardItem* parent = itemFromIndex(target);
    for (int row = 0; parent && row < parent->rowCount(); ++row) {
        if (parent->child(row) == item) {
            QPersistentModelIndex arrived = item->index();
            changeMembership(arrived, source);
            return arrived;
        }
    }
    return {};
}

/// After the processor at `moved` came here from `source`: its record names the new group, and the
/// member lists of both groups follow.
void CProcessorTreeModel::changeMembership(const QPersistentModelIndex& moved,
                                           const QPersistentModelIndex& source)
{
    const QPersistentModelIndex target = moved.parent();
    QStandardItem* item = itemFromIndex(moved);
    const QUuid groupId =
        nodeType(QModelIndex(target)) == NodeGroup ? target.data(UuidRole).toUuid() : QUuid();
    ProcessorNode processor;
    modifyProcessor(item, [&](ProcessorNode& record) {
        record.groupId = groupId;
        processor = record;
    });

    for (const QPersistentModelIndex& parent : {source, target}) {
        if (!parent.isValid() || nodeType(QModelIndex(parent)) != NodeGroup)
            continue;
        auto group = parent.data(NodeDataRole).value<ProcessorGroupNode>();
        const auto isMoved = [&](const ProcessorNode& member) { return member.id == processor.id; };
        auto& members = group.processors;
        members.erase(std::remove_if(members.begin(), members.end(), isMoved), members.end());
        if (parent == target && moved.isValid())
            members.insert(qMin(moved.row(), members.size()), processor);
        itemFromIndex(parent)->setData(QVariant::fromValue(group), NodeDataRole);
    }
}

/// Moves the group's processors to the root, from the last one to the first.
void CProcessorTreeModel::emptyGroup(const QPersistentModelIndex& group)
{
    // The host hears of every move and may change the tree, or replace the panel, meanwhile.
    const HandlerPlace::CPanelWatch panel;
    for (int row = rowCount(group) - 1; row >= 0 && group.isValid() && !panel.isOver(); --row) {
        const QModelIndex child = index(row, 0, group);
        if (child.isValid())
            moveProcessors({child}, QUuid());
    }
}
