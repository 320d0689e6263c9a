#include "benchmarks/support/StartChild.h"

#include "benchmarks/support/Bench.h"

#include <benchmark/benchmark.h>

#include <QProcess>

#include <algorithm>
#include <cstdlib>

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
