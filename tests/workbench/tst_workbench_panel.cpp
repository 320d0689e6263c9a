#include "host/widgets/HostTheme.h"
#include "host/workbench/events/EventNumber.h"
#include "host/workbench/window/Findings.h"
#include "host/workbench/window/FindingsLabel.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/RecordsPanel.h"
#include "tests/support/Contrast.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WorkbenchRun.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProgressBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

/// The panel in the workbench: how its library is loaded, and how both keep in step.
class WorkbenchPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowWhatTheChecksFind();
    void shouldShowHowLongTheHostTakes();
    void shouldRefuseOtherLibraries();
    void shouldShowTheSampleProject_data() { addDeliveries(); }
    void shouldShowTheSampleProject();
    void shouldBringEveryChangeIntoThePanel_data() { addDeliveries(); }
    void shouldBringEveryChangeIntoThePanel();
    void shouldDestroyThePanelAndInitialiseItAgain();
    void shouldSurviveTheEndOfThePanelDuringEvents();
    void shouldReplyToThePanelInEveryWay_data() { addDeliveries(); }
    void shouldReplyToThePanelInEveryWay();
    void shouldRestoreTheNameOfAGroupAfterARefusal();
    void shouldShowTheProgressOfADetection();
    void shouldLockByKey();
    void shouldWarnOfTheSelectedProcessors();

private:
    const TestSettings m_settings;
};

void WorkbenchPanelTest::shouldRefuseOtherLibraries()
{
    const QString panel = panelLibrary();
    const QString missing = m_settings.filePath(QStringLiteral("libMissing.so"));
    QString problem;
    PanelLibrary library;
    QVERIFY(!library.load(missing, problem));
    QVERIFY2(problem.startsWith(QStringLiteral("The panel's library %1 does not exist.")
                                    .arg(QDir::toNativeSeparators(missing))),
             qPrintable(problem));
    QVERIFY(!library.isLoaded());
    QVERIFY(!library.init(nullptr));

    const QString damaged = m_settings.filePath(QStringLiteral("libDamaged.so"));
    QFile file(damaged);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("no library") > 0);
    file.close();
    PanelLibrary other;
    QVERIFY(!other.load(damaged, problem));
    QVERIFY2(problem.contains(QStringLiteral("cannot be loaded: ")), qPrintable(problem));

    PanelLibrary foreign;
#ifdef Q_OS_WIN
    const QString name = QStringLiteral("HostCommon.dll");
#else
    const QString name = QStringLiteral("libHostCommon.so");
#endif
    const QString common = QFileInfo(panel).dir().filePath(name);
    QVERIFY(!foreign.load(common, problem));
    QVERIFY2(problem.endsWith(QStringLiteral("it has no TargetSelectArea_Init.")),
             qPrintable(problem));

    PanelLibrary right;
    QVERIFY2(right.load(panel, problem), qPrintable(problem));
    QVERIFY(right.isLoaded());
}

void WorkbenchPanelTest::shouldShowTheSampleProject()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    test.action(ActionId::OpenSample)->trigger();
    test.waitForPanel();
    QCOMPARE(test.store().snapshot().processors.size(), 120);
    QVERIFY2(test.panelTree().startsWith(QStringLiteral("All processors(120)[Main stage[Stage 1,")),
             qPrintable(test.panelTree()));
    QCOMPARE(test.window.records().model().rowCount(), 6 + 10);
}

