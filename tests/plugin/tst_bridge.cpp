#include "host/common/AppendLog.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTreeView>

#include <optional>

namespace {

/// The panel, its model under the tester, and a way to deliver events on either kind of thread.
class Bridge final
{
public:
    Bridge()
        : tester(&panel.model())
    {
        QFETCH_GLOBAL(bool, foreign);
        if (foreign)
            thread.emplace();
    }

    template <typename... Args>
    void notify(quint32 event, Args... arguments)
    {
        if (thread)
            thread->run([&] { panel.notify<Args...>(event, arguments...); });
        else
            panel.notify<Args...>(event, arguments...);
    }

    /// The thread on which events arrive.
    QThread* updateThread() { return thread ? thread->qtThread() : QThread::currentThread(); }

    QThread* askedOn(const QString& name)
    {
        for (const FakeHandler::Call& call : panel.host().calls()) {
            if (call.name == name)
                return call.thread;
        }
        return nullptr;
    }

    const WarningTrap warnings;
    TestPanel panel;
    const QAbstractItemModelTester tester;
    std::optional<HostThread> thread;
};

/// Collects the host's log.
class LogTrap final
{
public:
    LogTrap()
        : m_previous(SetLogSink([this](const LogRecord& record) { records.push_back(record); }))
    {
    }
    ~LogTrap() { SetLogSink(m_previous); }
    LogTrap(const LogTrap&) = delete;
    LogTrap& operator=(const LogTrap&) = delete;

    std::vector<LogRecord> records;

private:
    LogSink m_previous;
};

SDeviceSetInfo deviceSet(quint32 n)
{
    SDeviceSetInfo set{};
    set.id.Data1 = n;
    return set;
}

} // namespace

class BridgeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();

    void shouldFillTheTreeOnReset();
    void shouldAddAGroupOnce();
    void shouldAddAProcessorOnce();
    void shouldAddTheMissingProcessorsInOneReset();
    void shouldResetViewsForAnEmptyList();
    void shouldRemoveNodes();
    void shouldAddAgainWhatIsStillBeingRemoved();
    void shouldRefreshAProcessorButNoGroup();
    void shouldRefreshAGroupAsAProcessorWhenTheProjectSaysSo();
    void shouldRefreshAProcessorAtItsNewAddress();
    void shouldRewriteMonitorStatesOnTheWorkThread();
    void shouldForwardTheDetectionStrategy();
    void shouldForwardDeviceSets();
    void shouldForwardTheLanUsbAddress();
    void shouldForwardTheCurrentProcessor();
    void shouldAskAgainWhenTheUserPickedMeanwhile();
    void shouldIgnoreTheEchoOfASelection();
    void shouldRepaintForMonitorWarnings_data();
    void shouldRepaintForMonitorWarnings();
    void shouldIgnoreOtherNumbers();
    void shouldLogWrongArgumentTypesAndGoOn();
    void shouldStandNonsense();
    void shouldTakeASnapshotInTreeOrder();
    void shouldOfferProcessorsForTheSnapshot();
    void shouldRemoveAllGroups();
};

void BridgeTest::initTestCase_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("foreign thread") << true;
    QTest::newRow("GUI thread") << false;
}

void BridgeTest::shouldFillTheTreeOnReset()
{
    Bridge bridge;
    bridge.panel.host().setProject(
        {testGroup(100), testGroup(101)},
        {testProcessor(1, 101), testProcessor(2), testProcessor(3, 100)});
    QSignalSpy resets(&bridge.panel.model(), &QAbstractItemModel::modelReset);

    bridge.notify(16);

    QTRY_COMPARE(resets.count(), 1);
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[G100[3],G101[1],2]"));
    QCOMPARE(bridge.panel.host().callNames(), QStringList({QStringLiteral("GetAllProcessorNodes"),
                                                           QStringLiteral("GetAllGroupNodes")}));
}

void BridgeTest::shouldAddAGroupOnce()
{
    Bridge bridge;
    bridge.panel.host().setProject({testGroup(100)}, {});

    bridge.notify<QUuid>(17, testId(100));
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(0)[G100[]]"));
    QCOMPARE(bridge.panel.host().callCount(QStringLiteral("GetGroupNode")), 1);
    QCOMPARE(bridge.askedOn(QStringLiteral("GetGroupNode")), bridge.updateThread());

    bridge.panel.host().clearCalls();
    bridge.notify<QUuid>(17, testId(100));
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(0)[G100[]]"));
    QCOMPARE(bridge.panel.host().callNames(), QStringList());
}

