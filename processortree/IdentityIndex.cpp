#include "processortree/IdentityIndex.h"

#include "processortree/NodeType.h"

#include <QStandardItem>

#include <utility>

std::optional<CIdentityIndex::Row> CIdentityIndex::row(const QUuid& uuid) const
{
    const std::lock_guard guard(m_mutex);
    if (const CIdentityTable::Entry* found = m_table.find(uuid))
        return found->row;
    if (const auto found = m_inTransit.constFind(uuid); found != m_inTransit.cend())
        return *found;
    return std::nullopt;
}

void CIdentityIndex::rebuild(QStandardItem* root)
{
    const std::lock_guard guard(m_mutex);
    m_table.clear();
    m_hasRepeats = false;
    if (!root)
        return;
    insert(root, nodeType(*root));
    m_hasRepeats = !insertChildren(root);
}

bool CIdentityIndex::add(QStandardItem* item)
{
    const std::lock_guard guard(m_mutex);
    if (!insertReachable(item))
        m_hasRepeats = true;
    return !m_hasRepeats;
}

bool CIdentityIndex::add(Rows&& rows)
{
    const std::lock_guard guard(m_mutex);
    m_table.reserve(rows.size());
    for (CIdentityTable::Entry& row : rows) {
        if (!m_table.insert(std::move(row)))
            m_hasRepeats = true;
    }
    return !m_hasRepeats;
}

bool CIdentityIndex::remove(const QStandardItem* item)
{
    const std::lock_guard guard(m_mutex);
    erase(item);
    return !m_hasRepeats;
}

void CIdentityIndex::setRecord(const QStandardItem* item, const CRecordHandle& record)
{
    const std::lock_guard guard(m_mutex);
    CIdentityTable::Entry* found = m_table.find(item->data(UuidRole).toUuid());
    if (found && found->item == item)
        found->row.record = record;
}

void CIdentityIndex::setMoving(bool moving)
{
    const std::lock_guard guard(m_mutex);
    m_moving = moving;
    if (!moving)
        m_inTransit.clear();
}

/// Whether the identity is new.
bool CIdentityIndex::insert(QStandardItem* item, std::optional<EPrcTreeNodeType> type)
{
    const QUuid uuid = item->data(UuidRole).toUuid();
    return m_table.insert({uuid, item, {type, recordHandle(item->data(NodeDataRole))}});
}

/// Rows without a type are passed over, and only groups are entered.
bool CIdentityIndex::insertReachable(QStandardItem* item)
{
    const auto type = nodeType(*item);
    if (!type)
        return true;
    const bool isNew = insert(item, type);
    return *type == NodeGroup ? insertChildren(item) && isNew : isNew;
}

bool CIdentityIndex::insertChildren(QStandardItem* item)
{
    bool allNew = true;
    for (int row = 0; row < item->rowCount(); ++row) {
        if (QStandardItem* child = item->child(row))
            allNew = insertReachable(child) && allNew;
    }
    return allNew;
}

void CIdentityIndex::erase(const QStandardItem* item)
{
    const QUuid uuid = item->data(UuidRole).toUuid();
    const CIdentityTable::Entry* found = m_table.find(uuid);
    if (found && found->item == item) {
        if (m_moving)
            m_inTransit.insert(uuid, found->row);
        m_table.remove(uuid);
    }
    for (int row = 0; row < item->rowCount(); ++row) {
        if (const QStandardItem* child = item->child(row))
            erase(child);
    }
}