void WorkbenchPanelTest::shouldBringEveryChangeIntoThePanel()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    const auto panel = [&] {
        test.waitForPanel();
        return test.panelTree();
    };
    QTRY_COMPARE(panel(), QStringLiteral("All processors(4)[G1[P11,P12],G2[P13],P14]"));
    test.store().removeProcessors({sampleId(12)});
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[P11],G2[P13],P14]"));
    test.store().regroup({sampleId(11), sampleId(13)}, QUuid());
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],G2[],P11,P14,P13]"));
    test.store().regroup({sampleId(14)}, sampleId(2));
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],G2[P14],P11,P13]"));
    test.store().renameProcessor(sampleId(14), QStringLiteral("New"));
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],G2[New],P11,P13]"));
    test.store().renameGroup(sampleId(2), QStringLiteral("H"), true);
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],H[New],P11,P13]"));
    test.store().ungroup(sampleId(2));
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],P11,P13,New]"));
    ProcessorGroupNode group;
    group.name = QStringLiteral("J");
    test.store().addGroup(group);
    QTRY_COMPARE(panel(), QStringLiteral("All processors(3)[G1[],J[],P11,P13,New]"));
    test.store().addProcessors(sampleId(1), 2);
    QTRY_COMPARE(panel(),
                 QStringLiteral("All processors(5)[G1[Processor 5,Processor 6],J[],P11,P13,New]"));
    test.store().replace(Project());
    QTRY_COMPARE(panel(), QStringLiteral("All processors(0)[]"));
}

void WorkbenchPanelTest::shouldDestroyThePanelAndInitialiseItAgain()
{
    WorkbenchUnderTest test;
    for (int round = 0; round < 3; ++round) {
        test.action(ActionId::ClosePanel)->trigger();
        QVERIFY(!test.session.layer());
        QVERIFY(!test.action(ActionId::Reconnect)->isEnabled());
        test.store().addProcessors(QUuid(), 1);
        QTRY_VERIFY(test.session.notifier().isIdle());
        test.action(ActionId::OpenPanel)->trigger();
        QVERIFY(test.session.layer());
        test.waitForPanel();
        test.action(ActionId::Reconnect)->trigger();
        test.action(ActionId::OpenPanel)->trigger();
        test.waitForPanel();
    }
    QCOMPARE(test.store().snapshot().processors.size(), 7);
}

void WorkbenchPanelTest::shouldSurviveTheEndOfThePanelDuringEvents()
{
    WorkbenchUnderTest test;
    for (int n = 0; n < 50; ++n)
        test.store().addProcessors(QUuid(), 1);
    QVERIFY(!test.session.notifier().isIdle());
    test.action(ActionId::ClosePanel)->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(test.session.notifier().isIdle(), 30000);
    test.action(ActionId::OpenPanel)->trigger();
    test.waitForPanel();
    QCOMPARE(test.store().snapshot().processors.size(), 54);
}

void WorkbenchPanelTest::shouldReplyToThePanelInEveryWay()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    const auto handler = test.handler();
    int count = 4;
    for (const HostReply reply : allHostReplies()) {
        test.store().changeAnswers([&](HandlerAnswers& answers) { answers.hostReply = reply; });
        ProcessorGroupNode group;
        group.name = QStringLiteral("Short-lived");
        const QUuid id = handler->CreateGroup(group);
        handler->AddProcessors(id, 3);
        if (reply == HostReply::BeforeReturn)
            QVERIFY(test.session.panelShowsProject());
        QTRY_COMPARE(test.store().snapshot().processors.size(), count + 3);
        test.waitForPanel();
        const ProcessorGroupNode members = handler->GetGroupNode(id);
        QCOMPARE(members.processors.size(), 3);
        handler->DeleteProcessors({members.processors.at(0).id, members.processors.at(2).id});
        handler->Ungroup(id);
        ++count;
        QTRY_COMPARE(test.store().snapshot().groups.size(), 2);
        QCOMPARE(test.store().snapshot().processors.size(), count);
        test.waitForPanel();
    }
    QTRY_VERIFY2(
        test.panelTree().startsWith(QStringLiteral("All processors(8)[G1[P11,P12],G2[P13],P14,")),
        qPrintable(test.panelTree()));
}