void BridgeTest::shouldAddAProcessorOnce()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1)});

    bridge.notify<QUuid>(18, testId(1));
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[1]"));
    QCOMPARE(bridge.askedOn(QStringLiteral("GetProcessorNode")), bridge.updateThread());

    bridge.panel.host().clearCalls();
    bridge.notify<QUuid>(18, testId(1));
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[1]"));
    QCOMPARE(bridge.panel.host().callNames(), QStringList());
}

void BridgeTest::shouldAddTheMissingProcessorsInOneReset()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1), testProcessor(2), testProcessor(3)});
    bridge.notify<QUuid>(18, testId(2));
    QSignalSpy resets(&bridge.panel.model(), &QAbstractItemModel::modelReset);
    QSignalSpy insertions(&bridge.panel.model(), &QAbstractItemModel::rowsInserted);

    bridge.notify<QList<QUuid>>(19, {testId(3), testId(2), testId(1)});

    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[2,3,1]"));
    QCOMPARE(resets.count(), 1);
    QCOMPARE(insertions.count(), 0);
}

void BridgeTest::shouldResetViewsForAnEmptyList()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1)});
    bridge.notify<QUuid>(18, testId(1));
    bridge.panel.host().clearCalls();
    QSignalSpy resets(&bridge.panel.model(), &QAbstractItemModel::modelReset);

    bridge.notify<QList<QUuid>>(19, {testId(1)});

    QCOMPARE(resets.count(), 1);
    QCOMPARE(bridge.panel.host().callNames(), QStringList());
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void BridgeTest::shouldRemoveNodes()
{
    Bridge bridge;
    bridge.panel.host().setProject(
        {testGroup(100)}, {testProcessor(1, 100), testProcessor(2, 100), testProcessor(3)});
    bridge.notify(16);
    bridge.notify<QUuid>(20, testId(3));
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[G100[1,2]]"));

    bridge.notify<QList<QUuid>>(21, {testId(1), testId(77), testId(100)});
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[2]"));
}

void BridgeTest::shouldAddAgainWhatIsStillBeingRemoved()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    bridge.notify(16);

    const auto removeAndAdd = [&] {
        CSubject subject;
        subject.Attach(bridge.panel.host().observer);
        subject.Notify<QUuid>(20, testId(1));
        subject.Notify<QUuid>(18, testId(1));
    };
    if (bridge.thread)
        bridge.thread->run(removeAndAdd);
    else
        removeAndAdd();

    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[2,1]"));
}

void BridgeTest::shouldRefreshAProcessorButNoGroup()
{
    Bridge bridge;
    bridge.panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],1]"));
    ProcessorNode renamed = testProcessor(1);
    renamed.name = QStringLiteral("one");
    renamed.online = true;
    bridge.panel.host().setProcessor(renamed);
    bridge.panel.host().clearCalls();

    bridge.notify<QUuid>(25, testId(1));
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],one]"));
    // The record alone changes: views and filters hear of that too.
    renamed.online = false;
    bridge.panel.host().setProcessor(renamed);
    QSignalSpy changes(&bridge.panel.model(), &QAbstractItemModel::dataChanged);
    bridge.notify<QUuid>(25, testId(1));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().at(2).value<QVector<int>>(), QVector<int>{NodeDataRole});
    renamed.online = true;
    bridge.panel.host().setProcessor(renamed);
    bridge.notify<QUuid>(25, testId(1));
    const auto* item = bridge.panel.model().getItem(testId(1));
    QVERIFY(item->data(NodeDataRole).value<ProcessorNode>().online);
    QCOMPARE(bridge.askedOn(QStringLiteral("GetProcessorNode")), bridge.updateThread());

    bridge.panel.host().clearCalls();
    bridge.notify<QUuid>(25, testId(100));
    bridge.notify<QUuid>(25, testId(55));
    QCOMPARE(bridge.panel.host().callNames(), QStringList());
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],one]"));
}

