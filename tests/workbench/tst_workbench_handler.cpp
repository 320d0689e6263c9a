#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/HandlerUnderTest.h"

#include <QMenu>
#include <QTest>
#include <QTimer>

#include <thread>

class WorkbenchHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerWithRecords();
    void shouldCarryOutWhatThePanelAsksFor();
    void shouldRefuseNames();
    void shouldFollowTheSelection();
    void shouldAnswerFromTheSettings();
    void shouldDetectProcessorsWithAnAddress();
    void shouldFindProcessorsAtTheAddressesOfTheList();
    void shouldReportTheProgressOfADetection_data();
    void shouldReportTheProgressOfADetection();
    void shouldNotDetectInsideADetection();
    void shouldAbandonADetectionOfAnotherProject();
    void shouldCancelADetection();
    void shouldHandleDeviceSets();
    void shouldOfferAMenuEntry();
    void shouldShowTips();
    void shouldTraceEveryCallWithItsThread();
};

void WorkbenchHandlerTest::shouldAnswerWithRecords()
{
    HandlerUnderTest test;
    QCOMPARE(test.handler.GetAllProcessorNodes().size(), 4);
    QCOMPARE(test.handler.GetAllGroupNodes().at(0).name, QStringLiteral("G1"));
    QCOMPARE(test.handler.GetGroupNode(sampleId(2)).name, QStringLiteral("G2"));
    QCOMPARE(test.handler.GetProcessorNode(sampleId(14)).name, QStringLiteral("P14"));
    QVERIFY(test.handler.GetProcessorNode(sampleId(99)).id.isNull());
    QVERIFY(test.handler.GetGroupNode(sampleId(99)).id.isNull());
    QCOMPARE(test.handler.GetCurrentProcessorId(), sampleId(11));
}

void WorkbenchHandlerTest::shouldCarryOutWhatThePanelAsksFor()
{
    HandlerUnderTest test;
    test.handler.AddProcessors(sampleId(1), 2);
    QCOMPARE(test.events(), QStringLiteral("19"));
    test.handler.AddProcessorsWithIps(QUuid(), {0x0A000020});
    QCOMPARE(test.events(), QStringLiteral("18"));
    test.handler.AddProcessorsFromIpList(
        sampleId(2),
        {QStringLiteral("10.0.0.50(A)"), QStringLiteral("nonsense"), QStringLiteral("10.0.0.51")});
    QCOMPARE(test.events(), QStringLiteral("19"));
    QCOMPARE(test.store.snapshot().processors.last().ipAddress, 0x0A000033U);
    ProcessorGroupNode group;
    group.name = QStringLiteral("New");
    const QUuid id = test.handler.CreateGroup(group);
    QCOMPARE(test.events(), QStringLiteral("17"));
    QCOMPARE(test.handler.GetGroupNode(id).name, QStringLiteral("New"));
    test.handler.SetProcessorGroup(test.handler.GetGroupNode(id), id, {sampleId(14)});
    QCOMPARE(test.events(), QStringLiteral("25"));
    QCOMPARE(test.handler.GetProcessorNode(sampleId(14)).groupId, id);
    test.handler.RenameGroup(id, QStringLiteral("Newer"));
    QCOMPARE(test.events(), QString());
    QCOMPARE(test.handler.GetGroupNode(id).name, QStringLiteral("Newer"));
    test.handler.Ungroup(id);
    QCOMPARE(test.events(), QStringLiteral("20"));
    test.handler.PreDeleteProcessors({sampleId(12)});
    QCOMPARE(test.events(), QString());
    test.handler.DeleteProcessors({sampleId(12), sampleId(13)});
    QCOMPARE(test.events(), QStringLiteral("21"));
    test.handler.SetNewProcessorOutputs(20);
    QCOMPARE(test.store.snapshot().answers.newProcessorOutputs, 20);
}

