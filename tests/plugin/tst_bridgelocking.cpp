#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSortFilterProxyModel>
#include <QTest>
#include <QThread>
#include <QTreeView>

#include <atomic>
#include <chrono>
#include <future>

namespace {
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
    void shouldStandEventsOfTwoThreads();
    void shouldStandEventsInsideViewSignals();
    void shouldChangeRecordsWithoutASignalOffTheGuiThread();
    void shouldRefilterAfterMonitorStates();
    void shouldFindARowWhileItMoves();
};

void BridgeLockingTest::shouldAnswerTheGuiThreadWhileAnEventWaitsForIt()
{
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
    // Each of the events waits for this thread.
    QTRY_VERIFY_WITH_TIMEOUT(done.wait_for(std::chrono::seconds(0)) == std::future_status::ready,
                             60000);
    QCOMPARE(panel.model().getAllProcessorCount(), 200);
    QCOMPARE(proxy.rowCount(proxy.index(0, 0)), 101);
}

void BridgeLockingTest::shouldAnswerTheGuiThreadWhileTheHostIsAsked()
{
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

void BridgeLockingTest::shouldStandEventsOfTwoThreads()
{
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

TSA_TEST_MAIN(BridgeLockingTest)

#include "tst_bridgelocking.moc"
