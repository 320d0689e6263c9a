// One processor added, removed or changed in a tree of n, without views: the model's slots against
// a plain model that does the same and rewrites the root's text. Each sample makes a number of such
// changes, and undoes them outside the measured time.

#include "benchmarks/support/BareTree.h"
#include "benchmarks/support/Bench.h"
#include "processortree/model/ProcessorItem.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHash>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kChanges = 32;

enum class Addresses { None, Rising, Random };

QUuid makeId(int n)
{
    return QUuid::createUuidV5(QUuid(), QString::number(n));
}

ProcessorNode makeProcessor(int n, quint32 address)
{
    ProcessorNode processor;
    processor.id = makeId(n);
    processor.name = QStringLiteral("Processor %1").arg(n + 1);
    processor.number = n;
    processor.reachedByIp = address != 0;
    if (address != 0)
        processor.ipAddress = address;
    return processor;
}

/// `size` processors outside of groups, and further ones for the changes.
std::vector<ProcessorNode> makeProcessors(int size, Addresses addresses)
{
    std::vector<quint32> values;
    for (int n = 0; n < size + kChanges; ++n)
        values.push_back(addresses == Addresses::None ? 0
                                                      : 0x0A000000 + 4 * static_cast<quint32>(n));
    std::mt19937 generator(7);
    if (addresses == Addresses::Random)
        std::shuffle(values.begin(), values.end(), generator);
    std::vector<ProcessorNode> processors;
    for (int n = 0; n < size + kChanges; ++n)
        processors.push_back(makeProcessor(n, values[static_cast<std::size_t>(n)]));
    return processors;
}

/// The tree in a plain model, whose places and rows are known to whoever changes it.
class BareProcessors final
{
public:
    BareProcessors()
        : m_root(new CProcessorItem(NodeRoot, QUuid()))
    {
        m_root->setEditable(false);
        m_model.appendRow(m_root);
        count();
    }

    QStandardItemModel& model() { return m_model; }

    void add(int row, const ProcessorNode& processor)
    {
        auto* item = new CProcessorItem(NodeProcessor, processor.id);
        item->setText(processor.name);
        item->setData(QVariant::fromValue(processor), NodeDataRole);
        m_root->insertRow(row, item);
        m_items.insert(processor.id, item);
        count();
    }

    void remove(const QUuid& id)
    {
        const QStandardItem* item = m_items.take(id);
        m_root->removeRow(item->row());
        count();
    }

    void change(const ProcessorNode& processor)
    {
        QStandardItem* item = m_items.value(processor.id);
        item->setData(QVariant::fromValue(processor), NodeDataRole);
        item->setText(processor.name);
    }

    void replace(const ProcessorNode& processor)
    {
        const int row = m_items.value(processor.id)->row();
        remove(processor.id);
        add(row, processor);
    }

private:
    void count() { m_root->setText(QStringLiteral("All processors(%1)").arg(m_root->rowCount())); }

    QStandardItemModel m_model;
    QStandardItem* m_root; // owned by the model
    QHash<QUuid, QStandardItem*> m_items;
};

/// Both trees with `size` processors outside of groups, and further ones that can be appended.
class Trees final
{
public:
    Trees(int size, Addresses addresses)
        : m_processors(makeProcessors(size, addresses))
        , m_size(size)
    {
        m_model.initRoot();
        for (int n = 0; n < size + kChanges; ++n) {
            m_model.AppendProcessor(at(n));
            m_rows.push_back(m_model.getItem(at(n).id)->row());
            m_bare.add(m_rows.back(), at(n));
        }
        require(sameTree(m_model, m_bare.model()), "both trees hold the same rows");
        for (int n = size + kChanges - 1; n >= size; --n) {
            m_model.removeNode(at(n).id);
            m_bare.remove(at(n).id);
        }
    }

    ~Trees()
    {
        m_isChanged = m_isBareChanged = false;
        for (int n = 0; n < kChanges; ++n) {
            change(n);
            changeBare(n);
        }
        require(sameTree(m_model, m_bare.model()), "both trees hold the same rows still");
    }

    void append(int n) { m_model.AppendProcessor(at(m_size + n)); }
    void unappend(int n) { m_model.removeNode(at(m_size + n).id); }
    void appendBare(int n) { m_bare.add(m_rows[toIndex(m_size + n)], at(m_size + n)); }
    void unappendBare(int n) { m_bare.remove(at(m_size + n).id); }

