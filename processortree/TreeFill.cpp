#include "processortree/TreeFill.h"

#include "processortree/ProcessorItem.h"
#include "processortree/ProcessorOrder.h"

#include <QHash>

#include <algorithm>
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
    int rounds = 1;                  // how often it takes the processors that name it
    std::vector<CRecordCell::Key> keys;
    QList<QStandardItem*> rows;
};

using Branches = QHash<QUuid, Branch>;

/// Gives `root` its groups and notes in `branches` who takes the processors of each.
void plantGroups(QStandardItem& root, const QList<ProcessorGroupNode>& groups, int room,
                 Branches& branches, CIdentityIndex::Rows& known)
{
    const auto branchOff = [room](QStandardItem* parent, int above) {
        Branch branch{parent, above, 1, {}, {}};
        branch.keys.reserve(static_cast<std::size_t>(room));
        branch.rows.reserve(room);
        return branch;
    };
    branches.reserve(groups.size() + 1);
    branches.insert(QUuid(), branchOff(&root, groups.size()));

    QList<QStandardItem*> rows;
    rows.reserve(groups.size());
    for (const ProcessorGroupNode& group : groups) {
        QStandardItem* item = makeGroupItem(group);
        rows.append(item);
        known.push_back({group.id, item, {NodeGroup, {}}});
        // Of groups that share an identity the first one takes the processors, once for each.
        const auto first = branches.find(group.id);
        if (first == branches.end())
            branches.insert(group.id, branchOff(item, 0));
        else
            ++first->rounds;
    }
    root.insertRows(0, rows);
}

} // namespace

CIdentityIndex::Rows fillTree(QStandardItem& root, const QList<ProcessorGroupNode>& groups,
                              const QList<ProcessorNode>& processors)
{
    CIdentityIndex::Rows known;
    known.reserve(static_cast<std::size_t>(groups.size())
                  + static_cast<std::size_t>(processors.size()));
    Branches branches;
    // Room for as many as stand in each parent where all have the same number.
    plantGroups(root, groups, processors.size() / (groups.size() + 1) + 1, branches, known);

    int rounds = 1;
    for (const Branch& branch : qAsConst(branches))
        rounds = std::max(rounds, branch.rounds);
    for (int round = 0; round < rounds; ++round) {
        auto branch = branches.end();
        for (const ProcessorNode& processor : processors) {
            // Most often a processor stands in the group of the one before.
            if (branch == branches.end() || branch.key() != processor.groupId)
                branch = branches.find(processor.groupId);
            if (branch != branches.end() && round < branch->rounds)
                branch->grow(processor, known);
        }
    }
    for (const Branch& branch : qAsConst(branches))
        branch.parent->insertRows(branch.above, branch.rows);
    return known;
}
