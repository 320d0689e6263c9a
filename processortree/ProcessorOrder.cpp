#include "processortree/ProcessorOrder.h"

#include "processortree/NodeType.h"

#include <QStandardItem>

namespace {

bool isProcessor(const QStandardItem* item)
{
    return item && nodeType(*item) == NodeProcessor;
}

CRecordCell::Key keyOf(const QStandardItem& item)
{
    return recordKey(item.data(NodeDataRole));
}

/// Whether `sibling`, a processor, stands above a new one with `key`.
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

} // namespace

int insertionRow(const QStandardItem& parent, const CRecordCell::Key& key)
{
    const int rows = parent.rowCount();
    if (!key.reachedByIp || rows == 0)
        return rows;
    if (rows == 1) {
        const QStandardItem* only = parent.child(0);
        return isProcessor(only) && keyOf(*only).ipAddress > key.ipAddress ? 0 : 1;
    }
    for (int row = rows - 1; row >= 0; --row) {
        const QStandardItem* sibling = parent.child(row);
        if (!isProcessor(sibling) || precedes(keyOf(*sibling), key))
            return row + 1;
    }
    return 0;
}
