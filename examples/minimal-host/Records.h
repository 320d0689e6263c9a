#pragma once

#include <QList>
#include <QUuid>

#include <mutex>

/// Records in the host's order, found by identity. Thread-safe, because the panel asks on several
/// threads. No lock is held once a call has returned, so none is held while an event is told.
template <typename Record>
class Records final
{
public:
    QList<Record> all() const
    {
        const std::lock_guard guard(m_mutex);
        return m_records;
    }

    /// Returns an empty record, which says "there is none" to the panel, for an unknown identity.
    Record value(const QUuid& id) const
    {
        const std::lock_guard guard(m_mutex);
        for (const Record& record : m_records) {
            if (record.id == id)
                return record;
        }
        return Record();
    }

    void append(const Record& record)
    {
        const std::lock_guard guard(m_mutex);
        m_records.append(record);
    }

    /// Calls `change` with the record. Returns false for an unknown identity.
    template <typename Change>
    bool change(const QUuid& id, Change change)
    {
        const std::lock_guard guard(m_mutex);
        for (Record& record : m_records) {
            if (record.id == id) {
                change(record);
                return true;
            }
        }
        return false;
    }

    void remove(const QUuid& id)
    {
        const std::lock_guard guard(m_mutex);
        for (int row = m_records.size() - 1; row >= 0; --row) {
            if (m_records.at(row).id == id)
                m_records.removeAt(row);
        }
    }

private:
    mutable std::mutex m_mutex;
    QList<Record> m_records;
};
