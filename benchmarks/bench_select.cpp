// All rows of the tree selected and cleared again, reported to the host each time: the product's
// selection model against a plain one whose selected identities are read after each change.

#include "base/NodeType.h"
#include "benchmarks/support/Bench.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorSelectionModel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTreeView>

namespace {

void addRowsBelow(const QAbstractItemModel& model, const QModelIndex& parent, QItemSelection& rows)
{
    const int count = model.rowCount(parent);
    if (count == 0)
        return;
    rows.append(QItemSelectionRange(model.index(0, 0, parent), model.index(count - 1, 0, parent)));
    for (int row = 0; row < count; ++row)
        addRowsBelow(model, model.index(row, 0, parent), rows);
}

QItemSelection processorsOf(const QItemSelection& rows)
{
    QItemSelection processors;
    for (const QItemSelectionRange& range : rows) {
        if (nodeType(QModelIndex(range.topLeft())) == NodeProcessor)
            processors.append(range);
    }
    return processors;
}

void selectReported(benchmark::State& state, StoredHandler& handler)
{
    const int size = static_cast<int>(state.range(0));
    handler.setProject(makeProject(size));
    CProcessorTreeModel model;
    model.initRoot();
    model.reset();
    QTreeView view;
    CProcessorSelectionModel selection(*CTargetSelectData::Instance(), &model, &view);
    QItemSelection all;
    addRowsBelow(model, {}, all);
    const qint64 before = handler.reportedProcessors();
    for (auto iteration : state) {
        static_cast<void>(iteration);
        selection.select(all, QItemSelectionModel::ClearAndSelect);
        selection.select(QItemSelection(), QItemSelectionModel::Clear);
    }
    require(handler.reportedProcessors() - before == size * state.iterations(),
            "every processor is reported once for each selection");
}

void selectPlain(benchmark::State& state, StoredHandler& handler)
{
    const int size = static_cast<int>(state.range(0));
    handler.setProject(makeProject(size));
    CProcessorTreeModel model;
    model.initRoot();
    model.reset();
    QItemSelectionModel selection(&model);
    QItemSelection all;
    addRowsBelow(model, {}, all);
    const QItemSelection processors = processorsOf(all);
    qint64 read = 0;
    const auto readIdentities = [&] {
        QList<QUuid> identities;
        const QModelIndexList selected = selection.selectedIndexes();
        for (const QModelIndex& index : selected)
            identities.append(index.data(UuidRole).toUuid());
        read += identities.size();
    };
    for (auto iteration : state) {
        static_cast<void>(iteration);
        selection.select(processors, QItemSelectionModel::ClearAndSelect);
        readIdentities();
        selection.select(QItemSelection(), QItemSelectionModel::Clear);
        readIdentities();
    }
    require(read == size * state.iterations(), "every processor is read once for each selection");
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const auto product = [&](benchmark::State& state) { selectReported(state, *handler); };
    const auto plain = [&](benchmark::State& state) { selectPlain(state, *handler); };
    for (const int size : {255, 1000, 4000}) {
        benchmark::RegisterBenchmark("select/product", product)->Arg(size);
        benchmark::RegisterBenchmark("select/baseline", plain)->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
