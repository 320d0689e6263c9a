// Records of the rows in the processor tree: how they change, and who hears of it.

#include "base/NodeType.h"
#include "processortree/model/ProcessorTreeModelChange.h"

#include <QSignalBlocker>

#include <utility>

namespace {

/// One list for all announcements.
const QVector<int>& recordRoles()
{
    static const QVector<int> roles{NodeDataRole};
    return roles;
}

} // namespace

void CProcessorTreeModel::updateProcessor(QStandardItem* item, const ProcessorNode& processor)
{
    if (!item || item == m_root)
        return;
    const CIdentityIndex::Row row = rowOf(*item);
    if (row.type == NodeProcessor && processor.reachedByIp) {
        const CRecordCell* cell = row.record.cell();
        const ProcessorNode known = cell ? cell->load() : processorRecord(item->data(NodeDataRole));
        const quint32 placed = cell ? cell->placedKey().ipAddress : known.ipAddress;
        // A monitor state may have brought the new address before, and left the row where it stood.
        if (processor.ipAddress != known.ipAddress || processor.ipAddress != placed) {
            const Move move(this, known.id);
            replaceProcessor(known.id, processor);
            return;
        }
    }
    // The record first: who hears of the new text may look at it.
    const QPersistentModelIndex index = item->index();
    storeProcessor(item, row.record, processor);
    if (index.isValid())
        itemFromIndex(index)->setText(processor.name);
}

/// Removes the row of `known` and gives `processor` one at its place. Most often there are as many
/// processors afterwards, so that the root's text stays as it is.
void CProcessorTreeModel::replaceProcessor(const QUuid& known, const ProcessorNode& processor)
{
    const Change change(this);
    const CIdentityTable::Entry* old = m_index.entry(known);
    if (old && old->row.type == NodeProcessor)
        old->item->parent()->removeRow(old->item->row());
    else
        removeNode(known);
    if (QStandardItem* parent = groupItem(processor.groupId))
        insertProcessor(processor, parent);
    if (m_root && (m_rootCount != getAllProcessorCount() || m_root->text() != m_rootText))
        updateRootText();
}

void CProcessorTreeModel::updateGroup(QStandardItem* item, const ProcessorGroupNode& group)
{
    if (!item || nodeType(*item) != NodeGroup)
        return;
    const QPersistentModelIndex index = item->index();
    item->setData(QVariant::fromValue(group), NodeDataRole);
    if (index.isValid())
        itemFromIndex(index)->setText(group.name);
}

void CProcessorTreeModel::announceRecords(const QList<QUuid>& processors)
{
    for (const QUuid& uuid : processors) {
        if (const QStandardItem* item = getItem(uuid))
            announceRecord(*item);
    }
}

/// Type and record of `item`, from the index where it knows the row: items hand out copies.
CIdentityIndex::Row CProcessorTreeModel::rowOf(const QStandardItem& item) const
{
    if (const CIdentityTable::Entry* known = m_index.entry(item))
        return known->row;
    return {nodeType(item), recordHandle(item.data(NodeDataRole))};
}

/// `record` is the item's.
void CProcessorTreeModel::storeProcessor(QStandardItem* item, const CRecordHandle& record,
                                         const ProcessorNode& processor)
{
    if (!record.cell()) {
        item->setData(QVariant::fromValue(CRecordHandle(processor)), NodeDataRole);
        return;
    }
    record.cell()->store(processor);
    announceRecord(*item);
}

/// Changes a part of the record, which another thread may replace meanwhile.
void CProcessorTreeModel::modifyProcessor(QStandardItem* item,
                                          const std::function<void(ProcessorNode&)>& change)
{
    const CRecordHandle record = rowOf(*item).record;
    if (!record.cell()) {
        ProcessorNode processor = processorRecord(item->data(NodeDataRole));
        change(processor);
        storeProcessor(item, record, processor);
        return;
    }
    record.cell()->modify(change);
    announceRecord(*item);
}

/// Tells views that the record in the row's cell was replaced. The item holds the same handle as
/// before, so it has nothing to announce itself.
void CProcessorTreeModel::announceRecord(const QStandardItem& item)
{
    const QModelIndex index = item.index();
    if (!index.isValid())
        return;
    m_isCellKept = !signalsBlocked();
    emit dataChanged(index, index, recordRoles());
}

void CProcessorTreeModel::onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                        const QVector<int>& roles)
{
    // This model hears of it first, before others change more.
    const bool isCellKept = std::exchange(m_isCellKept, false);
    const auto concerns = [&](int role) { return roles.isEmpty() || roles.contains(role); };
    const bool concernsType = concerns(NodeTypeRole);
    if (concernsType || concerns(NodeDataRole)) {
        if (const QStandardItem* parent = itemFromIndex(topLeft.parent()))
            m_order.onChanged(*parent, topLeft.row(), bottomRight.row());
        for (int row = topLeft.row(); row <= bottomRight.row() && !isCellKept; ++row) {
            QStandardItem* item = itemFromIndex(topLeft.sibling(row, 0));
            if (!item)
                continue;
            if (concernsType)
                adoptRecords(item);
            else
                adoptRecord(item);
            m_index.setRecord(item, recordHandle(item->data(NodeDataRole)));
        }
    }
    if (concernsType || concerns(UuidRole))
        onRestructured();
}

/// A record that somebody stored plainly moves into a cell, where the work thread can reach it; one
/// in the cell of another item is copied, for that item's goes on changing.
void CProcessorTreeModel::adoptRecord(QStandardItem* item)
{
    const QVariant stored = item->data(NodeDataRole);
    CRecordCell* const cell = recordHandle(stored).cell();
    if (cell
            ? cell->isOf(item)
            : stored.userType() != qMetaTypeId<ProcessorNode>() || nodeType(*item) != NodeProcessor)
        return;
    const QSignalBlocker blocker(this);
    item->setData(QVariant::fromValue(CRecordHandle(processorRecord(stored))), NodeDataRole);
}

void CProcessorTreeModel::adoptRecords(QStandardItem* item)
{
    adoptRecord(item);
    for (int row = 0; row < item->rowCount(); ++row) {
        if (QStandardItem* child = item->child(row))
            adoptRecords(child);
    }
}
