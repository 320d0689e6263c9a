#include "host/workbench/faults/FaultPlan.h"
#include "host/workbench/project/FaultRule.h"
#include "host/workbench/project/Project.h"
#include "host/workbench/project/ProjectJson.h"
#include "sdk/relay/Operations.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/FaultRules.h"

#include <QSignalSpy>
#include <QTest>

#include <chrono>
#include <future>

namespace {

const Operations::Operation& operation(const char* name)
{
    return *Operations::find(name);
}

} // namespace

/// The rules of faults: their texts, their place in the project file, and when they strike.
class FaultRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadAndWriteRulesAsTexts_data();
    void shouldReadAndWriteRulesAsTexts();
    void shouldRefuseWrongRules_data();
    void shouldRefuseWrongRules();
    void shouldLetAThreadGoWhenTheRulesChange();
    void shouldStrikeTheGivenCallOnly();
    void shouldStrikeAlikeForTheSameSeed();
    void shouldKeepRulesInTheProjectFile();
    void shouldRefuseRulesInAFileWithTheirPlace();
};

void FaultRulesTest::shouldReadAndWriteRulesAsTexts_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"GetProcessorNode call 3 slow 2000", "* slow 10", "GetAllProcessorNodes defaultAnswer",
          "GetGroupNode wrongIdentity", "CreateGroup call 1 refusal", "event 25 call 2 lost",
          "event * probability 0.25 seed 7 late 100", "event 18 twice", "event 20 wrongType",
          "event 0 guiThread", "event 39 otherThread", "IsLanUsbMode panelDestroyed",
          "event 16 handlerReplaced"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void FaultRulesTest::shouldReadAndWriteRulesAsTexts()
{
    QFETCH(QString, text);
    const FaultRule read = rule(qPrintable(text));
    QCOMPARE(faultText(read), text);
    QVERIFY(!checkFaultRule(read));
}

void FaultRulesTest::shouldRefuseWrongRules_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    QTest::newRow("nothing") << QString() << "a rule such as";
    QTest::newRow("no effect") << "GetProcessorNode"
                               << "a rule such as";
    QTest::newRow("unknown operation") << "GetNode slow"
                                       << "at: GetNode is no operation";
    QTest::newRow("unknown event") << "event 40 lost"
                                   << "at: an event from 0 to 39";
    QTest::newRow("negative event") << "event -1 lost"
                                    << "at: an event from 0 to 39";
    QTest::newRow("call before the first") << "IsLanUsbMode call -1 slow"
                                           << "call: a whole number";
    QTest::newRow("call is no number") << "IsLanUsbMode call x slow"
                                       << "a rule such as";
    QTest::newRow("probability above 1") << "* probability 1.5 slow"
                                         << "probability: a number from";
    QTest::newRow("probability is no number") << "* probability nan slow"
                                              << "probability: a number";
    QTest::newRow("too slow") << "* slow 60001"
                              << "milliseconds: a whole number from 0 to 60000";
    QTest::newRow("time is no number") << "* slow soon"
                                       << "milliseconds: a whole number";
    QTest::newRow("effect of events") << "IsLanUsbMode lost"
                                      << "effect: lost does not apply to";
    QTest::newRow("effect of calls") << "event 25 slow"
                                     << "effect: slow does not apply to event 25";
    QTest::newRow("no identity") << "IsLanUsbMode wrongIdentity"
                                 << "effect: wrongIdentity does not";
    QTest::newRow("no answer") << "Ungroup defaultAnswer"
                               << "effect: defaultAnswer does not apply";
    QTest::newRow("refused question") << "GetIPCount refusal"
                                      << "effect: refusal does not apply";
    QTest::newRow("observer") << "SetObserver refusal"
                              << "effect: refusal does not apply";
    QTest::newRow("too many words") << "* slow 5 ms"
                                    << "nothing is expected behind * slow 5";
}

void FaultRulesTest::shouldRefuseWrongRules()
{
    QFETCH(QString, text);
    QFETCH(QString, problem);
    QString found;
    QVERIFY(!faultOfWords(text.split(QLatin1Char(' ')), found));
    QVERIFY2(found.startsWith(problem), qPrintable(found));
}

