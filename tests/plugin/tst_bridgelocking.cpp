#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTest>
#include <QThread>
#include <QTreeView>

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>

namespace {

constexpr auto kSoon = std::chrono::seconds(20);

/// Waits as a host may: without processing events on this thread.
bool comesBack(const std::future<void>& done)
{
    return done.wait_for(kSoon) == std::future_status::ready;
}

/// Runs `work` on the GUI thread and waits for it, as a host may from any thread of its own.
void onGuiThread(const std::function<void()>& work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), work, Qt::BlockingQueuedConnection);
}

/// Everything that GUI code asks of the bridge.
void askEverything(TestPanel& panel)
{
    panel.data().GetModel();
    panel.data().IsReadOnly();
    ProcessorTreeSnapshot snapshot;
    panel.area().GetProcessorTree(snapshot, false);
}

} // namespace

/// Ways to lock up that the bridge's lock is built to survive.
class BridgeLockingTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerTheGuiThreadWhileAnEventWaitsForIt();
    void shouldAnswerSlotsThatTheEventItselfTriggers();
    void shouldAnswerFiltersWhileRowsAreInserted();
    void shouldAnswerTheGuiThreadWhileTheHostIsAsked();
    void shouldAnswerTheGuiThreadWhileTheWorkThreadAsksTheHost();
    void shouldStandEventsInsideASnapshotQuestion_data();
    void shouldStandEventsInsideASnapshotQuestion();
    void shouldApplyInOrderWhatASnapshotQuestionLeftQueued();
    void shouldStandEventsOfTwoThreads();
    void shouldStandEventsInsideViewSignals();
    void shouldChangeRecordsWithoutASignalOffTheGuiThread();
    void shouldRefilterAfterMonitorStates();
    void shouldFindARowWhileItMoves();
    void shouldLetTheHostWaitInsideAnyQuestion_data();
    void shouldLetTheHostWaitInsideAnyQuestion();
    void shouldLetTheHostWaitInsideAQuestionOffTheGuiThread();
    void shouldLetTheHostHoldItsOwnLockWhileItNotifies();
    void shouldKeepTheOrderOfEventsFromBothThreads();
    void shouldAskAgainWhenARecordChangedMeanwhile();
    void shouldNotAskForEverWhenEveryQuestionChangesTheRecord();
};

void BridgeLockingTest::shouldAnswerTheGuiThreadWhileAnEventWaitsForIt()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    std::promise<void> asked;
    panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetProcessorNode"))
            asked.set_value();
    };

    const auto done = host.post([&] { panel.notify<QUuid>(18, testId(1)); });
    QVERIFY(comesBack(asked.get_future()));
    // The event holds the lock and is about to wait for this thread, or does so already.
    for (int round = 0; round < 2000; ++round)
        askEverything(panel);
    QVERIFY(done.wait_for(std::chrono::seconds(0)) != std::future_status::ready);

    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
    QVERIFY(comesBack(done));
}

void BridgeLockingTest::shouldAnswerSlotsThatTheEventItselfTriggers()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    int asked = 0;
    const auto ask = [&] {
        askEverything(panel);
        ++asked;
    };
    connect(&panel.model(), &QAbstractItemModel::rowsInserted, this, ask);
    connect(&panel.model(), &QAbstractItemModel::modelReset, this, ask);

    QVERIFY(host.run([&] {
        panel.notify<QUuid>(18, testId(1));
        panel.notify<QList<QUuid>>(19, {testId(2)});
    }));
    panel.notify<QUuid>(20, testId(1));
    panel.notify<QUuid>(18, testId(1));

    QCOMPARE(asked, 3);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(2)[2,1]"));
    panel.model().disconnect(this);
}

