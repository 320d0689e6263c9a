// A project read in anew under an expanded view, up to the painted rows: one model reset against
// the same rows announced one by one, both by a plain model and by the model's own slots.

#include "benchmarks/support/BareTree.h"
#include "benchmarks/support/Bench.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ExpandBranches.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QEvent>
#include <QTest>
#include <QTreeView>

namespace {

/// A shown tree, expanded whatever comes, that counts its paints.
class PaintedTree final : public QTreeView
{
public:
    explicit PaintedTree(QAbstractItemModel* model)
    {
        setHeaderHidden(true);
        setModel(model);
        connect(model, &QAbstractItemModel::modelReset, this, [this] { expandBranches(*this); });
        connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parent) {
            if (!isExpanded(parent))
                expand(parent);
        });
        expandBranches(*this);
        resize(220, 800);
        show();
        require(QTest::qWaitForWindowExposed(this), "the view is on the screen");
    }

    /// Lays out what is due and paints it, now.
    void paintNow()
    {
        const int before = m_paints;
        viewport()->repaint();
        require(m_paints == before + 1, "every refill is painted once");
    }

    /// Rows from the first to the last one in the window.
    int rowsInSight() const
    {
        int rows = 0;
        for (QModelIndex index = indexAt(QPoint(0, 0));
             index.isValid() && visualRect(index).top() < viewport()->height();
             index = indexBelow(index))
            ++rows;
        return rows;
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++m_paints;
        QTreeView::paintEvent(event);
    }

private:
    int m_paints = 0;
};

void requireFullWindow(const PaintedTree& view)
{
    require(view.rowsInSight() >= 19, "the window is full of expanded rows");
}

void resetModel(benchmark::State& state, StoredHandler& handler)
{
    handler.setProject(makeProject(static_cast<int>(state.range(0))));
    CProcessorTreeModel model;
    model.initRoot();
    PaintedTree view(&model);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        QMetaObject::invokeMethod(&model, "reset", Qt::DirectConnection);
        view.paintNow();
    }
    requireFullWindow(view);
}

void appendToModel(benchmark::State& state)
{
    const Project project = makeProject(static_cast<int>(state.range(0)));
    CProcessorTreeModel model;
    model.initRoot();
    PaintedTree view(&model);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        model.removeAllGroups();
        for (const ProcessorGroupNode& group : project.groups)
            model.AppendGroup(group);
        for (const ProcessorNode& processor : project.processors)
            model.AppendProcessor(processor);
        view.paintNow();
    }
    requireFullWindow(view);
}

void appendBare(benchmark::State& state)
{
    const Project project = makeProject(static_cast<int>(state.range(0)));
    BareTree bare;
    PaintedTree view(&bare.model());
    for (auto iteration : state) {
        static_cast<void>(iteration);
        bare.refill(project);
        view.paintNow();
    }
    requireFullWindow(view);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const auto onModel = [&](benchmark::State& state) { resetModel(state, *handler); };
    for (const int size : kProjectSizes) {
        benchmark::RegisterBenchmark("refill-view/product", onModel)->Arg(size);
        benchmark::RegisterBenchmark("refill-view/baseline", appendBare)->Arg(size);
        // Counts the processors after each one: the largest size would take minutes.
        if (size <= 4000)
            benchmark::RegisterBenchmark("refill-view/slots", appendToModel)->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
