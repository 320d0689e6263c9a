// A recording of a day, some 100,000 lines, repeated, against the session that it holds: the same
// workbench runs that from a script, which waits for nobody. Both are processes of their own.

#include "benchmarks/support/Bench.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdlib>
#include <utility>

namespace {

constexpr int kRounds = 660; // for so many lines
constexpr int kLines = 100000;

constexpr int kMostMs = 600000;

/// What the user and the host do over and over; %1 is the number of the round.
constexpr char kRound[] = "click row \"Left\"\n"
                          "press F2\n"
                          "type \"Processor %1\"\n"
                          "press Return\n"
                          "expect row \"Processor %1\"\n"
                          "host rename \"Processor %1\" \"Left\"\n"
                          "expect row \"Left\"\n"
                          "click row \"Left\"\n"
                          "click row \"Right\" with Ctrl\n"
                          "click row \"Door\"\n"
                          "set \"Door\" ipAddress \"192.168.1.%2\"\n"
                          "expect row \"Door\"\n";

class Day
{
public:
    Day()
    {
        QFile script(file("day.script"));
        require(script.open(QIODevice::WriteOnly), "the script is written");
        script.write("open \"" BENCH_PROJECT "\"\nexpect shown\n");
        for (int round = 0; round < kRounds; ++round)
            script.write(QString::fromLatin1(kRound).arg(round).arg(round % 250 + 1).toUtf8());
        script.close();
        run(session());
        QFile recording(file("day.jsonl"));
        require(recording.open(QIODevice::ReadOnly) && recording.readAll().count('\n') >= kLines,
                "the recording has the lines of a day");
    }

    QStringList session() const
    {
        return {QStringLiteral("--script"), file("day.script"), QStringLiteral("--record"),
                file("day.jsonl")};
    }

    QStringList replay() const { return {QStringLiteral("--replay"), file("day.jsonl")}; }

    static void run(const QStringList& arguments)
    {
        QProcess workbench;
        workbench.start(QStringLiteral(BENCH_WORKBENCH),
                        QStringList{QStringLiteral("--library"), QStringLiteral(BENCH_LIBRARY)}
                            + arguments);
        require(workbench.waitForFinished(kMostMs) && workbench.exitCode() == EXIT_SUCCESS,
                "the workbench ends well");
    }

private:
    QString file(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    const QTemporaryDir m_folder;
};

void measure(benchmark::State& state, const QStringList& arguments)
{
    for (auto iteration : state) {
        static_cast<void>(iteration);
        QElapsedTimer timer;
        timer.start();
        Day::run(arguments);
        state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const Day day;
    for (const auto& [name, arguments] :
         {std::pair("replay/product", day.replay()), {"replay/session", day.session()}})
        benchmark::RegisterBenchmark(name, measure, arguments)->Iterations(1)->UseManualTime();
    return runBenchmarks(argc, argv);
}
