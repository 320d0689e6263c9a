// From nothing to the first painted frame with the panel, against a bare tree of the same rows.
// Every sample is a process of its own, which takes the time itself.

#include "benchmarks/support/Bench.h"
#include "benchmarks/support/StartChild.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QStringList>

#include <utility>

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
