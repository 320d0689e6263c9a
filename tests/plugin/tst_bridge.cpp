#include "tests/plugin/Bridge.h"

#include <QSignalSpy>

/// Events that change the tree.
class BridgeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Bridge::addThreads(); }

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
    void shouldRemoveAllGroups();
};

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

TSA_TEST_MAIN(BridgeTest)

#include "tst_bridge.moc"