void WorkbenchHandlerTest::shouldRefuseNames()
{
    HandlerUnderTest test;
    QVERIFY(test.handler.RenameProcessor(sampleId(11), QStringLiteral("Good")));
    QCOMPARE(test.events(), QStringLiteral("26"));
    QVERIFY(!test.handler.RenameProcessor(sampleId(11), QString()));
    QVERIFY(!test.handler.RenameProcessor(sampleId(99), QStringLiteral("Good")));
    HandlerAnswers answers;
    answers.nameMaxBytes = 6;
    test.store.setAnswers(answers);
    QVERIFY(test.handler.RenameProcessor(sampleId(11), QString::fromUtf8("大厅")));
    QVERIFY(!test.handler.RenameProcessor(sampleId(11), QString::fromUtf8("大厅屏")));
    answers.nameUtf8 = false;
    test.store.setAnswers(answers);
    QVERIFY(test.handler.RenameProcessor(sampleId(11), QString::fromUtf8("大厅屏")));
    answers.acceptNewNames = false;
    test.store.setAnswers(answers);
    QVERIFY(!test.handler.RenameProcessor(sampleId(11), QStringLiteral("A")));
    QCOMPARE(test.handler.GetProcessorNode(sampleId(11)).name, QString::fromUtf8("大厅屏"));
}

void WorkbenchHandlerTest::shouldFollowTheSelection()
{
    HandlerUnderTest test;
    test.handler.ReportSelection(sampleId(13), {sampleId(12), sampleId(13)}, {}, sampleId(11));
    QCOMPARE(test.events(), QStringLiteral("30"));
    QCOMPARE(test.handler.GetCurrentProcessorId(), sampleId(13));
    QCOMPARE(test.handler.GetSelectedProcessors(), (QList<QUuid>{sampleId(12), sampleId(13)}));
    test.handler.ReportSelection(sampleId(1), {}, {SGroupSelection{sampleId(1), {}}}, sampleId(13));
    QCOMPARE(test.events(), QString());
    QCOMPARE(test.handler.GetCurrentProcessorId(), sampleId(13));
}

void WorkbenchHandlerTest::shouldAnswerFromTheSettings()
{
    HandlerUnderTest test;
    ITargetSelectInterfaceHandler& handler = test.handler;
    const ProcessorNode offline;
    for (const bool unusual : {false, true}) {
        const HandlerAnswers answers = unusual ? unusualProject().answers : HandlerAnswers();
        test.store.setAnswers(answers);
        QCOMPARE(handler.IsRestrictedMode(), unusual);
        QCOMPARE(handler.UsesIpAddressing(), unusual);
        QCOMPARE(handler.IsIpManagementAvailable(), !unusual);
        QCOMPARE(handler.IsLanUsbMode(), unusual);
        QCOMPARE(handler.GetLanUsbProcessorIps(), answers.lanUsbAddresses);
        QCOMPARE(handler.GetSelectionMode(), unusual ? 2 : 0);
        QCOMPARE(handler.GetNameMaxBytes(), answers.nameMaxBytes);
        QCOMPARE(handler.IsNameUtf8(), !unusual);
        QCOMPARE(handler.GetFixedOutputCount(), unusual ? 16 : 0);
        QCOMPARE(handler.ShowProcessorMoreButton(), !unusual);
        QCOMPARE(handler.ShowNodeMoreButton(), !unusual);
        QCOMPARE(handler.CanAddProcessors(offline), !unusual);
        QCOMPARE(handler.IsAddProcessorsEnabled(offline), !unusual);
        QCOMPARE(handler.CanRenameProcessor(sampleId(11)), !unusual);
        QCOMPARE(handler.IsDeleteBlocked(sampleId(11)), unusual);
        QCOMPARE(handler.AcceptProcessorForSnapshot(offline), !unusual);
        QCOMPARE(handler.IsFrontPanelHighlightAvailable(), !unusual);
        QCOMPARE(handler.DetectAllDevices(), unusual ? 0xE0832005U : 0U);
    }
    ProcessorNode warned;
    warned.hostFlag17 = true;
    QVERIFY(handler.CheckProcessor(warned));
    QVERIFY(!handler.CheckProcessor(offline));
}

