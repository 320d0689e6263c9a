// A row found by its identity: the model against a hash of the same identities, and against the
// depth-first search that it stands for and has to agree with.

#include "base/NodeType.h"
#include "benchmarks/support/BareTree.h"
#include "benchmarks/support/Bench.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHash>
#include <QVector>

#include <algorithm>
#include <random>

namespace {

/// How many identities one search per iteration goes round; a search costs too much for all of
/// them.
constexpr int kSearches = 64;

QStandardItem* searchBelow(const QStandardItem* parent, const QUuid& uuid)
{
    for (int row = 0; row < parent->rowCount(); ++row) {
        QStandardItem* child = parent->child(row);
        const auto type = child ? nodeType(*child) : std::nullopt;
        if (!type)
            continue;
        if (child->data(UuidRole).toUuid() == uuid)
            return child;
        if (*type != NodeGroup)
            continue;
        if (QStandardItem* found = searchBelow(child, uuid))
            return found;
    }
    return nullptr;
}

QStandardItem* search(const CProcessorTreeModel& model, const QUuid& uuid)
{
    QStandardItem* root = model.item(0);
    return root->data(UuidRole).toUuid() == uuid ? root : searchBelow(root, uuid);
}

/// A filled model and its identities, with some that it does not hold, in an order that has nothing
/// to do with the rows'.
class FilledTree final
{
public:
    FilledTree(StoredHandler& handler, int size)
    {
        handler.setProject(makeProject(size));
        m_model.initRoot();
        m_model.reset();
        m_uuids.append(QUuid());
        for (const ProcessorGroupNode& group : handler.project().groups)
            m_uuids.append(group.id);
        for (const ProcessorNode& processor : handler.project().processors)
            m_uuids.append(processor.id);
        for (int i = 0; i < size / 16; ++i)
            m_uuids.append(QUuid::createUuidV5(QUuid(), QStringLiteral("unknown %1").arg(i)));
        std::shuffle(m_uuids.begin(), m_uuids.end(), std::mt19937(20));
    }

    CProcessorTreeModel& model() { return m_model; }
    const QVector<QUuid>& uuids() const { return m_uuids; }

    bool agreesWith(const QHash<QUuid, QStandardItem*>& hash) const
    {
        return std::all_of(m_uuids.begin(), m_uuids.end(), [&](const QUuid& uuid) {
            return m_model.getItem(uuid) == hash.value(uuid);
        });
    }

    bool agreesWithSearch() const
    {
        return std::all_of(m_uuids.begin(), m_uuids.end(), [this](const QUuid& uuid) {
            return m_model.getItem(uuid) == search(m_model, uuid);
        });
    }

private:
    CProcessorTreeModel m_model;
    QVector<QUuid> m_uuids;
};

/// The answers have to be those of a search whatever happens to the identities.
void checkAgreement(StoredHandler& handler, int size)
{
    FilledTree tree(handler, size);
    require(tree.agreesWithSearch(), "every identity leads where a search leads");

    QStandardItem* root = tree.model().item(0);
    QStandardItem* firstGroup = root->child(0);
    QStandardItem* lastGroup = root->child(root->rowCount() - 1);
    const auto take = [&](QStandardItem* item, const QStandardItem* from) {
        item->setData(from->data(UuidRole), UuidRole);
        require(tree.agreesWithSearch(), "so it does when an identity repeats");
    };
    take(firstGroup->child(1), lastGroup->child(0));
    take(lastGroup->child(1), firstGroup->child(0));
    take(firstGroup->child(2), lastGroup);
    take(lastGroup->child(2), root);
    firstGroup->child(3)->setData(QUuid::createUuid(), UuidRole);
    require(tree.agreesWithSearch(), "so it does when an item's identity is replaced");
    lastGroup->child(3)->setData(QStringLiteral("none"), NodeTypeRole);
    require(tree.agreesWithSearch(), "so it does when an item has no type");
    root->removeRow(0);
    require(tree.agreesWithSearch(), "so it does when the first of two rows leaves");
    tree.model().reset();
    require(tree.agreesWithSearch(), "so it does after a refill");
}

void lookUpInModel(benchmark::State& state, StoredHandler& handler)
{
    FilledTree tree(handler, static_cast<int>(state.range(0)));
    for (auto iteration : state) {
        static_cast<void>(iteration);
        for (const QUuid& uuid : tree.uuids())
            benchmark::DoNotOptimize(tree.model().getItem(uuid));
    }
    state.SetItemsProcessed(state.iterations() * tree.uuids().size());
}

void addRow(QHash<QUuid, QStandardItem*>& hash, QStandardItem* item)
{
    hash.insert(item->data(UuidRole).toUuid(), item);
    for (int row = 0; row < item->rowCount(); ++row)
        addRow(hash, item->child(row));
}

void lookUpInHash(benchmark::State& state, StoredHandler& handler)
{
    FilledTree tree(handler, static_cast<int>(state.range(0)));
    QHash<QUuid, QStandardItem*> hash;
    addRow(hash, tree.model().item(0));
    require(tree.agreesWith(hash), "the hash knows the same rows");
    for (auto iteration : state) {
        static_cast<void>(iteration);
        for (const QUuid& uuid : tree.uuids())
            benchmark::DoNotOptimize(hash.value(uuid));
    }
    state.SetItemsProcessed(state.iterations() * tree.uuids().size());
}

void searchTree(benchmark::State& state, StoredHandler& handler)
{
    FilledTree tree(handler, static_cast<int>(state.range(0)));
    for (auto iteration : state) {
        static_cast<void>(iteration);
        for (int i = 0; i < kSearches; ++i)
            benchmark::DoNotOptimize(search(tree.model(), tree.uuids().at(i)));
    }
    state.SetItemsProcessed(state.iterations() * kSearches);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    for (const int size : {255, 1000})
        checkAgreement(*handler, size);
    const auto with = [&](void (*measure)(benchmark::State&, StoredHandler&)) {
        return [&handler, measure](benchmark::State& state) { measure(state, *handler); };
    };
    for (const int size : kProjectSizes) {
        benchmark::RegisterBenchmark("lookup/product", with(lookUpInModel))->Arg(size);
        benchmark::RegisterBenchmark("lookup/hash", with(lookUpInHash))->Arg(size);
        benchmark::RegisterBenchmark("lookup/search", with(searchTree))->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
