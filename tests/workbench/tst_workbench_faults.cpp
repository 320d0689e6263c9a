#include "host/workbench/faults/FaultPlan.h"
#include "host/workbench/project/FaultRule.h"
#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/window/FaultsModel.h"
#include "host/workbench/window/FaultsPanel.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QComboBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTreeView>

#include <algorithm>

namespace {

FaultRule rule(const char* text)
{
    QString problem;
    const auto read = faultOfWords(QString::fromLatin1(text).split(QLatin1Char(' ')), problem);
    if (!read)
        QTest::qFail(qPrintable(problem), __FILE__, __LINE__);
    return read.value_or(FaultRule());
}

const Operations::Operation& operation(const char* name)
{
    return *Operations::find(name);
}

/// Returns how many lines of the log begin with `start`.
int linesOf(WorkbenchUnderTest& test, const QString& start)
{
    TraceModel& trace = test.session.trace();
    trace.flush();
    int lines = 0;
    for (int row = 0; row < trace.rowCount(); ++row)
        lines += trace.entry(row).text.startsWith(start) ? 1 : 0;
    return lines;
}

/// Returns the threads of the events with this number, as the log tells them.
QStringList threadsOf(WorkbenchUnderTest& test, int number)
{
    TraceModel& trace = test.session.trace();
    trace.flush();
    QStringList threads;
    for (int row = 0; row < trace.rowCount(); ++row) {
        const TraceEntry& entry = trace.entry(row);
        if (entry.text.startsWith(QStringLiteral("Fault at event %1:").arg(number)))
            threads.append(entry.thread);
    }
    return threads;
}

ProcessorNode first(WorkbenchUnderTest& test)
{
    return test.store().snapshot().processors.value(0);
}

/// Changes a record, which event 25 announces.
void changeARecord(WorkbenchUnderTest& test)
{
    const ProcessorNode node = first(test);
    test.store().setOnline({node.id}, !node.online);
}

void click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

} // namespace

/// The faults that the workbench makes by rule.
class WorkbenchFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadAndWriteRulesAsTexts_data();
    void shouldReadAndWriteRulesAsTexts();
    void shouldRefuseWrongRules_data();
    void shouldRefuseWrongRules();
    void shouldStrikeTheGivenCallOnly();
    void shouldStrikeAlikeForTheSameSeed();
    void shouldKeepRulesInTheProjectFile();
    void shouldRefuseRulesInAFileWithTheirPlace();
    void shouldDelayAnAnswer();
    void shouldAnswerWithADefaultValue();
    void shouldAnswerWithAnotherIdentity();
    void shouldRefuseRequests();
    void shouldTakeBackWhatThePanelShowsOfARefusedRequest();
    void shouldLoseAndRepeatEvents_data() { addDeliveries(); }
    void shouldLoseAndRepeatEvents();
    void shouldDeliverEventsLateAndElsewhere_data() { addDeliveries(); }
    void shouldDeliverEventsLateAndElsewhere();
    void shouldReplaceTheHandlerInsideAQuestion();
    void shouldDestroyThePanelInsideAQuestion();
    void shouldNotDestroyThePanelWhileItPaints();
    void shouldEndWithFaultsUnderWay();
    void shouldEditTheRulesInTheWindow();
    void shouldSayWhyAnEditIsRefused();

private:
    const TestSettings m_settings;
};

void WorkbenchFaultsTest::shouldReadAndWriteRulesAsTexts_data()
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

void WorkbenchFaultsTest::shouldReadAndWriteRulesAsTexts()
{
    QFETCH(QString, text);
    const FaultRule read = rule(qPrintable(text));
    QCOMPARE(faultText(read), text);
    QVERIFY(!checkFaultRule(read));
}

void WorkbenchFaultsTest::shouldRefuseWrongRules_data()
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

void WorkbenchFaultsTest::shouldRefuseWrongRules()
{
    QFETCH(QString, text);
    QFETCH(QString, problem);
    QString found;
    QVERIFY(!faultOfWords(text.split(QLatin1Char(' ')), found));
    QVERIFY2(found.startsWith(problem), qPrintable(found));
}

void WorkbenchFaultsTest::shouldStrikeTheGivenCallOnly()
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

void WorkbenchFaultsTest::shouldStrikeAlikeForTheSameSeed()
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

void WorkbenchFaultsTest::shouldKeepRulesInTheProjectFile()
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

