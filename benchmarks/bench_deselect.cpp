// Thousands of selected processors that the host removes in one event, in the panel's tree: the
// view, its selection and the search list follow every row. Against a plain model under a plain
// view that takes out the same selected rows.

#include "benchmarks/support/Bench.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorItem.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ExpandBranches.h"
#include "processortree/view/ProcessorTreeView.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QStandardItemModel>
#include <QTreeView>

namespace {

constexpr int kKept = 255;

/// `size` processors to be removed and some that stay, all under the root.
Project makeFlatProject(int size)
{
    Project project = makeProject(size + kKept);
    project.groups.clear();
    for (ProcessorNode& processor : project.processors)
        processor.groupId = QUuid();
    return project;
}

/// Selects as many rows below the root, the first one current, as a user does.
void selectFirst(const QTreeView& view, int size)
{
    const QModelIndex root = view.model()->index(0, 0);
    const QModelIndex first = view.model()->index(0, 0, root);
    const QModelIndex last = view.model()->index(size - 1, 0, root);
    view.selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    view.selectionModel()->select({first, last}, QItemSelectionModel::ClearAndSelect);
}

template <typename View>
void show(View& view)
{
    view.resize(220, 800);
    expandBranches(view);
    view.show();
    view.grab();
}

void removeSelected(benchmark::State& state, StoredHandler& handler)
{
    const int size = static_cast<int>(state.range(0));
    handler.setProject(makeFlatProject(size));
    QList<QUuid> removed;
    for (const ProcessorNode& processor : handler.project().processors.mid(0, size))
        removed.append(processor.id);
    CProcessorTreeModel model;
    model.initRoot();
    model.reset();
    CProcessorTreeView view(*CTargetSelectData::Instance());
    view.setModel(&model);
    show(view);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        model.reset();
        show(view);
        selectFirst(view, size);
        require(view.selectionModel()->selectedIndexes().size() == size, "all are selected");
        state.ResumeTiming();
        model.removeNodes(removed);
        view.grab();
    }
    require(model.getAllProcessorCount() == kKept, "the others are still there");
}

void removeBare(benchmark::State& state)
{
    const int size = static_cast<int>(state.range(0));
    const Project project = makeFlatProject(size);
    QStandardItemModel model;
    auto* root = new QStandardItem;
    model.appendRow(root);
    QTreeView view;
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&model);
    show(view);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        root->removeRows(0, root->rowCount());
        QList<QStandardItem*> items;
        for (const ProcessorNode& processor : project.processors)
            items.append(makeProcessorItem(processor, CRecordHandle(processor)));
        root->appendRows(items);
        show(view);
        selectFirst(view, size);
        state.ResumeTiming();
        for (int row = 0; row < size; ++row) {
            root->removeRow(0);
            root->setText(QString::number(root->rowCount()));
        }
        view.grab();
    }
    require(root->rowCount() == kKept, "the others are still there");
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const auto product = [&](benchmark::State& state) { removeSelected(state, *handler); };
    for (const int size : {1000, 2000, 4000}) {
        benchmark::RegisterBenchmark("deselect/product", product)->Arg(size);
        benchmark::RegisterBenchmark("deselect/baseline", removeBare)->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