    void change(int n)
    {
        const ProcessorNode changed = changedAt(n, m_isChanged);
        m_model.updateProcessor(m_model.getItem(changed.id), changed);
    }
    void changeBare(int n)
    {
        const ProcessorNode changed = changedAt(n, m_isBareChanged);
        if (changed.reachedByIp)
            m_bare.replace(changed);
        else
            m_bare.change(changed);
    }
    void nextRound() { m_isChanged = !m_isChanged; }
    void nextBareRound() { m_isBareChanged = !m_isBareChanged; }

private:
    static std::size_t toIndex(int n) { return static_cast<std::size_t>(n); }
    const ProcessorNode& at(int n) const { return m_processors[toIndex(n)]; }

    /// Of one of the rows all over the tree, a name or an address that leaves the order as it is.
    ProcessorNode changedAt(int n, bool isChanged) const
    {
        ProcessorNode processor = at(n * (m_size / kChanges));
        if (isChanged)
            return processor;
        if (processor.reachedByIp)
            ++processor.ipAddress;
        else
            processor.name += QLatin1Char('*');
        return processor;
    }

    std::vector<ProcessorNode> m_processors;
    std::vector<int> m_rows; // where they go in a tree that holds those before them
    int m_size;
    bool m_isChanged = false;
    bool m_isBareChanged = false;
    CProcessorTreeModel m_model;
    BareProcessors m_bare;
};

using Step = std::function<void(Trees&, int n)>;

/// Makes the changes of `step`, and undoes them outside the measured time, last one first.
void measure(benchmark::State& state, Trees& trees, const Step& step, const Step& undo)
{
    for (auto iteration : state) {
        static_cast<void>(iteration);
        for (int n = 0; n < kChanges; ++n)
            step(trees, n);
        state.PauseTiming();
        for (int n = kChanges - 1; n >= 0; --n)
            undo(trees, n);
        state.ResumeTiming();
    }
}

/// The same for removals, where making them comes first.
void measureUndoing(benchmark::State& state, Trees& trees, const Step& step, const Step& undo)
{
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        for (int n = 0; n < kChanges; ++n)
            step(trees, n);
        state.ResumeTiming();
        for (int n = kChanges - 1; n >= 0; --n)
            undo(trees, n);
    }
}

void registerAll(const std::string& kind, int size, Trees& trees)
{
    const auto add = [&](const std::string& name, const auto& run) {
        benchmark::RegisterBenchmark((name + '/' + std::to_string(size)).c_str(), run);
    };
    const std::string product = '-' + kind + "/product";
    const std::string baseline = '-' + kind + "/baseline";
    const Step append = &Trees::append;
    const Step unappend = &Trees::unappend;
    const Step appendBare = &Trees::appendBare;
    const Step unappendBare = &Trees::unappendBare;
    const auto turn = [](Trees& changed, int n) {
        if (n == 0)
            changed.nextRound();
    };
    const auto turnBare = [](Trees& changed, int n) {
        if (n == 0)
            changed.nextBareRound();
    };
    add("append" + product,
        [=, &trees](benchmark::State& state) { measure(state, trees, append, unappend); });
    add("append" + baseline,
        [=, &trees](benchmark::State& state) { measure(state, trees, appendBare, unappendBare); });
    add("remove" + product,
        [=, &trees](benchmark::State& state) { measureUndoing(state, trees, append, unappend); });
    add("remove" + baseline, [=, &trees](benchmark::State& state) {
        measureUndoing(state, trees, appendBare, unappendBare);
    });
    add("change" + product,
        [=, &trees](benchmark::State& state) { measure(state, trees, &Trees::change, turn); });
    add("change" + baseline, [=, &trees](benchmark::State& state) {
        measure(state, trees, &Trees::changeBare, turnBare);
    });
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const std::pair<const char*, Addresses> kinds[] = {
        {"number", Addresses::None}, {"rising", Addresses::Rising}, {"random", Addresses::Random}};
    std::vector<std::unique_ptr<Trees>> trees;
    for (const auto& [kind, addresses] : kinds) {
        for (const int size : kProjectSizes) {
            trees.push_back(std::make_unique<Trees>(size, addresses));
            registerAll(kind, size, *trees.back());
        }
    }
    return runBenchmarks(argc, argv);
}
