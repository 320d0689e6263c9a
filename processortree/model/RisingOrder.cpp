#include "processortree/model/RisingOrder.h"

#include "base/NodeType.h"
#include "processortree/model/ProcessorOrder.h"

#include <QStandardItem>

#include <algorithm>

namespace {

constexpr qint64 kAboveProcessors = -1;
constexpr qint64 kBehindAddresses = qint64{1} << 32;
constexpr qint64 kByNumber = kBehindAddresses + 1; // nothing rises past it

qint64 rank(const CRecordCell::Key& key)
{
    if (key.ipAddress == kNoProcessorAddress)
        return kBehindAddresses;
    return key.reachedByIp && key.ipAddress != 0 ? key.ipAddress : kByNumber;
}

qint64 rank(const QStandardItem& parent, int row)
{
    const QStandardItem* item = parent.child(row);
    if (!item || nodeType(*item) != NodeProcessor)
        return kAboveProcessors;
    return rank(placedKey(item->data(NodeDataRole)));
}

/// Returns whether the ranks rise from row `first` to row `last`, which need not exist.
bool rises(const std::vector<qint64>& ranks, int first, int last)
{
    const auto begin = ranks.begin() + std::max(first, 0);
    const auto end = ranks.begin() + std::min(last + 1, static_cast<int>(ranks.size()));
    return std::is_sorted(begin, end) && std::find(begin, end, kByNumber) == end;
}

} // namespace

int CRisingOrder::Branch::rowCount() const
{
    return static_cast<int>(ranks.size()) - (vacant == kNone ? 0 : 1);
}

void CRisingOrder::Branch::closeGap()
{
    if (vacant != kNone)
        ranks.erase(ranks.begin() + vacant);
    vacant = kNone;
}

/// Moves the vacant rank to where a new row has come.
void CRisingOrder::Branch::moveGap(int row)
{
    const auto gap = ranks.begin() + vacant;
    const auto place = ranks.begin() + row;
    if (gap < place)
        std::rotate(gap, gap + 1, place + 1);
    else
        std::rotate(place, gap, gap + 1);
    vacant = row;
}

int CRisingOrder::insertionRow(const QStandardItem& parent, const CRecordCell::Key& key)
{
    // An address of 0 goes by number, and a single sibling has a rule of its own.
    if (!key.reachedByIp || key.ipAddress == 0 || parent.rowCount() < 2 || !branch(parent).rises)
        return ::insertionRow(parent, key);
    const std::vector<qint64>& ranks = branch(parent).ranks;
    const qint64 last =
        key.ipAddress == kNoProcessorAddress ? kBehindAddresses - 1 : qint64{key.ipAddress};
    const int row =
        static_cast<int>(std::upper_bound(ranks.begin(), ranks.end(), last) - ranks.begin());
    const int vacant = branch(parent).vacant;
    return vacant != kNone && row > vacant ? row - 1 : row;
}

void CRisingOrder::onInserted(const QStandardItem& parent, int first, int last)
{
    if (Branch* const known = find(parent, first)) {
        known->closeGap();
        known->ranks.insert(known->ranks.begin() + first,
                            static_cast<std::size_t>(last) - static_cast<std::size_t>(first) + 1,
                            0);
        onChanged(parent, first, last);
    }
}

void CRisingOrder::onInserted(const QStandardItem& parent, int row, const CRecordCell::Key& key)
{
    if (Branch* const known = find(parent, row)) {
        if (known->vacant != kNone)
            known->moveGap(row);
        else
            known->ranks.insert(known->ranks.begin() + row, 0);
        known->vacant = kNone;
        known->ranks[static_cast<std::size_t>(row)] = rank(key);
        known->rises = known->rises && rises(known->ranks, row - 1, row + 1);
    }
}

void CRisingOrder::onChanged(const QStandardItem& parent, int first, int last)
{
    const auto known = m_branches.find(&parent);
    if (known == m_branches.end())
        return;
    known->closeGap();
    for (int row = first; row <= last && row < known->rowCount(); ++row)
        known->ranks[static_cast<std::size_t>(row)] = rank(parent, row);
    known->rises = known->rises && rises(known->ranks, first - 1, last + 1);
}

void CRisingOrder::onAboutToBeRemoved(const QStandardItem& parent, int first, int last)
{
    for (int row = first; row <= last && !m_branches.isEmpty(); ++row) {
        const QStandardItem* item = parent.child(row);
        if (item && item->hasChildren())
            clear();
        else
            m_branches.remove(item);
    }
    const auto known = m_branches.find(&parent);
    if (known == m_branches.end())
        return;
    known->closeGap();
    // Others may rise where these did not.
    if (!known->rises || last >= known->rowCount())
        m_branches.erase(known);
    else if (first == last)
        known->vacant = first;
    else
        known->ranks.erase(known->ranks.begin() + first, known->ranks.begin() + last + 1);
}

/// Returns the branch of `parent` if a row can come at `row` in it; null if nothing is known of it.
CRisingOrder::Branch* CRisingOrder::find(const QStandardItem& parent, int row)
{
    const auto known = m_branches.find(&parent);
    if (known == m_branches.end())
        return nullptr;
    if (row > known->rowCount()) {
        m_branches.erase(known);
        return nullptr;
    }
    return &*known;
}

const CRisingOrder::Branch& CRisingOrder::branch(const QStandardItem& parent)
{
    Branch& known = m_branches[&parent];
    // Where rows come while others are about to be removed, not all of them are known.
    if (known.rowCount() != parent.rowCount()) {
        known.vacant = kNone;
        known.ranks.clear();
        known.ranks.reserve(static_cast<std::size_t>(parent.rowCount()));
        for (int row = 0; row < parent.rowCount(); ++row)
            known.ranks.push_back(rank(parent, row));
        known.rises = rises(known.ranks, 0, parent.rowCount());
    }
    return known;
}
