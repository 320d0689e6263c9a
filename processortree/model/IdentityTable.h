#pragma once

#include "base/RecordCell.h"

#include <QUuid>

#include <cstring>
#include <optional>
#include <type_traits>
#include <vector>

class QStandardItem;

/// The rows of a tree by identity, one entry behind the other. A refill fills it anew, so it does
/// not allocate each entry on its own as the standard containers do.
class CIdentityTable final
{
public:
    /// What threads other than the GUI thread may know of a row.
    struct Row
    {
        std::optional<EPrcTreeNodeType> type;
        CRecordHandle record;
    };

    struct Entry
    {
        QUuid uuid;
        QStandardItem* item; // owned by the model
        Row row;
    };

    /// The entry of `uuid`, null for none. Valid until the next insertion or removal.
    Entry* find(const QUuid& uuid) { return m_entries.empty() ? nullptr : entryIn(slotOf(uuid)); }
    const Entry* find(const QUuid& uuid) const
    {
        return m_entries.empty() ? nullptr : entryIn(slotOf(uuid));
    }

    /// Takes up `entry` unless its identity is known; returns whether it is new.
    bool insert(Entry entry);

    /// Forgets the entry of `uuid`, if there is one.
    void remove(const QUuid& uuid);

    void clear();

    /// Makes room for `count` more.
    void reserve(std::size_t count);

private:
    std::size_t firstSlot(const QUuid& uuid) const
    {
        // Identities may differ in any of their bits, and the upper ones of the product tell them
        // all.
        constexpr quint64 golden = 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>((qHash(uuid) * golden) >> m_shift);
    }

    /// QUuid's own comparison goes field by field, ten branches where this is one.
    static bool isSame(const QUuid& left, const QUuid& right)
    {
        static_assert(std::has_unique_object_representations_v<QUuid>);
        return std::memcmp(&left, &right, sizeof(QUuid)) == 0;
    }

    /// The slot that leads to `uuid`, or the free one that would.
    std::size_t slotOf(const QUuid& uuid) const
    {
        std::size_t slot = firstSlot(uuid);
        while (m_slots[slot] != kFree && !isSame(m_entries[m_slots[slot]].uuid, uuid))
            slot = next(slot);
        return slot;
    }

    Entry* entryIn(std::size_t slot)
    {
        return m_slots[slot] == kFree ? nullptr : &m_entries[m_slots[slot]];
    }
    const Entry* entryIn(std::size_t slot) const
    {
        return m_slots[slot] == kFree ? nullptr : &m_entries[m_slots[slot]];
    }

    std::size_t next(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }
    void freeSlot(std::size_t hole);

    static constexpr quint32 kFree = 0xFFFFFFFF;

    std::vector<Entry> m_entries;
    std::vector<quint32>
        m_slots;      // indexes of entries; as many as a power of two, half of them free
    int m_shift = 64; // leaves as many bits as m_slots has
};
