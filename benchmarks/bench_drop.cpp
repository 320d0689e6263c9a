// Fifty selected processors dropped on another group, up to the painted rows: the product's view
// against a plain one under which the rows are taken out and inserted one by one.

#include "benchmarks/support/BareTree.h"
#include "benchmarks/support/Bench.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ExpandBranches.h"
#include "processortree/view/ProcessorTreeView.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>

#include <memory>

namespace {

constexpr int kMoved = 50;

void show(QTreeView& view)
{
    expandBranches(view);
    view.resize(220, 800);
    view.show();
    require(QTest::qWaitForWindowExposed(&view), "the view is on the screen");
}

/// The first or the second group, which the processors go to and fro between.
QModelIndex group(const QAbstractItemModel& model, int row)
{
    return model.index(row, 0, model.index(0, 0));
}

void dragTo(QTreeView& view, const QMimeData& data, const QPoint& position)
{
    QDragEnterEvent enter(position, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &enter);
    require(enter.isAccepted(), "the view takes the dragged rows");
}

void dropOn(QTreeView& view, const QMimeData& data, const QPoint& position)
{
    QDropEvent event(position, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &event);
    view.viewport()->repaint();
}

/// Brings the group into sight, which a user has done before dropping.
QPoint placeOf(QTreeView& view, const QModelIndex& index)
{
    view.scrollTo(index, QAbstractItemView::PositionAtTop);
    return view.visualRect(index).center();
}

void dropInView(benchmark::State& state, StoredHandler& handler)
{
    const Project project = makeProject(static_cast<int>(state.range(0)));
    handler.setProject(project);
    CProcessorTreeModel model;
    model.initRoot();
    model.reset();
    CProcessorTreeView view(*CTargetSelectData::Instance());
    view.setModel(&model);
    show(view);
    for (int row = 0; row < kMoved; ++row)
        view.selectionModel()->select(model.getItem(project.processors.at(row).id)->index(),
                                      QItemSelectionModel::Select);
    const std::unique_ptr<QMimeData> data(model.mimeData(view.selectionModel()->selectedIndexes()));
    const QPoint second = placeOf(view, group(model, 1));
    dragTo(view, *data, second);
    dropOn(view, *data, second);
    const QModelIndexList dropped = view.selectionModel()->selectedIndexes();
    for (const QModelIndex& index : dropped)
        require(index.parent() == group(model, 1), "the dropped rows are selected");
    view.selectionModel()->clearSelection();
    const int members = model.rowCount(group(model, 1));
    require(members >= kMoved, "the group has taken the processors");
    view.selectionModel()->select(QItemSelection(model.index(0, 0, group(model, 1)),
                                                 model.index(kMoved - 1, 0, group(model, 1))),
                                  QItemSelectionModel::ClearAndSelect);

    int target = 0;
    const qint64 before = handler.regroupedProcessors();
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        const QPoint position = placeOf(view, group(model, target));
        dragTo(view, *data, position);
        state.ResumeTiming();
        dropOn(view, *data, position);
        target = 1 - target;
    }
    require(handler.regroupedProcessors() - before == kMoved * state.iterations(),
            "every drop moves all selected processors");
    require(view.selectionModel()->selectedIndexes().size() == kMoved,
            "what was dropped stays selected");
}

void moveBare(benchmark::State& state)
{
    BareTree bare;
    bare.refill(makeProject(static_cast<int>(state.range(0))));
    QStandardItemModel& model = bare.model();
    QTreeView view;
    view.setHeaderHidden(true);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&model);
    show(view);
    const auto moveFirst = [&](int from, int to) {
        QStandardItem* target = model.itemFromIndex(group(model, to));
        target->insertRow(target->rowCount(), model.itemFromIndex(group(model, from))->takeRow(0));
    };
    const auto selectLast = [&](int row) {
        const QModelIndex parent = group(model, row);
        const int members = model.rowCount(parent);
        QItemSelection selection;
        for (int member = members - kMoved; member < members; ++member) {
            const QModelIndex index = model.index(member, 0, parent);
            selection.select(index, index);
        }
        view.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    };
    for (const int from : {0, 2, 3, 4}) {
        while (model.rowCount(group(model, from)) > 0)
            moveFirst(from, 1);
    }
    selectLast(1);

    int target = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        placeOf(view, group(model, target));
        state.ResumeTiming();
        for (int moved = 0; moved < kMoved; ++moved)
            moveFirst(1 - target, target);
        selectLast(target);
        view.viewport()->repaint();
        target = 1 - target;
    }
    require(view.selectionModel()->selectedIndexes().size() == kMoved,
            "what was moved stays selected");
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const auto product = [&](benchmark::State& state) { dropInView(state, *handler); };
    for (const int size : {255, 1000, 4000}) {
        benchmark::RegisterBenchmark("drop/product", product)->Arg(size);
        benchmark::RegisterBenchmark("drop/baseline", moveBare)->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
