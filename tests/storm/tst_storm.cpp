#include "tests/storm/StormPlan.h"
#include "tests/storm/StormPlayer.h"
#include "tests/support/Seed.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTest>

#include <chrono>

namespace {
constexpr int kUsualSeconds = 60;
constexpr int kShownComplaints = 12;

/// The rounds of a storm last as long as the environment says.
int stormSeconds()
{
    bool given = false;
    const int seconds = qEnvironmentVariableIntValue("TSA_STORM_SECONDS", &given);
    return given ? seconds : kUsualSeconds;
}

/// Habits and kinds of steps to do without, when a failure is looked into.
QStringList without()
{
    return qEnvironmentVariable("TSA_STORM_WITHOUT").split(QLatin1Char(','), Qt::SkipEmptyParts);
}

QString report(const StormPlan& plan, int steps, const StormOutcome& outcome)
{
    return QStringLiteral("%1\n\n%2\n\nwhat happened:\n%3")
        .arg(outcome.complaints.mid(0, kShownComplaints).join(QLatin1Char('\n')),
             plan.describe(steps), outcome.journal.join(QLatin1Char('\n')));
}

} // namespace

/// A host with an oracle. Its project really changes, on several threads; it tells nothing but what
/// is so, in the order in which it came about; and its answers take time, tell something
/// themselves, wait for other threads and run event loops. When all is told, the tree equals the
/// project, and nobody has stood still meanwhile.
///
/// A failure prints the seed of the round and the shortest beginning of its steps that still fails.
/// TSA_STORM_SURVEY plays on after failures and counts them.
class StormTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowTheHostsProjectInTheEnd();
};

void StormTest::shouldShowTheHostsProjectInTheEnd()
{
    const bool survey = qEnvironmentVariableIsSet("TSA_STORM_SURVEY");
    const QDeadlineTimer end{std::chrono::seconds(stormSeconds())};
    int rounds = 0;
    int failures = 0;
    int slowRounds = 0;
    int slowFailures = 0;
    for (quint32 seed = firstSeed(); rounds == 0 || !end.hasExpired(); ++seed, ++rounds) {
        qInfo("TSA_SEED=%u", seed);
        const StormPlan plan = StormPlan::draw(seed, without());
        int steps = static_cast<int>(plan.steps.size());
        StormOutcome outcome = playStorm(plan, steps);
        outcome.complaints += WarningTrap::take();
        slowRounds += plan.slow > 0 ? 1 : 0;
        if (outcome.isGood())
            continue;
        if (survey) {
            ++failures;
            slowFailures += plan.slow > 0 ? 1 : 0;
            qInfo("  %s", qPrintable(outcome.complaints.mid(0, 3).join(QLatin1String("; "))));
            continue;
        }
        steps = shrinkStorm(plan, steps, outcome);
        QFAIL(qPrintable(report(plan, steps, outcome)));
    }
    qInfo("%d rounds, %d with slow answers; %d failed, %d of these with slow answers", rounds,
          slowRounds, failures, slowFailures);
    QCOMPARE(failures, 0);
}

int main(int argc, char** argv)
{
    // Qt Test ends what takes five minutes, unless it is told.
    const QByteArray limitMs = QByteArray::number((stormSeconds() + 900) * 1000);
    qputenv("QTEST_FUNCTION_TIMEOUT", limitMs);
    QApplication application(argc, argv);
    StormTest test;
    return runTests(test, argc, argv);
}
#include "tst_storm.moc"
