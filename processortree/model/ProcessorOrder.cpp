#include "processortree/model/ProcessorOrder.h"

#include "base/NodeType.h"

#include <QStandardItem>

#include <optional>

namespace {

/// Returns whether `sibling`, a processor, stands above a new one with `key`.
bool precedes(const CRecordCell::Key& sibling, const CRecordCell::Key& key)
{
    if (sibling.ipAddress == kNoProcessorAddress)
        return false;
    // A processor without an address stays behind every one that has one, however that is
    // addressed.
    if (key.ipAddress == kNoProcessorAddress)
        return true;
    if (sibling.reachedByIp && sibling.ipAddress != 0 && key.ipAddress != 0)
        return sibling.ipAddress <= key.ipAddress;
    return sibling.number < key.number;
}

/// `keyAt` answers the key of a row, or nothing for one that is no processor.
template <typename KeyAt>
int insertionRow(int rows, const CRecordCell::Key& key, KeyAt keyAt)
{
    if (!key.reachedByIp || rows == 0)
        return rows;
    if (rows == 1) {
        const std::optional<CRecordCell::Key> only = keyAt(0);
        return only && only->ipAddress > key.ipAddress ? 0 : 1;
    }
    for (int row = rows - 1; row >= 0; --row) {
        const std::optional<CRecordCell::Key> sibling = keyAt(row);
        if (!sibling || precedes(*sibling, key))
            return row + 1;
    }
    return 0;
}

} // namespace

int insertionRow(const QStandardItem& parent, const CRecordCell::Key& key)
{
    return insertionRow(parent.rowCount(), key, [&](int row) -> std::optional<CRecordCell::Key> {
        const QStandardItem* sibling = parent.child(row);
        if (!sibling || nodeType(*sibling) != NodeProcessor)
            return std::nullopt;
        return placedKey(sibling->data(NodeDataRole));
    });
}

int insertionRow(int groups, const std::vector<CRecordCell::Key>& keys, const CRecordCell::Key& key)
{
    const int rows = groups + static_cast<int>(keys.size());
    return insertionRow(rows, key, [&](int row) {
        return row < groups ? std::nullopt
                            : std::optional(keys[static_cast<std::size_t>(row - groups)]);
    });
}