void BridgeLockingTest::shouldAnswerFiltersWhileRowsAreInserted()
{
    class AskingProxy final : public QSortFilterProxyModel
    {
    public:
        CTargetSelectData* data = nullptr;

    protected:
        bool filterAcceptsRow(int, const QModelIndex&) const override
        {
            return !data->IsReadOnly() && data->GetModel();
        }
    };

    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    AskingProxy proxy;
    proxy.data = &panel.data();
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setSourceModel(&panel.model());
    const QAbstractItemModelTester tester(&proxy);
    QTreeView view;
    view.setModel(&proxy);
    view.expandAll();
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= 200; ++n)
        processors.append(testProcessor(n, n % 2 ? 1000 : 0));
    panel.host().setProject({testGroup(1000)}, processors);

    const auto done = host.post([&] {
        panel.notify<QUuid>(17, testId(1000));
        for (quint32 n = 1; n <= 200; ++n)
            panel.notify<QUuid>(18, testId(n));
    });
    QTRY_VERIFY(done.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QCOMPARE(panel.model().getAllProcessorCount(), 200);
    QCOMPARE(proxy.rowCount(proxy.index(0, 0)), 101);
}

void BridgeLockingTest::shouldAnswerTheGuiThreadWhileTheHostIsAsked()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    int visits = 0;
    panel.host().inside = [&](const QString& name) {
        if (!name.startsWith(QLatin1String("Get")) || QThread::currentThread() == thread())
            return;
        onGuiThread([&] {
            askEverything(panel);
            panel.area().RemoveAllGroups();
            ++visits;
        });
    };
    QVERIFY(host.run([&] {
        panel.notify<QUuid>(17, testId(100));
        panel.notify<QUuid>(18, testId(1));
        panel.notify<QUuid>(25, testId(1));
        panel.notify(30);
    }));
    QCOMPARE(visits, 4);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void BridgeLockingTest::shouldAnswerTheGuiThreadWhileTheWorkThreadAsksTheHost()
{
    const WarningTrap warnings;
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    std::atomic<int> visits{0};
    panel.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetProcessorNode") || QThread::currentThread() == thread())
            return;
        onGuiThread([&] {
            askEverything(panel);
            panel.notify<QUuid>(20, testId(1));
            ++visits;
        });
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    QTRY_COMPARE(visits.load(), 1);
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
}

void BridgeLockingTest::shouldStandEventsInsideASnapshotQuestion_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<quint32>("event");
    for (const bool foreign : {true, false}) {
        for (const quint32 event : {0U, 16U, 17U, 18U, 19U, 20U, 21U, 25U, 26U, 29U, 30U, 39U}) {
            QTest::addRow("%s %u", foreign ? "foreign thread" : "GUI thread", event)
                << foreign << event;
        }
    }
}

void BridgeLockingTest::shouldStandEventsInsideASnapshotQuestion()
{
    QFETCH(bool, foreign);
    QFETCH(quint32, event);
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2, 100)});
    panel.notify(16);
    panel.host().setProject({testGroup(100), testGroup(101)},
                            {testProcessor(1), testProcessor(2, 100), testProcessor(3)});
    const auto raise = [&] {
        switch (event) {
        case 0:
            panel.notify<int>(event, 1);
            break;
        case 17:
            panel.notify<QUuid>(event, testId(101));
            break;
        case 18:
            panel.notify<QUuid>(event, testId(3));
            break;
        case 19:
        case 21:
        case 39:
            panel.notify<QList<QUuid>>(event, {testId(event == 19 ? 3 : 1)});
            break;
        case 20:
        case 25:
            panel.notify<QUuid>(event, testId(1));
            break;
        case 26:
            panel.notify<QUuid, SPrjProcessor>(event, testId(1), SPrjProcessor());
            break;
        default:
            panel.notify(event);
            break;
        }
    };
    int questions = 0;
    bool cameBack = true;
    panel.host().acceptProcessor = [&](const ProcessorNode&) {
        ++questions;
        if (foreign)
            cameBack = comesBack(host.post(raise)) && cameBack;
        else
            raise();
        return true;
    };

    ProcessorTreeSnapshot snapshot;
    panel.area().GetProcessorTree(snapshot, true);

    QVERIFY(cameBack);
    QCOMPARE(questions, 2);
    QCOMPARE(snapshot.groups.size(), 1);
    QCOMPARE(snapshot.groups.first().processors.size(), 1);
    QCOMPARE(snapshot.processors.size(), 1);
    // What was raised takes effect, once, however often it was raised.
    const QHash<quint32, QString> expected{
        {16, QStringLiteral("All processors(3)[G100[2],G101[],1,3]")},
        {17, QStringLiteral("All processors(2)[G100[2],G101[],1]")},
        {18, QStringLiteral("All processors(3)[G100[2],1,3]")},
        {19, QStringLiteral("All processors(3)[G100[2],1,3]")},
        {20, QStringLiteral("All processors(1)[G100[2]]")},
        {21, QStringLiteral("All processors(1)[G100[2]]")},
    };
    QTRY_COMPARE(panel.dump(),
                 expected.value(event, QStringLiteral("All processors(2)[G100[2],1]")));
}

