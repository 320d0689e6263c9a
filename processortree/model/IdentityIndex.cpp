#include "processortree/model/IdentityIndex.h"

#include "base/NodeType.h"

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

const CIdentityTable::Entry* CIdentityIndex::entry(const QStandardItem& item) const
{
    const CIdentityTable::Entry* found = m_table.find(item.data(UuidRole).toUuid());
    return found && found->item == &item ? found : nullptr;
}

void CIdentityIndex::rebuild(QStandardItem* root)
{
    const std::lock_guard guard(m_mutex);
    m_table.clear();
    m_root = root;
    m_processors = 0;
    m_groups = 0;
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

bool CIdentityIndex::add(CIdentityTable::Entry row)
{
    const std::lock_guard guard(m_mutex);
    count(row, 1);
    if (!m_table.insert(std::move(row)))
        m_hasRepeats = true;
    return !m_hasRepeats;
}

bool CIdentityIndex::add(Rows&& rows)
{
    const std::lock_guard guard(m_mutex);
    m_table.reserve(rows.size());
    for (CIdentityTable::Entry& row : rows) {
        count(row, 1);
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

/// Returns whether the identity is new.
bool CIdentityIndex::insert(QStandardItem* item, std::optional<EPrcTreeNodeType> type)
{
    const QUuid uuid = item->data(UuidRole).toUuid();
    CIdentityTable::Entry entry{uuid, item, {type, recordHandle(item->data(NodeDataRole))}};
    count(entry, 1);
    return m_table.insert(std::move(entry));
}

/// Rows that share an identity count each. They are not all in the table, but as long as there are
/// any, every removal leads to a rebuild.
void CIdentityIndex::count(const CIdentityTable::Entry& entry, int step)
{
    if (entry.item == m_root)
        return;
    if (entry.row.type == NodeProcessor)
        m_processors += step;
    else if (entry.row.type == NodeGroup && entry.item->parent() == m_root)
        m_groups += step;
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
        count(*found, -1);
        m_table.remove(uuid);
    }
    for (int row = 0; row < item->rowCount(); ++row) {
        if (const QStandardItem* child = item->child(row))
            erase(child);
    }
}