void WorkbenchHandlerTest::shouldDetectProcessorsWithAnAddress()
{
    HandlerUnderTest test;
    test.handler.DetectProcessorsOnly();
    QCOMPARE(test.events(), QStringLiteral("39"));
    QVERIFY(test.handler.GetProcessorNode(sampleId(12)).online);
    QVERIFY(!test.handler.GetProcessorNode(sampleId(13)).online);
    test.handler.DetectProcessorsOnly();
    QCOMPARE(test.events(), QString());
}

void WorkbenchHandlerTest::shouldFindProcessorsAtTheAddressesOfTheList()
{
    HandlerUnderTest test;
    test.store.changeIpList([](IpList& list) {
        list.append({0x0A000001, QStringLiteral("known")});
        list.append({0x0A000063, QStringLiteral("new")});
        return true;
    });
    test.handler.DetectProcessorsOnly();
    QCOMPARE(test.store.snapshot().processors.size(), 4);
    // With the strategy that goes by the list.
    test.store.setDetectStrategy(2);
    test.events();
    test.handler.DetectProcessorsOnly();
    QCOMPARE(test.events(), QStringLiteral("18 39"));
    const ProcessorNode found = test.store.snapshot().processors.last();
    QCOMPARE(found.ipAddress, 0x0A000063U);
    QVERIFY(found.online);
    test.handler.DetectProcessorsOnly();
    QCOMPARE(test.store.snapshot().processors.size(), 5);
    // The device sets are among all devices.
    test.events();
    test.handler.DetectAllDevices();
    QCOMPARE(test.events(), QStringLiteral("1"));
}

void WorkbenchHandlerTest::shouldReportTheProgressOfADetection_data()
{
    QTest::addColumn<int>("pause");
    QTest::addColumn<QString>("steps");
    QTest::newRow("at once") << 0 << QStringLiteral("0/2 2/2");
    QTest::newRow("one by one") << 1 << QStringLiteral("0/2 1/2 2/2");
}

void WorkbenchHandlerTest::shouldReportTheProgressOfADetection()
{
    QFETCH(int, pause);
    QFETCH(QString, steps);
    HandlerUnderTest test;
    test.store.changeAnswers([&](HandlerAnswers& answers) { answers.detectPauseMs = pause; });
    QStringList seen;
    test.handler.showProgress = [&](int done, int total) {
        seen.append(QStringLiteral("%1/%2").arg(done).arg(total));
    };
    test.handler.DetectProcessorsOnly();
    QCOMPARE(seen.join(QLatin1Char(' ')), steps);
    QVERIFY(test.handler.GetProcessorNode(sampleId(12)).online);
}

void WorkbenchHandlerTest::shouldNotDetectInsideADetection()
{
    HandlerUnderTest test;
    LogTrap log;
    int steps = 0;
    test.handler.showProgress = [&](int, int) {
        if (++steps == 1)
            test.handler.DetectProcessorsOnly();
    };
    test.handler.DetectProcessorsOnly();
    QCOMPARE(steps, 2);
    QCOMPARE(log.take(), QStringList({QStringLiteral("a detection is running already")}));
}

void WorkbenchHandlerTest::shouldAbandonADetectionOfAnotherProject()
{
    HandlerUnderTest test;
    test.store.changeAnswers([](HandlerAnswers& answers) { answers.detectPauseMs = 1; });
    test.handler.showProgress = [&](int done, int /*total*/) {
        if (done == 1)
            test.store.replace(smallProject());
    };
    int found = 0;
    test.handler.showCancelled = [&](int count) { found = count; };
    QCOMPARE(test.handler.DetectAllDevices(), 0xE0830001U);
    QCOMPARE(found, 1);
    QVERIFY(!test.handler.GetProcessorNode(sampleId(12)).online);
}