void WorkbenchPanelTest::shouldRestoreTheNameOfAGroupAfterARefusal()
{
    WorkbenchUnderTest test;
    test.store().changeAnswers([](HandlerAnswers& answers) { answers.acceptNewNames = false; });
    for (auto* view : test.session.layer()->GetWidget()->findChildren<QTreeView*>()) {
        if (QAbstractItemModel* model = view->model())
            model->setData(model->index(0, 0, model->index(0, 0)), QStringLiteral("Refused"));
    }
    QVERIFY(test.panelTree().contains(QStringLiteral("Refused[")));
    test.handler()->RenameGroup(sampleId(1), QStringLiteral("Refused"));
    QTRY_COMPARE(test.panelTree(), QStringLiteral("All processors(4)[G1[P11,P12],G2[P13],P14]"));
}

void WorkbenchPanelTest::shouldShowTheProgressOfADetection()
{
    WorkbenchUnderTest test;
    test.store().changeAnswers([](HandlerAnswers& answers) { answers.detectPauseMs = 1; });
    const auto* bar = test.window.statusBar()->findChild<QProgressBar*>();
    QVERIFY(bar);
    QVERIFY(!bar->isVisible());
    auto* button = test.session.layer()->GetWidget()->findChild<QToolButton*>();
    const QSignalSpy values(bar, &QProgressBar::valueChanged);
    // The panel that asked for it waits.
    bool waits = true;
    connect(bar, &QProgressBar::valueChanged, bar,
            [button, waits = &waits] { *waits = *waits && !button->isEnabled(); });
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(waits);
    QCOMPARE(values.size(), 3);
    for (int step = 0; step < 3; ++step)
        QCOMPARE(values.at(step).first().toInt(), step);
    QVERIFY(!bar->isVisible());
    QCOMPARE(test.window.statusBar()->currentMessage(), QStringLiteral("Processors found: 2"));
    QVERIFY(test.processor(12).online);
    test.waitForPanel();
}

void WorkbenchPanelTest::shouldLockByKey()
{
    WorkbenchUnderTest test;
    auto* panel = test.session.layer()->GetWidget();
    const auto* selector = panel->findChild<QComboBox*>();
    const auto act = [&](int key, int what) {
        test.action(ActionId::LockByKey)->trigger();
        auto* dialog = openDialog<QDialog>();
        dialog->findChild<QSpinBox*>()->setValue(key);
        dialog->findChild<QComboBox*>()->setCurrentIndex(what);
        QTest::keyClick(dialog, Qt::Key_Return);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    };
    act(7, 0);
    QVERIFY(!selector->isEnabled());
    act(8, 1);
    QVERIFY(selector->isEnabled());
    auto* tree = panel->findChild<QTreeView*>();
    QCOMPARE(tree->contextMenuPolicy(), Qt::DefaultContextMenu);
    act(7, 2);
    QCOMPARE(tree->contextMenuPolicy(), Qt::PreventContextMenu);
    // Another panel knows nothing of the locks.
    test.action(ActionId::LockOperations)->trigger();
    test.action(ActionId::ClosePanel)->trigger();
    test.action(ActionId::OpenPanel)->trigger();
    QVERIFY(!test.action(ActionId::LockOperations)->isChecked());
    QVERIFY(test.session.layer()->GetWidget()->findChild<QComboBox*>()->isEnabled());
    test.waitForPanel();
}

