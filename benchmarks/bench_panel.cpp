// The same start with all that the panel can show: the host answers every question with yes.

#include "benchmarks/support/Bench.h"
#include "benchmarks/support/StartChild.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QStringList>

#include <utility>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList panel{QStringLiteral("whole-panel"),
                            QStringLiteral(TARGETSELECTAREA_LIBRARY)};
    const QStringList bare{QStringLiteral("bare")};
    for (const auto& [name, arguments] :
         {std::pair("panel/product", panel), {"panel/baseline", bare}}) {
        benchmark::RegisterBenchmark(name, startChild, arguments)->Iterations(1)->UseManualTime();
    }
    return runBenchmarks(argc, argv);
}