void BridgeLockingTest::shouldApplyInOrderWhatASnapshotQuestionLeftQueued()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2, 100)});
    panel.notify<QUuid>(18, testId(1));
    panel.host().acceptProcessor = [&](const ProcessorNode&) {
        return comesBack(host.post([&] {
            panel.notify<QUuid>(17, testId(100));
            panel.notify<QUuid>(18, testId(2));
            panel.notify<QUuid>(20, testId(1));
            panel.notify<QUuid>(18, testId(2));
        }));
    };

    ProcessorTreeSnapshot snapshot;
    panel.area().GetProcessorTree(snapshot, true);

    QCOMPARE(snapshot.processors.size(), 1);
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[G100[2]]"));
}

void BridgeLockingTest::shouldStandEventsOfTwoThreads()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread one;
    HostThread two;
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= 100; ++n)
        processors.append(testProcessor(n));
    panel.host().setProject({}, processors);
    const auto addAll = [&] {
        for (quint32 n = 1; n <= 100; ++n)
            panel.notify<QUuid>(18, testId(n));
    };
    const auto first = one.post(addAll);
    const auto second = two.post(addAll);
    addAll();
    QTRY_VERIFY(first.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QTRY_VERIFY(second.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QCOMPARE(panel.model().getAllProcessorCount(), 100);
}

void BridgeLockingTest::shouldStandEventsInsideViewSignals()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2)});
    // A view that reports to the host, which answers with an event of its own, on this thread.
    const auto connection = connect(&panel.model(), &QAbstractItemModel::rowsInserted, this, [&] {
        panel.notify<QUuid>(25, testId(1));
        askEverything(panel);
    });
    QVERIFY(host.run([&] {
        panel.notify<QUuid>(18, testId(1));
        panel.notify<QUuid>(17, testId(100));
        panel.notify<QUuid>(18, testId(2));
    }));
    disconnect(connection);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(2)[G100[],1,2]"));
}

void BridgeLockingTest::shouldChangeRecordsWithoutASignalOffTheGuiThread()
{
    const WarningTrap warnings;
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    std::atomic<int> foreignSignals{0};
    std::atomic<int> signalsHere{0};
    const auto count = [&] {
        ++(QThread::currentThread() == thread() ? signalsHere : foreignSignals);
    };
    const auto changed = connect(&panel.model(), &QAbstractItemModel::dataChanged, this, count,
                                 Qt::DirectConnection);
    const auto itemChanged = connect(&panel.model(), &QStandardItemModel::itemChanged, this, count,
                                     Qt::DirectConnection);
    ProcessorNode record = testProcessor(1);
    record.online = true;
    panel.host().setProcessor(record);

    panel.notify<QList<QUuid>>(39, {testId(1)});

    const QModelIndex row = panel.model().getItem(testId(1))->index();
    QTRY_VERIFY(row.data(NodeDataRole).value<ProcessorNode>().online);
    QTRY_VERIFY(signalsHere > 0);
    QCOMPARE(foreignSignals.load(), 0);
    disconnect(changed);
    disconnect(itemChanged);
}