void BridgeTest::shouldRefreshAGroupAsAProcessorWhenTheProjectSaysSo()
{
    Bridge bridge;
    ProcessorNode impostor = testProcessor(100);
    impostor.name = QStringLiteral("impostor");
    bridge.panel.host().setProject({testGroup(100)}, {});
    bridge.notify<QUuid>(17, testId(100));
    bridge.panel.host().setProcessor(impostor);

    bridge.notify<QUuid, SPrjProcessor>(26, testId(100), SPrjProcessor());

    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(0)[impostor[]]"));
    const QModelIndex row = bridge.panel.model().getItem(testId(100))->index();
    QCOMPARE(row.data(NodeDataRole).value<ProcessorNode>().name, impostor.name);
}

void BridgeTest::shouldRefreshAProcessorAtItsNewAddress()
{
    Bridge bridge;
    bridge.panel.host().setProject({},
                                   {testIpProcessor(1, 0x0A000001), testIpProcessor(2, 0x0A000002),
                                    testIpProcessor(3, 0x0A000003)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[1,2,3]"));
    bridge.panel.host().setProcessor(testIpProcessor(1, 0x0A000009));

    bridge.notify<QUuid, SPrjProcessor>(26, testId(1), SPrjProcessor());

    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[2,3,1]"));
}

void BridgeTest::shouldRewriteMonitorStatesOnTheWorkThread()
{
    Bridge bridge;
    bridge.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[G100[1],2]"));
    ProcessorNode changed = testProcessor(1, 100);
    changed.hostAttribute16 = 7;
    changed.name = QStringLiteral("not shown");
    bridge.panel.host().setProcessor(changed);
    bridge.panel.host().clearCalls();
    const QModelIndex row = bridge.panel.model().getItem(testId(1))->index();
    QSignalSpy changes(&bridge.panel.model(), &QAbstractItemModel::dataChanged);

    bridge.notify<QList<QUuid>>(39, {testId(99), testId(100), testId(1)});

    QTRY_COMPARE(row.data(NodeDataRole).value<ProcessorNode>().hostAttribute16, 7);
    QCOMPARE(row.data().toString(), QStringLiteral("1"));
    QCOMPARE(bridge.panel.host().callNames(), QStringList({QStringLiteral("GetProcessorNode")}));
    QThread* asked = bridge.askedOn(QStringLiteral("GetProcessorNode"));
    QVERIFY(asked != bridge.updateThread());
    QVERIFY(asked != QThread::currentThread());
    // Filters on the record hear of it on the GUI thread.
    QTRY_VERIFY(!changes.isEmpty());
    QVERIFY(changes.last().at(2).value<QVector<int>>().contains(NodeDataRole));
}

void BridgeTest::shouldForwardTheDetectionStrategy()
{
    Bridge bridge;
    bridge.notify<int>(0, 2);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 2);
    bridge.notify<int>(0, 1);
    bridge.notify<int>(0, 3);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 3);
}

void BridgeTest::shouldForwardDeviceSets()
{
    Bridge bridge;
    auto* selector = bridge.panel.area().findChild<QComboBox*>();
    bridge.notify<GUID, QList<SDeviceSetInfo>>(1, deviceSet(2).id, {deviceSet(1), deviceSet(2)});
    QTRY_COMPARE(selector->count(), 2);
    QVERIFY(selector->isVisibleTo(&bridge.panel.area()));
    QCOMPARE(selector->currentText(), QStringLiteral("Set 2"));
}

void BridgeTest::shouldForwardTheLanUsbAddress()
{
    Bridge bridge;
    auto* label = bridge.panel.area().findChild<QLabel*>();
    bridge.panel.host().lanUsbMode = true;
    bridge.panel.host().lanUsbIps = {0xC0A80001, 0xC0A80002};
    bridge.notify(29);
    QTRY_COMPARE(label->text(), QStringLiteral("Processor1 IP: 192.168.0.1"));
    QVERIFY(label->isVisibleTo(&bridge.panel.area()));
}

void BridgeTest::shouldForwardTheCurrentProcessor()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[1,2]"));
    bridge.panel.host().currentProcessor = testId(2);
    bridge.panel.host().clearCalls();

    bridge.notify(30);

    QTRY_COMPARE(
        bridge.panel.area().findChild<QTreeView*>()->currentIndex().data(UuidRole).toUuid(),
        testId(2));
    QCOMPARE(bridge.askedOn(QStringLiteral("GetCurrentProcessorId")), bridge.updateThread());
}

