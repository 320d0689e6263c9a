#include "processortree/model/IdentityTable.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kFewestSlots = 16;

} // namespace

bool CIdentityTable::insert(Entry entry)
{
    reserve(1);
    quint32& slot = m_slots[slotOf(entry.uuid)];
    if (slot != kFree)
        return false;
    slot = static_cast<quint32>(m_entries.size());
    m_entries.push_back(std::move(entry));
    return true;
}

void CIdentityTable::remove(const QUuid& uuid)
{
    const Entry* found = find(uuid);
    if (!found)
        return;
    const std::size_t slot = slotOf(uuid);
    const quint32 place = m_slots[slot];
    freeSlot(slot);
    // The last entry takes the place of the one that goes.
    if (found != &m_entries.back()) {
        m_slots[slotOf(m_entries.back().uuid)] = place;
        std::swap(m_entries[place], m_entries.back());
    }
    m_entries.pop_back();
}

void CIdentityTable::clear()
{
    std::fill(m_slots.begin(), m_slots.end(), kFree);
    m_entries.clear();
}

void CIdentityTable::reserve(std::size_t count)
{
    const std::size_t wanted = m_entries.size() + count;
    std::size_t slotCount = std::max(kFewestSlots, m_slots.size());
    while (wanted * 2 > slotCount)
        slotCount *= 2;
    if (slotCount == m_slots.size())
        return;
    m_entries.reserve(wanted);
    m_slots.assign(slotCount, kFree);
    m_shift = 64;
    for (std::size_t left = slotCount; left > 1; left /= 2)
        --m_shift;
    for (std::size_t index = 0; index < m_entries.size(); ++index)
        m_slots[slotOf(m_entries[index].uuid)] = static_cast<quint32>(index);
}

/// Frees slot `hole`. Slots behind it that a search would reach only across it move up.
void CIdentityTable::freeSlot(std::size_t hole)
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = next(hole); m_slots[slot] != kFree; slot = next(slot)) {
        const std::size_t first = firstSlot(m_entries[m_slots[slot]].uuid);
        if (((slot - first) & mask) >= ((slot - hole) & mask)) {
            m_slots[hole] = m_slots[slot];
            hole = slot;
        }
    }
    m_slots[hole] = kFree;
}