void WorkbenchFaultsTest::shouldRefuseRulesInAFileWithTheirPlace()
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

void WorkbenchFaultsTest::shouldDelayAnAnswer()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    test.store().setFaults({rule("GetIPEntry slow 30")});
    QElapsedTimer timer;
    timer.start();
    test.handler()->GetIPEntry(0);
    QVERIFY(timer.elapsed() >= 30);
    QCOMPARE(test.session.faults().strikes(), QList<qint64>{1});
    QCOMPARE(linesOf(test, QStringLiteral("Fault at GetIPEntry: GetIPEntry slow 30")), 1);
}

void WorkbenchFaultsTest::shouldAnswerWithADefaultValue()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    const auto handler = test.handler();
    const QUuid id = first(test).id;
    const int asked = linesOf(test, QStringLiteral("GetProcessorNode("));
    test.store().setFaults({rule("GetProcessorNode defaultAnswer"),
                            rule("GetAllProcessorNodes defaultAnswer"),
                            rule("GetIPList defaultAnswer")});
    QCOMPARE(handler->GetProcessorNode(id).id, QUuid());
    QCOMPARE(linesOf(test, QStringLiteral("GetProcessorNode({")), asked + 1);
    QVERIFY(handler->GetAllProcessorNodes().isEmpty());
    QStringList entries{QStringLiteral("former")};
    handler->GetIPList(entries);
    QVERIFY(!entries.contains(QStringLiteral("192.168.0.10(Left wing)")));
    test.store().setFaults({});
    QCOMPARE(handler->GetProcessorNode(id).id, id);
}

void WorkbenchFaultsTest::shouldAnswerWithAnotherIdentity()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    const auto handler = test.handler();
    const QUuid id = first(test).id;
    const auto all = handler->GetAllProcessorNodes();
    QVERIFY(all.size() > 1);
    test.store().setFaults({rule("* wrongIdentity")});
    const ProcessorNode wrong = handler->GetProcessorNode(id);
    QVERIFY(!wrong.id.isNull() && wrong.id != id);
    QCOMPARE(wrong.name, first(test).name);
    QCOMPARE(handler->GetProcessorNode(id).id, wrong.id);
    const auto twice = handler->GetAllProcessorNodes();
    QCOMPARE(twice.size(), all.size());
    QCOMPARE(twice.first().id, all.last().id);
    QCOMPARE(twice.last().id, all.last().id);
    // What carries no identity is not disturbed, and not counted.
    const qint64 strikes = test.session.faults().strikes().value(0);
    QVERIFY(!handler->IsLanUsbMode());
    QCOMPARE(test.session.faults().strikes().value(0), strikes);
}

void WorkbenchFaultsTest::shouldRefuseRequests()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    const auto handler = test.handler();
    const int before = test.store().snapshot().processors.size();
    test.store().setFaults({rule("* refusal")});
    handler->AddProcessors({}, 2);
    QCOMPARE(linesOf(test, QStringLiteral("AddProcessors({}, 2)")), 1);
    handler->DeleteProcessors({first(test).id});
    QCOMPARE(handler->CreateGroup({}), QUuid());
    QVERIFY(!handler->RenameProcessor(first(test).id, QStringLiteral("New")));
    QVERIFY(handler->ImportIPFile(QStringLiteral("missing")) != 0);
    QVERIFY(handler->ReadOnlineIPAddresses() != 0);
    QVERIFY(handler->DetectAllDevices() != 0);
    test.waitForPanel();
    QCOMPARE(test.store().snapshot().processors.size(), before);
    QVERIFY(first(test).name != QStringLiteral("New"));
}

void WorkbenchFaultsTest::shouldTakeBackWhatThePanelShowsOfARefusedRequest()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    const Project project = test.store().snapshot();
    QVERIFY(!project.groups.isEmpty());
    test.store().setFaults({rule("RenameGroup refusal")});
    const int announced = linesOf(test, QStringLiteral("16 "));
    test.handler()->RenameGroup(project.groups.first().id, QStringLiteral("Other"));
    test.waitForPanel();
    QVERIFY(linesOf(test, QStringLiteral("16 ")) > announced);
    QCOMPARE(test.store().snapshot().groups.first().name, project.groups.first().name);
}