void BridgeTest::shouldAskAgainWhenTheUserPickedMeanwhile()
{
    Bridge bridge;
    FakeHandler& host = bridge.panel.host();
    host.setProject({}, {testProcessor(1), testProcessor(2)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[1,2]"));
    host.currentProcessor = testId(1);
    host.clearCalls();
    // The user's choice is reported while the host still answers with the one before.
    int asked = 0;
    host.inside = [&](const QString& name) {
        if (name != QLatin1String("GetCurrentProcessorId"))
            return;
        if (++asked == 1) {
            bridge.panel.data().SetSelectionEchoGuard(true);
            bridge.panel.data().SetSelectionEchoGuard(false);
        } else {
            host.currentProcessor = testId(2);
        }
    };

    bridge.notify(30);

    QTRY_COMPARE(
        bridge.panel.area().findChild<QTreeView*>()->currentIndex().data(UuidRole).toUuid(),
        testId(2));
    host.inside = nullptr;
    QCOMPARE(host.callCount(QStringLiteral("GetCurrentProcessorId")), 2);
}

void BridgeTest::shouldIgnoreTheEchoOfASelection()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1)});
    bridge.notify(16);
    bridge.panel.host().currentProcessor = testId(1);
    bridge.panel.host().clearCalls();
    bridge.panel.data().SetSelectionEchoGuard(true);
    bridge.notify(30);
    bridge.notify<int>(0, 9);
    // Jobs run in order: once the later event has arrived, the earlier one would have.
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 9);
    QVERIFY(!bridge.panel.host().callNames().contains(QStringLiteral("GetCurrentProcessorId")));
    QVERIFY(!bridge.panel.area().findChild<QTreeView*>()->currentIndex().isValid());

    bridge.panel.data().SetSelectionEchoGuard(false);
    bridge.notify(30);
    QTRY_VERIFY(bridge.panel.area().findChild<QTreeView*>()->currentIndex().isValid());
}

void BridgeTest::shouldRepaintForMonitorWarnings_data()
{
    QTest::addColumn<quint32>("event");
    QTest::newRow("monitor warnings") << 37U;
    // No row is listed, so nothing but the repaint that follows can be seen.
    QTest::newRow("monitor states") << 39U;
}

void BridgeTest::shouldRepaintForMonitorWarnings()
{
    QFETCH(quint32, event);
    class PaintCounter final : public QObject
    {
    public:
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };

    Bridge bridge;
    PaintCounter counter;
    QWidget window;
    window.resize(220, 400);
    bridge.panel.area().setParent(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* viewport = bridge.panel.area().findChild<QTreeView*>()->viewport();
    viewport->installEventFilter(&counter);
    QCoreApplication::processEvents();
    const int before = counter.paints;

    if (event == 37)
        bridge.notify(event);
    else
        bridge.notify<QList<QUuid>>(event, {});

    QTRY_VERIFY(counter.paints > before);
}

void BridgeTest::shouldIgnoreOtherNumbers()
{
    Bridge bridge;
    bridge.panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],1]"));
    bridge.panel.host().setProject({}, {});
    bridge.panel.host().clearCalls();

    QList<quint32> numbers{22, 23, 24, 27, 28, 38, 40, 41, 255, 256, 1000, 0x80000000, 0xFFFFFFFF};
    for (quint32 number = 2; number <= 15; ++number)
        numbers.append(number);
    for (quint32 number = 31; number <= 36; ++number)
        numbers.append(number);
    for (const quint32 number : qAsConst(numbers)) {
        bridge.notify(number);
        bridge.notify<QUuid>(number, testId(1));
    }
    bridge.notify<int>(0, 5);

    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 5);
    QCOMPARE(bridge.panel.host().callNames(), QStringList());
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],1]"));
}

void BridgeTest::shouldLogWrongArgumentTypesAndGoOn()
{
    Bridge bridge;
    LogTrap log;
    bridge.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    bridge.notify(16);
    bridge.notify<int>(0, 4);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 4);
    bridge.panel.host().clearCalls();
    QSignalSpy resets(&bridge.panel.model(), &QAbstractItemModel::modelReset);

    for (const quint32 number : {0U, 1U, 17U, 18U, 19U, 20U, 21U, 25U, 26U, 39U})
        bridge.notify<QString>(number, QStringLiteral("nonsense"));

    // A strategy of 0, an empty list of processors and null identities.
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 0);
    QCOMPARE(resets.count(), 1);
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[1]]"));
    QCOMPARE(log.records.size(), std::size_t(10));
    for (const LogRecord& record : log.records) {
        QCOMPARE(record.line, 133);
        QCOMPARE(record.function, std::string("GetArgument"));
        QCOMPARE(record.message, std::string("CSubject::GetArgument:bad type cast!"));
    }
}