void FaultRulesTest::shouldLetAThreadGoWhenTheRulesChange()
{
    FaultPlan plan;
    auto kept = std::async(std::launch::async,
                           [&plan] { plan.keepThread(std::chrono::minutes(1), plan.changes()); });
    const auto isGone = [&kept] {
        return kept.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    // More than once, as the thread may not be there yet.
    int changes = 0;
    const auto change = [&] {
        plan.setRules({rule(++changes % 2 == 0 ? "* slow 1" : "* slow 2")});
        return isGone();
    };
    QTRY_VERIFY(change());

    // One that has yet to wait when they change.
    const quint64 changesBefore = plan.changes();
    change();
    kept = std::async(std::launch::async, [&plan, changesBefore] {
        plan.keepThread(std::chrono::minutes(1), changesBefore);
    });
    QTRY_VERIFY(isGone());
}

void FaultRulesTest::shouldStrikeTheGivenCallOnly()
{
    FaultPlan plan;
    plan.setRules({rule("GetIPCount call 2 slow 0"), rule("* call 3 slow 1")});
    QSignalSpy struck(&plan, &FaultPlan::struck);
    const auto always = [](FaultEffect) { return true; };
    QList<int> strikes;
    for (int call = 0; call < 4; ++call)
        strikes.append(plan.strike(operation("GetIPCount"), always).size());
    QCOMPARE(strikes, (QList<int>{0, 1, 1, 0}));
    QCOMPARE(plan.strikes(), (QList<qint64>{1, 1}));
    QCOMPARE(struck.size(), 2);

    // A new rule leaves the counts of those before it.
    plan.setRules({rule("GetIPCount call 2 slow 0"), rule("* call 3 slow 1"), rule("* slow 0")});
    QCOMPARE(plan.strikes(), (QList<qint64>{1, 1, 0}));
    plan.restart();
    QCOMPARE(plan.strikes(), (QList<qint64>{0, 0, 0}));

    // What is not possible does not count.
    plan.setRules({rule("* call 1 panelDestroyed")});
    QVERIFY(plan.strike(operation("GetIPCount"), [](FaultEffect) { return false; }).isEmpty());
    QCOMPARE(plan.strike(operation("GetIPCount"), always).size(), 1);

    // One that is switched off neither counts nor strikes.
    FaultRule off = rule("* call 1 slow 0");
    off.enabled = false;
    plan.setRules({off});
    QVERIFY(plan.strike(operation("GetIPCount"), always).isEmpty());
    off.enabled = true;
    plan.setRules({off});
    QCOMPARE(plan.strike(operation("GetIPCount"), always).size(), 1);
}

void FaultRulesTest::shouldStrikeAlikeForTheSameSeed()
{
    const auto strikesOf = [](const char* text) {
        FaultPlan plan;
        plan.setRules({rule(text)});
        QString strikes;
        for (int event = 0; event < 200; ++event)
            strikes += plan.strike(25).isEmpty() ? QLatin1Char('.') : QLatin1Char('x');
        return strikes;
    };
    const QString seven = strikesOf("event 25 probability 0.25 seed 7 lost");
    QCOMPARE(strikesOf("event 25 probability 0.25 seed 7 lost"), seven);
    QVERIFY(strikesOf("event 25 probability 0.25 seed 8 lost") != seven);
    QVERIFY2(seven.count(QLatin1Char('x')) > 20 && seven.count(QLatin1Char('x')) < 90,
             qPrintable(seven));
    QCOMPARE(strikesOf("event 25 probability 0 seed 7 lost").count(QLatin1Char('x')), 0);
    QCOMPARE(strikesOf("event 25 lost").count(QLatin1Char('x')), 200);
    QCOMPARE(strikesOf("event 26 lost").count(QLatin1Char('x')), 0);
}

void FaultRulesTest::shouldKeepRulesInTheProjectFile()
{
    Project project;
    project.faults = {rule("event 25 probability 0.5 seed 4294967295 late 60000"),
                      rule("GetProcessorNode call 3 wrongIdentity")};
    project.faults[1].enabled = false;
    QString problem;
    const auto read = parseProject(projectToJson(project), problem);
    QVERIFY2(read, qPrintable(problem));
    QCOMPARE(read->faults, project.faults);
    // A program that knows no faults reads a file without them.
    QVERIFY(!projectToJson(Project()).contains("faults"));
}

void FaultRulesTest::shouldRefuseRulesInAFileWithTheirPlace()
{
    const auto problemOf = [](const QByteArray& fields) {
        QString problem;
        const QByteArray json = "{\"version\": 1,\n\"faults\": [" + fields + "]}";
        if (parseProject(json, problem))
            return QStringLiteral("none");
        return problem;
    };
    QCOMPARE(problemOf("{\"at\": \"event 99\", \"effect\": \"lost\"}"),
             QStringLiteral("line 2, column 19: faults[0].at: an event from 0 to 39, or event *, "
                            "is expected"));
    QVERIFY(problemOf("{\"effect\": \"explode\"}")
                .startsWith(QStringLiteral("line 2, column 23: faults[0].effect: one of slow, ")));
    QVERIFY(problemOf("{\"sed\": 1}").endsWith(QStringLiteral("this field is not known")));
    QVERIFY(problemOf("{\"seed\": -1}").contains(QStringLiteral("faults[0].seed: a whole number")));
    QByteArray many("{}");
    for (int rules = 0; rules < 100; ++rules)
        many += ",{}";
    QVERIFY(problemOf(many).contains(QStringLiteral("faults[100]: a project holds at most 100")));
}

TSA_TEST_MAIN(FaultRulesTest)
#include "tst_fault_rules.moc"