void WorkbenchFaultsTest::shouldLoseAndRepeatEvents()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    test.waitForPanel();
    const QString before = test.panelTree();
    test.store().setFaults(
        {rule("event 18 call 1 lost"), rule("event 18 call 2 twice"), rule("event 26 wrongType")});
    test.store().addProcessors(QUuid(), 1);
    QTRY_COMPARE(test.session.faults().strikes().value(0), qint64{1});
    QTRY_VERIFY(test.session.notifier().isIdle());
    QCOMPARE(test.panelTree(), before);
    // The second one comes twice, and the panel shows one row.
    const QUuid added = test.store().addProcessors(QUuid(), 1).first();
    const QString name = test.store().snapshot().processor(added)->name;
    QTRY_COMPARE(test.panelTree().count(name), 1);
    QCOMPARE(test.session.faults().strikes().value(1), qint64{1});
    // An argument that it cannot read leaves the panel as it is.
    const QString shown = test.panelTree();
    QVERIFY(test.store().renameProcessor(added, QStringLiteral("Renamed")));
    QTRY_COMPARE(test.session.faults().strikes().value(2), qint64{1});
    QTRY_VERIFY(test.session.notifier().isIdle());
    QCOMPARE(test.panelTree(), shown);
}

void WorkbenchFaultsTest::shouldDeliverEventsLateAndElsewhere()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    test.waitForPanel();
    const char* texts[] = {"event 18 call 1 late 20", "event 18 call 2 otherThread",
                           "event 18 call 3 guiThread"};
    QList<FaultRule> rules;
    for (const char* text : texts)
        rules.append(rule(text));
    test.store().setFaults(rules);
    for (int event = 0; event < 3; ++event) {
        const QUuid added = test.store().addProcessors(QUuid(), 1).first();
        const QString name = test.store().snapshot().processor(added)->name;
        QTRY_VERIFY2(test.panelTree().contains(name), texts[event]);
    }
    QCOMPARE(test.session.faults().strikes(), (QList<qint64>{1, 1, 1}));
    QCOMPARE(threadsOf(test, 18).size(), 3);
    test.waitForPanel();
}

void WorkbenchFaultsTest::shouldReplaceTheHandlerInsideAQuestion()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    const auto before = test.handler();
    test.store().setFaults({rule("GetProcessorNode call 1 handlerReplaced")});
    // The panel asks for the record again.
    changeARecord(test);
    QTRY_VERIFY(test.handler() != before);
    test.action(ActionId::Reconnect)->trigger();
    test.store().addProcessors(QUuid(), 1);
    test.waitForPanel();
    QCOMPARE(test.session.faults().strikes(), QList<qint64>{1});
}

void WorkbenchFaultsTest::shouldDestroyThePanelInsideAQuestion()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    test.store().setFaults({rule("GetProcessorNode call 1 panelDestroyed")});
    changeARecord(test);
    QTRY_VERIFY(!test.session.layer());
    QVERIFY(!test.action(ActionId::ClosePanel)->isEnabled());
    test.action(ActionId::OpenPanel)->trigger();
    test.waitForPanel();
    QCOMPARE(test.session.faults().strikes(), QList<qint64>{1});
}

void WorkbenchFaultsTest::shouldNotDestroyThePanelWhileItPaints()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    // The selected row asks whether it has a button.
    auto* tree = test.session.layer()->GetWidget()->findChild<QTreeView*>();
    const ProcessorNode node = test.store().snapshot().processors.last();
    test.store().setCurrentProcessor(node.id);
    QTRY_COMPARE(tree->currentIndex().data().toString(), node.name);
    test.waitForPanel();
    test.store().setFaults({rule("* panelDestroyed"), rule("* slow 0")});
    tree->viewport()->repaint();
    QVERIFY(test.session.layer());
    QCOMPARE(test.session.faults().strikes().value(0), qint64{0});
    QVERIFY(test.session.faults().strikes().value(1) > 0);
}

void WorkbenchFaultsTest::shouldEndWithFaultsUnderWay()
{
    QPointer<MainWindow> window;
    {
        WorkbenchUnderTest test;
        test.waitForPanel();
        window = &test.window;
        test.store().setFaults({rule("event * late 60000"), rule("event * otherThread")});
        changeARecord(test);
        QTRY_VERIFY(test.session.faults().strikes().value(0) > 0);
    }
    QVERIFY(!window);
}