void WorkbenchPanelTest::shouldWarnOfTheSelectedProcessors()
{
    WorkbenchUnderTest test;
    const auto warning = [&] {
        QStringList lines;
        DialogDriver driver;
        driver.then([&](QWidget& dialog) {
            lines = dialog.accessibleDescription().split(QLatin1Char('\n'));
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        test.action(ActionId::LanUsbWarning)->trigger();
        const bool isAnswered = QTest::qWaitFor([&] { return driver.isDone(); });
        return isAnswered ? lines.mid(1) : QStringList({QStringLiteral("not shown")});
    };
    QCOMPARE(warning().size(), 3);
    test.window.records().select({sampleId(12)});
    QCOMPARE(warning(), QStringList({QStringLiteral("P12 (IP:10.0.0.2)")}));
    test.store().removeProcessors({sampleId(11), sampleId(12), sampleId(13), sampleId(14)});
    QCOMPARE(warning(), QStringList());
    test.waitForPanel();
}

void WorkbenchPanelTest::shouldShowWhatTheChecksFind()
{
    WorkbenchUnderTest test;
    const auto findings = [&] {
        QStringList codes;
        test.session.trace().flush();
        for (int row = 0; row < test.session.trace().rowCount(); ++row) {
            const TraceEntry& entry = test.session.trace().entry(row);
            if (entry.kind == TraceEntry::Kind::Finding)
                codes.append(Findings::code(entry.text));
        }
        return codes;
    };
    const auto* count = test.window.findChild<FindingsLabel*>();
    // An event about a processor that nobody knows.
    test.session.notifier().raise(HostEvent(EventNumber::ProcessorAdded, sampleId(99)));
    test.waitForPanel();
    QVERIFY(findings().isEmpty());
    QVERIFY(!count->isVisible());

    test.action(ActionId::ContractChecks)->trigger();
    test.action(ActionId::ClosePanel)->trigger();
    test.action(ActionId::OpenPanel)->trigger();
    test.waitForPanel();
    test.session.notifier().raise(HostEvent(EventNumber::ProcessorAdded, sampleId(99)));
    QTRY_VERIFY(findings().contains(QStringLiteral("TSA-W17")));
    QVERIFY(count->isVisible());
    QVERIFY2(count->text().startsWith(QStringLiteral("Findings: 0 breaches, ")),
             qPrintable(count->text()));

    auto* kinds = test.window.log().kindSelector();
    kinds->setCurrentIndex(kinds->findText(QStringLiteral("Findings")));
    const QAbstractItemModel* shown = test.window.log().view()->model();
    QCOMPARE(shown->rowCount(), findings().size());
    const QModelIndex line = shown->index(0, TraceModel::TextColumn);
    const QString tip = line.data(Qt::ToolTipRole).toString();
    QVERIFY2(tip.contains(QStringLiteral("Remedy")), qPrintable(tip));
    QVERIFY(contrast(line.data(Qt::ForegroundRole).value<QColor>(), hostColors().window) >= 4.5);
    QVERIFY(contrast(Findings::colour(QStringLiteral("TSA-E13")), hostColors().window) >= 4.5);
    test.action(ActionId::ClearLog)->trigger();
    QVERIFY(!count->isVisible());
    test.action(ActionId::ContractChecks)->trigger();
    test.action(ActionId::ClosePanel)->trigger();
    // Each finding comes in a log category, too.
    QVERIFY(!WarningTrap::take().filter(QStringLiteral("TSA-W17")).isEmpty());
}

void WorkbenchPanelTest::shouldShowHowLongTheHostTakes()
{
    WorkbenchUnderTest test;
    FaultRule slow;
    slow.at = QStringLiteral("GetIPCount");
    slow.effect = FaultEffect::Slow;
    slow.milliseconds = 20;
    test.store().setFaults({slow});
    test.session.trace().clear();
    test.handler()->GetIPCount(0);
    test.handler()->GetSelectionMode();
    test.session.trace().flush();
    QMap<QString, qint64> durations;
    for (int row = 0; row < test.session.trace().rowCount(); ++row) {
        const TraceEntry& entry = test.session.trace().entry(row);
        durations.insert(entry.text.section(QLatin1Char('('), 0, 0), entry.nanoseconds);
    }
    QVERIFY(durations.value(QStringLiteral("GetIPCount")) >= 20000000);
    QVERIFY(durations.value(QStringLiteral("GetSelectionMode"), -1) >= 0);
}

TSA_TEST_MAIN(WorkbenchPanelTest)

#include "tst_workbench_panel.moc"
