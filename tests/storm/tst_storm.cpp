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

/// Returns how long the storm lasts, which the environment sets.
int stormSeconds()
{
    bool given = false;
    const int seconds = qEnvironmentVariableIntValue("TSA_STORM_SECONDS", &given);
    return given ? seconds : kUsualSeconds;
}

/// Returns the habits and kinds of steps to leave out while a failure is analysed.
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

/// A host with an oracle. Its project changes on several threads. All its events are true and come
/// in the order of the changes. Its answers take time, raise events themselves, wait for other
/// threads and run event loops. After the last event the tree equals the project, and no thread was
/// blocked for too long.
///
/// A failure prints the seed of the round and the smallest number of first steps that still fails.
/// With TSA_STORM_SURVEY the storm continues after failures and counts them.
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
    // Qt Test ends a test function after five minutes unless this variable is set.
    const QByteArray limitMs = QByteArray::number((stormSeconds() + 900) * 1000);
    qputenv("QTEST_FUNCTION_TIMEOUT", limitMs);
    QApplication application(argc, argv);
    StormTest test;
    return runTests(test, argc, argv);
}
#include "tst_storm.moc"