void WorkbenchFaultsTest::shouldEditTheRulesInTheWindow()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    auto* dock = test.window.findChild<QDockWidget*>(QStringLiteral("faultsDock"));
    QVERIFY(dock && !dock->isVisible());
    QTest::keyClick(&test.window, Qt::Key_4, Qt::ControlModifier);
    QTRY_VERIFY(dock->isVisible());
    auto* panel = qobject_cast<FaultsPanel*>(dock->widget());
    QVERIFY(panel);
    QTRY_VERIFY(panel->view()->hasFocus());
    const auto buttons = panel->findChildren<QPushButton*>();
    const auto button = [&](const QString& text) {
        return *std::find_if(buttons.begin(), buttons.end(),
                             [&](QPushButton* each) { return each->text() == text; });
    };
    QVERIFY(!button(QStringLiteral("Remove"))->isEnabled());
    click(button(QStringLiteral("Add")));
    QCOMPARE(test.store().snapshot().faults.size(), 1);
    QVERIFY(!test.store().snapshot().faults.first().enabled);

    // The place is chosen from a list, and the effect goes with it.
    QTableView* view = panel->view();
    const auto cell = [&](int column) { return view->model()->index(0, column); };
    QTest::keyClick(view, Qt::Key_F2);
    auto* list = view->findChild<QComboBox*>();
    QVERIFY(list);
    QVERIFY(list->findText(QStringLiteral("event 25")) > 0);
    QCOMPARE(list->findText(QStringLiteral("event 2")), -1);
    while (list->currentText() != QStringLiteral("event 25"))
        QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QTRY_COMPARE(test.store().snapshot().faults.first().at, QStringLiteral("event 25"));
    QCOMPARE(test.store().snapshot().faults.first().effect, FaultEffect::Late);

    // A number is typed, and the box switches the rule on.
    view->setCurrentIndex(cell(FaultsModel::TimeColumn));
    view->setFocus();
    QTest::keyClick(view, Qt::Key_F2);
    auto* field = view->findChild<QLineEdit*>();
    QVERIFY(field);
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("5"));
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_COMPARE(test.store().snapshot().faults.first().milliseconds, 5);
    view->setCurrentIndex(cell(FaultsModel::EnabledColumn));
    QTest::keyClick(view, Qt::Key_Space);
    QVERIFY(test.store().snapshot().faults.first().enabled);
    changeARecord(test);
    QTRY_COMPARE(cell(FaultsModel::StruckColumn).data().toInt(), 1);
    click(button(QStringLiteral("Count anew")));
    QCOMPARE(cell(FaultsModel::StruckColumn).data().toInt(), 0);

    QVERIFY(test.store().isModified());
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Delete);
    QCOMPARE(view->model()->rowCount(), 0);
    QVERIFY(test.store().snapshot().faults.isEmpty());
    QTest::keyClick(&test.window, Qt::Key_4, Qt::ControlModifier);
    QTRY_VERIFY(!dock->isVisible());
}

void WorkbenchFaultsTest::shouldSayWhyAnEditIsRefused()
{
    WorkbenchUnderTest test;
    test.waitForPanel();
    test.store().setFaults({rule("event 25 lost")});
    FaultsModel model(test.store(), test.session.faults());
    QSignalSpy refused(&model, &FaultsModel::refused);
    const auto set = [&](int column, const QVariant& value) {
        return model.setData(model.index(0, column), value);
    };
    QVERIFY(!set(FaultsModel::PlaceColumn, QStringLiteral("GetNode")));
    QCOMPARE(refused.takeLast().value(0).toString(),
             QStringLiteral("GetNode is no operation of the handler, and no event such as "
                            "\"event 25\""));
    QVERIFY(!set(FaultsModel::CallColumn, QStringLiteral("many")));
    QCOMPARE(refused.takeLast().value(0).toString(), QStringLiteral("many is no number"));
    QVERIFY(!set(FaultsModel::ProbabilityColumn, QStringLiteral("2")));
    QVERIFY(!set(FaultsModel::TimeColumn, -1));
    QVERIFY(!set(FaultsModel::EffectColumn, QStringLiteral("slow")));
    QCOMPARE(test.store().snapshot().faults, QList<FaultRule>{rule("event 25 lost")});
    QVERIFY(set(FaultsModel::EffectColumn, QStringLiteral("twice")));
    QCOMPARE(refused.takeLast().value(0).toString(), QString());
    QCOMPARE(test.store().snapshot().faults, QList<FaultRule>{rule("event 25 twice")});
}

TSA_TEST_MAIN(WorkbenchFaultsTest)
#include "tst_workbench_faults.moc"