void WorkbenchHandlerTest::shouldCancelADetection()
{
    HandlerUnderTest test;
    // It is cancelled in the first of its pauses, long before the end of that.
    test.store.changeAnswers([](HandlerAnswers& answers) { answers.detectPauseMs = 10000; });
    test.events();
    QTimer::singleShot(0, qApp, [&] { test.handler.cancelDetection(); });
    QCOMPARE(test.handler.DetectAllDevices(), 0xE0830001U);
    QCOMPARE(test.events(), QString());
    test.handler.cancelDetection();
    test.store.changeAnswers([](HandlerAnswers& answers) { answers.detectPauseMs = 1; });
    QCOMPARE(test.handler.DetectAllDevices(), 0U);
    QVERIFY(test.handler.GetProcessorNode(sampleId(12)).online);
}

void WorkbenchHandlerTest::shouldHandleDeviceSets()
{
    HandlerUnderTest test;
    const Project unusual = unusualProject();
    test.store.setDeviceSets(unusual.deviceSets, unusual.currentDeviceSet);
    QCOMPARE(test.events(), QStringLiteral("1"));
    const SDeviceSetInfo first = unusual.deviceSets.first().info;
    QCOMPARE(test.handler.GetDeviceSetText(first), QStringLiteral("Set 1"));
    QCOMPARE(test.handler.GetDeviceSetText(SDeviceSetInfo{}), QString());
    QStringList texts{QStringLiteral("stale")};
    QCOMPARE(test.handler.GetDeviceSetTexts(texts), 2);
    QCOMPARE(texts, (QStringList{QStringLiteral("Set 1"), QStringLiteral("Set 2")}));
    QVERIFY(test.handler.ConfirmDeviceSetChange(first, 0));
    QCOMPARE(test.events(), QString());
    QVERIFY(test.store.snapshot().currentDeviceSet == first.id);
    HandlerAnswers answers;
    answers.confirmDeviceSetChange = false;
    test.store.setAnswers(answers);
    QVERIFY(!test.handler.ConfirmDeviceSetChange(unusual.deviceSets.last().info, 1));
    QVERIFY(test.store.snapshot().currentDeviceSet == first.id);
}

void WorkbenchHandlerTest::shouldOfferAMenuEntry()
{
    HandlerUnderTest test;
    test.handler.AppendContextMenu(NodeProcessor, sampleId(12), false, nullptr);
    QMenu menu;
    test.handler.AppendContextMenu(NodeProcessor, sampleId(12), false, &menu);
    QCOMPARE(menu.actions().at(1)->text(), QStringLiteral("Host: make current"));
    menu.actions().at(1)->trigger();
    QCOMPARE(test.handler.GetCurrentProcessorId(), sampleId(12));
}

void WorkbenchHandlerTest::shouldShowTips()
{
    HandlerUnderTest test;
    test.handler.ShowTipMessage(QStringLiteral("nobody listens"));
    QString shown;
    test.handler.showTip = [&](const QString& text) { shown = text; };
    test.handler.ShowTipMessage(QStringLiteral("Export successfully."));
    QCOMPARE(shown, QStringLiteral("Export successfully."));
}

void WorkbenchHandlerTest::shouldTraceEveryCallWithItsThread()
{
    HandlerUnderTest test;
    test.handler.GetIPCount(0);
    QCOMPARE(test.lastEntry().text, QStringLiteral("GetIPCount(0) = 0"));
    QCOMPARE(test.lastEntry().thread, QStringLiteral("GUI"));
    QVERIFY(test.lastEntry().kind == TraceEntry::Kind::Call);
    std::thread other([&] { test.handler.GetProcessorNode(sampleId(11)); });
    other.join();
    QCOMPARE(test.lastEntry().thread, QStringLiteral("other"));
    QVERIFY(test.lastEntry().text.endsWith(QStringLiteral("= \"P11\"")));
}

TSA_TEST_MAIN(WorkbenchHandlerTest)
#include "tst_workbench_handler.moc"
