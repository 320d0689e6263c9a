// From nothing to the first painted frame with all that the panel can show, against a bare tree of
// the same rows. Every sample is a process of its own, which takes the time itself.

#include "benchmarks/support/Bench.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

/// The peak of the child's memory goes into the counter "peak_kib".
void startChild(benchmark::State& state, const QStringList& arguments)
{
    double peak = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QStringLiteral(START_CHILD), arguments);
        require(child.waitForFinished() && child.exitCode() == EXIT_SUCCESS, "the child starts");
        const QList<QByteArray> figures = child.readAllStandardOutput().simplified().split(' ');
        require(figures.size() == 2, "the child reports time and memory");
        state.SetIterationTime(figures.first().toDouble() * 1e-9);
        peak = std::max(peak, figures.last().toDouble());
    }
    state.counters["peak_kib"] = peak;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList panel{QStringLiteral("panel"), QStringLiteral(TARGETSELECTAREA_LIBRARY)};
    const QStringList bare{QStringLiteral("bare")};
    for (const auto& [name, arguments] :
         {std::pair("start/product", panel), {"start/baseline", bare}}) {
        benchmark::RegisterBenchmark(name, startChild, arguments)->Iterations(1)->UseManualTime();
    }
    return runBenchmarks(argc, argv);
}
