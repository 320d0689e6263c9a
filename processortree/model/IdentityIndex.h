#pragma once

#include "processortree/model/IdentityTable.h"

#include <QHash>
#include <QUuid>

#include <mutex>
#include <optional>
#include <vector>

class QStandardItem;

/// Finds rows of the processor tree by identity, as a depth-first search from the root would,
/// without the search.
///
/// The GUI thread changes it and reads items from it; other threads may ask what kind of row an
/// identity names and for the cell of its record, never for the item.
class CIdentityIndex final
{
public:
    using Row = CIdentityTable::Row;
    using Rows = std::vector<CIdentityTable::Entry>;

    /// The row of `uuid`; null when there is none. GUI thread.
    QStandardItem* find(const QUuid& uuid) const
    {
        const CIdentityTable::Entry* found = m_table.find(uuid);
        return found ? found->item : nullptr;
    }

    /// The same for any thread.
    std::optional<Row> row(const QUuid& uuid) const;

    /// What is known of the row of `uuid`; null when there is none. Valid until rows change. GUI
    /// thread.
    const CIdentityTable::Entry* entry(const QUuid& uuid) const { return m_table.find(uuid); }

    /// What is known of `item`; null unless its identity leads to it. Likewise.
    const CIdentityTable::Entry* entry(const QStandardItem& item) const;

    /// Number of processor rows that a search from the root reaches. GUI thread.
    int processorCount() const { return m_processors; }

    /// Number of group rows directly below the root. GUI thread.
    int groupCount() const { return m_groups; }

    /// Starts anew from `root`, which may be null. GUI thread.
    void rebuild(QStandardItem* root);

    /// Takes up `item`, which now stands in the tree, with everything below it that a search would
    /// reach. Returns false when rebuild() is due, because rows share an identity and only a walk
    /// over all of them tells which comes first. GUI thread.
    bool add(QStandardItem* item);

    /// The same for a row without rows below it, which was made with what is told of it here.
    bool add(CIdentityTable::Entry row);

    /// The same for many such rows at once.
    bool add(Rows&& rows);

    /// Forgets `item`, which is about to leave the tree, with everything below it. Returns false
    /// when rebuild() is due once it has left. GUI thread.
    bool remove(const QStandardItem* item);

    /// Makes `item` lead to `record` from now on. GUI thread.
    void setRecord(const QStandardItem* item, const CRecordHandle& record);

    /// While rows move, other threads go on seeing those that have been taken out and not yet put
    /// back. GUI thread.
    void setMoving(bool moving);

private:
    bool insert(QStandardItem* item, std::optional<EPrcTreeNodeType> type);
    void count(const CIdentityTable::Entry& entry, int step);
    bool insertReachable(QStandardItem* item);
    bool insertChildren(QStandardItem* item);
    void erase(const QStandardItem* item);

    mutable std::mutex m_mutex;
    CIdentityTable m_table;
    QHash<QUuid, Row> m_inTransit;
    const QStandardItem* m_root = nullptr; // owned by the model
    int m_processors = 0;
    int m_groups = 0;
    bool m_hasRepeats = false;
    bool m_moving = false;
};
