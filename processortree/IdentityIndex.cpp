#include "processortree/IdentityIndex.h"

#include "processortree/NodeType.h"

#include <QStandardItem>

std::optional<CIdentityIndex::Row> CIdentityIndex::row(const QUuid& uuid) const
{
    const std::lock_guard guard(m_mutex);
    if (const auto found = m_entries.constFind(uuid); found != m_entries.cend())
        return found->row;
    if (const auto found = m_inTransit.constFind(uuid); found != m_inTransit.cend())
        return *found;
    return std::nullopt;
}

void CIdentityIndex::rebuild(QStandardItem* root)
{
    const std::lock_guard guard(m_mutex);
    m_entries.clear();
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

bool CIdentityIndex::remove(const QStandardItem* item)
{
    const std::lock_guard guard(m_mutex);
    erase(item);
    return !m_hasRepeats;
}

void CIdentityIndex::setRecord(const QStandardItem* item, const CRecordHandle& record)
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_entries.find(item->data(UuidRole).toUuid());
    if (found != m_entries.end() && found->item == item)
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
    if (m_entries.contains(uuid))
        return false;
    m_entries.insert(uuid, {item, {type, recordHandle(item->data(NodeDataRole))}});
    return true;
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
    const auto found = m_entries.find(uuid);
    if (found != m_entries.end() && found->item == item) {
        if (m_moving)
            m_inTransit.insert(uuid, found->row);
        m_entries.erase(found);
    }
    for (int row = 0; row < item->rowCount(); ++row) {
        if (const QStandardItem* child = item->child(row))
            erase(child);
    }
}