void BridgeLockingTest::shouldRefilterAfterMonitorStates()
{
    class OnlineProxy final : public QSortFilterProxyModel
    {
    protected:
        bool filterAcceptsRow(int row, const QModelIndex& parent) const override
        {
            const QModelIndex index = sourceModel()->index(row, 0, parent);
            return index.data(NodeDataRole).value<ProcessorNode>().online;
        }
    };

    const WarningTrap warnings;
    TestPanel panel;
    OnlineProxy proxy;
    proxy.setFilterRole(NodeDataRole);
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setSourceModel(&panel.model());
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    panel.notify(16);
    QCOMPARE(proxy.rowCount(), 0);
    ProcessorNode record = testProcessor(2);
    record.online = true;
    panel.host().setProcessor(record);

    panel.notify<QList<QUuid>>(39, {testId(2)});

    QTRY_COMPARE(proxy.rowCount(proxy.index(0, 0)), 1);
    QCOMPARE(proxy.index(0, 0, proxy.index(0, 0)).data().toString(), QStringLiteral("2"));
}

void BridgeLockingTest::shouldFindARowWhileItMoves()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    panel.notify(16);
    // Taken out and not yet put back: the work thread goes on finding the row's record.
    bool found = false;
    const auto connection = connect(&panel.model(), &QAbstractItemModel::rowsRemoved, this, [&] {
        found = comesBack(host.post([&] { found = panel.model().findRow(testId(1)).has_value(); }))
                && found;
    });
    const QPersistentModelIndex index = panel.model().getItem(testId(1))->index();
    const auto moved = panel.model().moveProcessors({index}, testId(100));
    disconnect(connection);
    QCOMPARE(moved.size(), 1);
    QVERIFY(found);
}

void BridgeLockingTest::shouldLetTheHostWaitInsideAnyQuestion_data()
{
    QTest::addColumn<QString>("question");
    QTest::newRow("detection") << QStringLiteral("DetectAllDevices");
    QTest::newRow("move") << QStringLiteral("SetProcessorGroup");
    QTest::newRow("removal of a group") << QStringLiteral("SetProcessorGroup");
    QTest::newRow("refill") << QStringLiteral("GetAllGroupNodes");
    QTest::newRow("adding many") << QStringLiteral("GetProcessorNode");
    QTest::newRow("check") << QStringLiteral("CheckProcessor");
    QTest::newRow("device set") << QStringLiteral("GetDeviceSetText");
}

void BridgeLockingTest::shouldLetTheHostWaitInsideAnyQuestion()
{
    QFETCH(QString, question);
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    // Patience would end any wait; here nothing but the question may.
    panel.data().guiCalls().setPatience(std::chrono::hours(1));
    panel.host().setProject({testGroup(100), testGroup(101)}, {testProcessor(1, 100)});
    panel.notify(16);
    panel.host().setProcessor(testProcessor(2));
    panel.host().setProcessor(testProcessor(3));
    bool cameBack = false;
    panel.host().inside = [&](const QString& name) {
        if (name != question || QThread::currentThread() != thread() || cameBack)
            return;
        cameBack = comesBack(host.post([&] {
            panel.data().IsReadOnly();
            panel.notify<QUuid>(18, testId(2));
        }));
    };

    const QByteArray row = QTest::currentDataTag();
    const QModelIndex index = panel.model().getItem(testId(1))->index();
    if (row == "detection")
        panel.area().DetectDevices();
    else if (row == "move")
        panel.model().moveProcessors({index}, testId(101));
    else if (row == "removal of a group")
        panel.notify<QUuid>(20, testId(100));
    else if (row == "refill")
        panel.notify(16);
    else if (row == "adding many")
        panel.notify<QList<QUuid>>(19, {testId(3)});
    else if (row == "check")
        index.data(HostCheckRole);
    else
        panel.area().onCurrentDeviceSetChanged(GUID{1, 0, 0, {}}, {{{1, 0, 0, {}}, 0, 0}, {}});

    QVERIFY(cameBack);
    QTRY_VERIFY(panel.model().getItem(testId(2)));
    panel.data().guiCalls().setPatience(std::chrono::seconds(5));
}

