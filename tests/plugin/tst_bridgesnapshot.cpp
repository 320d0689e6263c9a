#include "tests/plugin/Bridge.h"

/// The tree as the host asks for it.
class BridgeSnapshotTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Bridge::addThreads(); }

    void shouldTakeASnapshotInTreeOrder();
    void shouldOfferProcessorsForTheSnapshot();
};

void BridgeSnapshotTest::shouldTakeASnapshotInTreeOrder()
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

void BridgeSnapshotTest::shouldOfferProcessorsForTheSnapshot()
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

TSA_TEST_MAIN(BridgeSnapshotTest)

#include "tst_bridgesnapshot.moc"