void BridgeTest::shouldStandNonsense()
{
    Bridge bridge;
    QList<ProcessorNode> many;
    for (quint32 n = 1; n <= 300; ++n)
        many.append(testProcessor(n, n % 3 == 0 ? 1000 : 0));
    many[0].name = QString(10000, QChar(0x5904));
    bridge.panel.host().setProject({testGroup(1000, QString(10000, QLatin1Char('g')))}, many);

    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.model().getAllProcessorCount(), 300);

    // A processor whose group comes later is not added; it is when it is announced again.
    bridge.panel.host().setGroup(testGroup(2000));
    bridge.panel.host().setProcessor(testProcessor(400, 2000));
    bridge.notify<QUuid>(18, testId(400));
    QCOMPARE(bridge.panel.model().getAllProcessorCount(), 300);
    bridge.notify<QUuid>(17, testId(2000));
    bridge.notify<QUuid>(18, testId(400));
    QCOMPARE(bridge.panel.model().getAllProcessorCount(), 301);

    // Unknown and repeated identities.
    bridge.notify<QList<QUuid>>(19, {testId(7), testId(7), testId(9999), testId(9999)});
    bridge.notify<QList<QUuid>>(21, {testId(7), testId(7), testId(9998), QUuid()});
    bridge.notify<QUuid>(20, QUuid());
    bridge.notify<QUuid>(25, QUuid());
    bridge.notify<QList<QUuid>>(39, {QUuid(), testId(9998), testId(7)});
    bridge.notify<int>(0, 11);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 11);
    QVERIFY(!bridge.panel.model().getItem(testId(7)));
}

void BridgeTest::shouldTakeASnapshotInTreeOrder()
{
    Bridge bridge;
    ProcessorGroupNode listed = testGroup(100);
    listed.hostAttribute4 = 9;
    // The host's own list of members does not count: the rows do.
    listed.processors = {testProcessor(2, 100), testProcessor(88, 100)};
    bridge.panel.host().setProject(
        {listed, testGroup(101)}, {testProcessor(3), testProcessor(1, 100), testProcessor(2, 100)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[G100[1,2],G101[],3]"));

    ProcessorTreeSnapshot snapshot;
    snapshot.processors.append(testProcessor(77));
    bridge.panel.area().GetProcessorTree(snapshot, false);

    QCOMPARE(snapshot.groups.size(), 2);
    QCOMPARE(snapshot.groups.at(0).hostAttribute4, 9);
    QCOMPARE(snapshot.groups.at(0).processors.size(), 2);
    QCOMPARE(snapshot.groups.at(0).processors.at(1).id, testId(2));
    QCOMPARE(snapshot.groups.at(1).processors.size(), 0);
    QCOMPARE(snapshot.processors.size(), 1);
    QCOMPARE(snapshot.processors.at(0).id, testId(3));
}

void BridgeTest::shouldOfferProcessorsForTheSnapshot()
{
    Bridge bridge;
    bridge.panel.host().setProject({testGroup(100)},
                                   {testProcessor(3), testProcessor(1, 100), testProcessor(4)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[G100[1],3,4]"));
    bridge.panel.host().acceptProcessor = [](const ProcessorNode& processor) {
        return processor.id == testId(4);
    };

    ProcessorTreeSnapshot snapshot;
    bridge.panel.area().GetProcessorTree(snapshot, true);

    QCOMPARE(snapshot.groups.size(), 1);
    QCOMPARE(snapshot.groups.at(0).processors.size(), 0);
    QCOMPARE(snapshot.processors.size(), 1);
    QCOMPARE(snapshot.processors.at(0).id, testId(4));
}

void BridgeTest::shouldRemoveAllGroups()
{
    Bridge bridge;
    bridge.panel.host().setProject(
        {testGroup(100), testGroup(101)},
        {testProcessor(1, 100), testProcessor(2), testProcessor(3, 101)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(3)[G100[1],G101[3],2]"));
    bridge.panel.area().RemoveAllGroups();
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[2]"));
}

QTEST_MAIN(BridgeTest)
#include "tst_bridge.moc"
