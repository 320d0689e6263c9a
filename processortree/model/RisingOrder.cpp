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

int CRisingOrder::insertionRow(const QStandardItem& parent, const CRecordCell::Key& key)
{
    // An address of 0 goes by number, and a single sibling has a rule of its own.
    if (!key.reachedByIp || key.ipAddress == 0 || parent.rowCount() < 2 || !branch(parent).rises)
        return ::insertionRow(parent, key);
    const std::vector<qint64>& ranks = branch(parent).ranks;
    const qint64 last =
        key.ipAddress == kNoProcessorAddress ? kBehindAddresses - 1 : qint64{key.ipAddress};
    return static_cast<int>(std::upper_bound(ranks.begin(), ranks.end(), last) - ranks.begin());
}

void CRisingOrder::onInserted(const QStandardItem& parent, int first, int last)
{
    if (makeRoom(parent, first,
                 static_cast<std::size_t>(last) - static_cast<std::size_t>(first) + 1))
        onChanged(parent, first, last);
}

void CRisingOrder::onInserted(const QStandardItem& parent, int row, const CRecordCell::Key& key)
{
    if (Branch* const known = makeRoom(parent, row, 1)) {
        known->ranks[static_cast<std::size_t>(row)] = rank(key);
        known->rises = known->rises && rises(known->ranks, row - 1, row + 1);
    }
}

void CRisingOrder::onChanged(const QStandardItem& parent, int first, int last)
{
    const auto known = m_branches.find(&parent);
    if (known == m_branches.end())
        return;
    for (int row = first; row <= last && row < static_cast<int>(known->ranks.size()); ++row)
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
    std::vector<qint64>& ranks = known->ranks;
    // Others may rise where these did not.
    if (!known->rises || last >= static_cast<int>(ranks.size()))
        m_branches.erase(known);
    else
        ranks.erase(ranks.begin() + first, ranks.begin() + last + 1);
}

/// Makes room for `count` ranks from `row` on in the branch of `parent`, which is returned; null if
/// nothing is known of it.
CRisingOrder::Branch* CRisingOrder::makeRoom(const QStandardItem& parent, int row,
                                             std::size_t count)
{
    const auto known = m_branches.find(&parent);
    if (known == m_branches.end())
        return nullptr;
    std::vector<qint64>& ranks = known->ranks;
    if (row > static_cast<int>(ranks.size())) {
        m_branches.erase(known);
        return nullptr;
    }
    ranks.insert(ranks.begin() + row, count, 0);
    return &*known;
}

const CRisingOrder::Branch& CRisingOrder::branch(const QStandardItem& parent)
{
    Branch& known = m_branches[&parent];
    const auto rows = static_cast<std::size_t>(parent.rowCount());
    // Where rows come while others are about to be removed, not all of them are known.
    if (known.ranks.size() != rows) {
        known.ranks.clear();
        known.ranks.reserve(rows);
        for (int row = 0; row < parent.rowCount(); ++row)
            known.ranks.push_back(rank(parent, row));
        known.rises = rises(known.ranks, 0, parent.rowCount());
    }
    return known;
}
