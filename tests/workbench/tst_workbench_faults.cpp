#include "host/workbench/faults/FaultPlan.h"
#include "host/workbench/project/FaultRule.h"
#include "host/workbench/window/FaultsModel.h"
#include "host/workbench/window/FaultsPanel.h"
#include "tests/workbench/FaultRules.h"
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
