// A project read in anew, without views: the model's slot against a plain model filled with equal
// items, row by row.

#include "benchmarks/support/BareTree.h"
#include "benchmarks/support/Bench.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMetaObject>

namespace {

void refillModel(benchmark::State& state, StoredHandler& handler)
{
    handler.setProject(makeProject(static_cast<int>(state.range(0))));
    CProcessorTreeModel model;
    model.initRoot();
    model.reset();
    BareTree bare;
    bare.refill(handler.project());
    require(sameTree(model, bare.model()), "both trees hold the same rows");
    for (auto iteration : state) {
        static_cast<void>(iteration);
        QMetaObject::invokeMethod(&model, "reset", Qt::DirectConnection);
    }
}

void refillBare(benchmark::State& state)
{
    const Project project = makeProject(static_cast<int>(state.range(0)));
    BareTree bare;
    bare.refill(project);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        bare.refill(project);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto handler = installStoredHandler();
    const auto onModel = [&](benchmark::State& state) { refillModel(state, *handler); };
    for (const int size : kProjectSizes) {
        benchmark::RegisterBenchmark("refill/product", onModel)->Arg(size);
        benchmark::RegisterBenchmark("refill/baseline", refillBare)->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