void BridgeLockingTest::shouldLetTheHostWaitInsideAQuestionOffTheGuiThread()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread one;
    HostThread two;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    std::atomic<bool> isFirst{true};
    bool cameBack = false;
    panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetProcessorNode") && isFirst.exchange(false))
            cameBack = comesBack(two.post([&] { panel.notify<QUuid>(18, testId(2)); }));
    };
    QVERIFY(one.run([&] { panel.notify<QUuid>(18, testId(1)); }));
    QVERIFY(cameBack);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(2)[2,1]"));
}

void BridgeLockingTest::shouldLetTheHostHoldItsOwnLockWhileItNotifies()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    std::timed_mutex projectMutex;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    panel.notify(16);
    std::promise<void> workThreadAsks;
    std::promise<void> hostHolds;
    std::atomic<bool> isFirst{true};
    std::atomic<bool> gotIt{false};
    panel.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetProcessorNode") || !isFirst.exchange(false))
            return;
        workThreadAsks.set_value();
        hostHolds.get_future().wait_for(kSoon);
        gotIt = projectMutex.try_lock_for(kSoon);
        if (gotIt)
            projectMutex.unlock();
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    QVERIFY(comesBack(workThreadAsks.get_future()));
    QVERIFY(host.run([&] {
        const std::lock_guard guard(projectMutex);
        hostHolds.set_value();
        panel.notify<QUuid>(20, testId(2));
    }));
    QTRY_VERIFY(gotIt);
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void BridgeLockingTest::shouldKeepTheOrderOfEventsFromBothThreads()
{
    const WarningTrap warnings;
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    panel.notify<QUuid>(18, testId(1));
    // What the host's thread adds stays queued; what this thread then removes is that row.
    panel.host().acceptProcessor = [&](const ProcessorNode&) {
        const bool cameBack = comesBack(host.post([&] { panel.notify<QUuid>(18, testId(2)); }));
        panel.notify<QUuid>(20, testId(2));
        return cameBack;
    };
    ProcessorTreeSnapshot snapshot;
    panel.area().GetProcessorTree(snapshot, true);
    QCOMPARE(snapshot.processors.size(), 1);
    QVERIFY(panel.data().guiCalls().settle());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));

    // The same for a tree that starts over.
    panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("DetectAllDevices"))
            QVERIFY(comesBack(host.post([&] { panel.notify<QUuid>(18, testId(2)); })));
    };
    panel.area().DetectDevices();
    panel.area().Initialize();
    QVERIFY(panel.data().guiCalls().settle());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
}

void BridgeLockingTest::shouldAskAgainWhenARecordChangedMeanwhile()
{
    const WarningTrap warnings;
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    std::atomic<int> asked{0};
    panel.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetProcessorNode") || QThread::currentThread() == thread())
            return;
        // While the first answer is on its way, the record is refreshed with a later one.
        if (asked++ == 0)
            onGuiThread([&] { panel.notify<QUuid>(25, testId(1)); });
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    QTRY_COMPARE(asked.load(), 2);
}

void BridgeLockingTest::shouldNotAskForEverWhenEveryQuestionChangesTheRecord()
{
    const WarningTrap warnings;
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    std::atomic<int> asked{0};
    panel.host().inside = [&](const QString& name) {
        // A limit of the test's own, for without one it could not end.
        if (name != QLatin1String("GetProcessorNode") || QThread::currentThread() == thread()
            || ++asked > 100)
            return;
        onGuiThread([&] { panel.notify<QUuid>(25, testId(1)); });
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    panel.notify<int>(0, 8);
    QTRY_COMPARE(panel.area().detectStrategy(), 8);
    QVERIFY(asked >= 2);
    QVERIFY(asked <= 10);
}

QTEST_MAIN(BridgeLockingTest)
#include "tst_bridgelocking.moc"
