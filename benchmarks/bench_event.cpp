// The event "processors added" with an empty list, from the host's thread: the bridge against a
// bare blocking call by name of a slot that does as much.

#include "Interface/ObserverPattern"
#include "benchmarks/support/Bench.h"
#include "benchmarks/support/EqualSlot.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMetaObject>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>

#include <pthread.h>
#include <sched.h>

namespace {

constexpr quint32 kProcessorsAdded = 19;

/// Keeps the calling thread on one core; where there is only one, both threads share it.
void pinTo(unsigned core)
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(core % std::max(1U, std::thread::hardware_concurrency()), &cores);
    pthread_setaffinity_np(pthread_self(), sizeof cores, &cores);
}

void notifyBridge(benchmark::State& state, CTargetSelectData& bridge,
                  const std::atomic<int>& resets)
{
    CSubject subject;
    subject.Attach(&bridge);
    const int before = resets;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        subject.Notify<QList<QUuid>>(kProcessorsAdded, {});
    }
    require(resets - before == state.iterations(),
            "every event reset the model before it returned");
}

void invokeSlot(benchmark::State& state, EqualSlot& target, const std::atomic<int>& resets)
{
    const int before = resets;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        QMetaObject::invokeMethod(&target, "appendProcessors", Qt::BlockingQueuedConnection,
                                  Q_ARG(QList<QUuid>, {}));
    }
    require(resets - before == state.iterations(), "every call reset the model before it returned");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const auto handler = installStoredHandler();

    // A bridge apart from the panel's: no view is on its model, as none is on the other's.
    CTargetSelectData bridge;
    bridge.ResetModel();
    EqualSlot target;
    target.appendRow(new QStandardItem(QStringLiteral("All processors(0)")));

    std::atomic<int> bridgeResets = 0;
    std::atomic<int> targetResets = 0;
    QObject::connect(bridge.GetModel(), &QAbstractItemModel::modelReset, bridge.GetModel(),
                     [&] { ++bridgeResets; });
    QObject::connect(&target, &QAbstractItemModel::modelReset, &target, [&] { ++targetResets; });

    benchmark::RegisterBenchmark("event/product", [&](benchmark::State& state) {
        notifyBridge(state, bridge, bridgeResets);
    })->UseRealTime();
    benchmark::RegisterBenchmark("event/baseline", [&](benchmark::State& state) {
        invokeSlot(state, target, targetResets);
    })->UseRealTime();

    pinTo(0);
    int result = EXIT_FAILURE;
    std::thread notifying([&] {
        pinTo(1);
        result = runBenchmarks(argc, argv);
        QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QApplication::exec();
    notifying.join();
    return result;
}
