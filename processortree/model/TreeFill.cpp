#include "processortree/model/TreeFill.h"

#include "processortree/model/ProcessorItem.h"
#include "processortree/model/ProcessorOrder.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace {

/// The processors of one parent, put in order before it gets them as its rows all at once.
struct Branch
{
    /// Makes the row of `processor` and notes it in `known`.
    void grow(const ProcessorNode& processor, CIdentityIndex::Rows& known)
    {
        const CRecordCell::Key key = recordKey(processor);
        const int row = insertionRow(above, keys, key) - above;
        CRecordHandle record(processor);
        QStandardItem* item = makeProcessorItem(processor, record);
        keys.insert(keys.begin() + row, key);
        rows.insert(row, item);
        known.push_back({processor.id, item, {NodeProcessor, std::move(record)}});
    }

    QStandardItem* parent = nullptr; // owned by the model
    int above = 0;                   // groups among the parent's rows
    std::vector<CRecordCell::Key> keys;
    QList<QStandardItem*> rows;
};

using Branches = QHash<QUuid, Branch>;

/// Gives `root` its groups and notes in `branches` who takes the processors of each.
void plantGroups(QStandardItem& root, const QList<ProcessorGroupNode>& groups, int room,
                 Branches& branches, CIdentityIndex::Rows& known)
{
    // Made in their place, as copies of a branch have no room.
    const auto branchOff = [&](const QUuid& id, QStandardItem* parent, int above) {
        Branch& branch = branches[id];
        branch.parent = parent;
        branch.above = above;
        branch.keys.reserve(static_cast<std::size_t>(room));
        branch.rows.reserve(room);
    };
    branches.reserve(groups.size() + 1);
    branchOff(QUuid(), &root, groups.size());

    QList<QStandardItem*> rows;
    rows.reserve(groups.size());
    for (const ProcessorGroupNode& group : groups) {
        QStandardItem* item = makeGroupItem(group);
        rows.append(item);
        known.push_back({group.id, item, {NodeGroup, {}}});
        if (!branches.contains(group.id))
            branchOff(group.id, item, 0);
    }
    root.insertRows(0, rows);
}

} // namespace

void fillTree(QStandardItem& root, const QList<ProcessorGroupNode>& groups,
              const QList<ProcessorNode>& processors, CIdentityIndex::Rows& known,
              QList<LeftOut>& leftOut)
{
    Branches branches;
    // Room for as many as stand in each parent where all have the same number.
    plantGroups(root, groups, processors.size() / (groups.size() + 1) + 1, branches, known);

    auto taker = branches.end();
    for (const ProcessorNode& processor : processors) {
        // Most often a processor stands in the group of the one before.
        if (taker == branches.end() || taker.key() != processor.groupId)
            taker = branches.find(processor.groupId);
        if (taker != branches.end())
            taker->grow(processor, known);
        else
            leftOut.append({processor.id, processor.groupId});
    }
    for (const Branch& branch : qAsConst(branches))
        branch.parent->insertRows(branch.above, branch.rows);
}

void dropRepeats(QList<ProcessorGroupNode>& groups, QList<ProcessorNode>& processors)
{
    QSet<QUuid> seen{QUuid()};
    QSet<QUuid> parents{QUuid()};
    const auto isRepeatedGroup = [&](const ProcessorGroupNode& group) {
        const bool isKnown = seen.contains(group.id);
        seen.insert(group.id);
        parents.insert(group.id);
        return isKnown;
    };
    const auto isRepeatedProcessor = [&](const ProcessorNode& processor) {
        const bool isKnown = seen.contains(processor.id);
        // One whose group is not listed gets no row, and leaves its identity to others.
        if (parents.contains(processor.groupId))
            seen.insert(processor.id);
        return isKnown;
    };
    // New lists: the host may hold the old ones, too, and change them on another thread.
    QList<ProcessorGroupNode> keptGroups;
    std::remove_copy_if(groups.cbegin(), groups.cend(), std::back_inserter(keptGroups),
                        isRepeatedGroup);
    QList<ProcessorNode> keptProcessors;
    std::remove_copy_if(processors.cbegin(), processors.cend(), std::back_inserter(keptProcessors),
                        isRepeatedProcessor);
    groups = keptGroups;
    processors = keptProcessors;
}
