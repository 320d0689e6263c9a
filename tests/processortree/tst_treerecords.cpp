#include "tests/processortree/TestTree.h"
#include "tests/support/TestPanel.h"

#include "processortree/model/ProcessorItem.h"
#include "tests/support/WarningTrap.h"

#include <QSignalSpy>
#include <QTest>

/// Records of rows: how the host changes them, how views read and rename them.
class TreeRecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldUpdateARecordInPlace();
    void shouldPlaceAProcessorWithANewAddressAnew();
    void shouldLeaveTheRootsTextWhereTheCountStays();
    void shouldKeepThePlaceWhenTheAddressIsNotUsed();
    void shouldMoveAnUpdatedProcessorToItsNewGroup();
    void shouldUpdateTheCellThatOthersHold();
    void shouldTellViewsOfAnUpdatedRecord();
    void shouldLeaveTheRootOutOfUpdates();
    void shouldUpdateAGroupRowAsAProcessor();
    void shouldUpdateTheRowOfTheRecordsIdentity();
    void shouldTakeUpRowsBuiltOutside();
    void shouldAskTheHostForItsCheckAtEveryRead();
    void shouldCheckADefaultRecordWhereThereIsNone();
    void shouldRenameAProcessorAndItsRecord();
    void shouldRenameAGroupAndItsRecord();
    void shouldLeaveTheRecordAloneUnderTheSameName();
    void shouldRenameTheRoot();
    void shouldRefuseInvalidData();
    void shouldPassOtherRolesThrough();
};

void TreeRecordsTest::shouldUpdateARecordInPlace()
{
    Tree tree;
    for (const quint32 n : {1U, 5U, 9U})
        tree->AppendProcessor(testIpProcessor(n, n));
    const QPersistentModelIndex index = tree.index(5);
    ProcessorNode changed = testIpProcessor(5, 5);
    changed.name = text("five");
    changed.online = true;
    tree->updateProcessor(tree->getItem(testId(5)), changed);
    QCOMPARE(tree.dump(), text("All processors(3)[1,five,9]"));
    QVERIFY(index.isValid() && tree.processor(5).online);
}

void TreeRecordsTest::shouldPlaceAProcessorWithANewAddressAnew()
{
    Tree tree;
    for (const quint32 n : {1U, 5U, 9U})
        tree->AppendProcessor(testIpProcessor(n, n));
    const QPersistentModelIndex index = tree.index(5);
    tree->updateProcessor(tree->getItem(testId(5)), testIpProcessor(5, 50));
    QCOMPARE(tree.dump(), text("All processors(3)[1,9,5]"));
    QVERIFY(!index.isValid());
    tree->updateProcessor(tree->getItem(testId(5)), testIpProcessor(5, kNoProcessorAddress));
    QCOMPARE(tree.dump(), text("All processors(3)[1,9,5]"));
    tree->updateProcessor(tree->getItem(testId(5)), testIpProcessor(5, 3, 999));
    QCOMPARE(tree.dump(), text("All processors(2)[1,9]"));
}

void TreeRecordsTest::shouldLeaveTheRootsTextWhereTheCountStays()
{
    Tree tree;
    for (const quint32 n : {1U, 5U})
        tree->AppendProcessor(testIpProcessor(n, n));
    QSignalSpy dataChanged(&*tree, &QAbstractItemModel::dataChanged);
    tree->updateProcessor(tree->getItem(testId(5)), testIpProcessor(5, 50));
    QCOMPARE(dataChanged.count(), 0);
    // A text that is out of step is written anew.
    tree.root()->setText(text("other"));
    tree->updateProcessor(tree->getItem(testId(5)), testIpProcessor(5, 60));
    QCOMPARE(tree.dump(), text("All processors(2)[1,5]"));
}

void TreeRecordsTest::shouldKeepThePlaceWhenTheAddressIsNotUsed()
{
    Tree tree;
    for (const quint32 n : {1U, 5U, 9U})
        tree->AppendProcessor(testIpProcessor(n, n));
    ProcessorNode changed = testIpProcessor(1, 77);
    changed.reachedByIp = false;
    tree->updateProcessor(tree->getItem(testId(1)), changed);
    QCOMPARE(tree.dump(), text("All processors(3)[1,5,9]"));
    QCOMPARE(tree.processor(1).ipAddress, 77U);
}

void TreeRecordsTest::shouldMoveAnUpdatedProcessorToItsNewGroup()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testIpProcessor(1, 1));
    tree->updateProcessor(tree->getItem(testId(1)), testIpProcessor(1, 2, 100));
    QCOMPARE(tree.dump(), text("All processors(1)[G100[1]]"));
    // With the address it has, the record changes and the row stays.
    tree->updateProcessor(tree->getItem(testId(1)), testIpProcessor(1, 2));
    QCOMPARE(tree.dump(), text("All processors(1)[G100[1]]"));
    QVERIFY(tree.processor(1).groupId.isNull());
}

void TreeRecordsTest::shouldUpdateTheCellThatOthersHold()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    const auto row = tree->findRow(testId(1));
    ProcessorNode changed = testProcessor(1);
    changed.name = text("one");
    tree->updateProcessor(tree->getItem(testId(1)), changed);
    QCOMPARE(row->record.cell()->load().name, text("one"));
    QCOMPARE(tree->findRow(testId(1))->record.cell(), row->record.cell());
}

void TreeRecordsTest::shouldTellViewsOfAnUpdatedRecord()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    ProcessorNode changed = testProcessor(1);
    changed.online = true;
    QSignalSpy dataChanged(&*tree, &QAbstractItemModel::dataChanged);
    tree->updateProcessor(tree->getItem(testId(1)), changed);
    QCOMPARE(dataChanged.count(), 1);
    QCOMPARE(dataChanged.at(0).at(0).toModelIndex(), tree.index(1));
    QVERIFY(dataChanged.at(0).at(2).value<QVector<int>>().contains(259));
}

void TreeRecordsTest::shouldLeaveTheRootOutOfUpdates()
{
    Tree tree;
    tree->updateProcessor(tree.root(), testProcessor(1));
    tree->updateProcessor(tree.root(), testIpProcessor(1, 5));
    tree->updateProcessor(nullptr, testIpProcessor(1, 5));
    QCOMPARE(tree.dump(), text("All processors(0)[]"));
    QVERIFY(!tree->index(0, 0).data(259).isValid());
}

void TreeRecordsTest::shouldUpdateAGroupRowAsAProcessor()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1, 100));
    ProcessorNode record = testProcessor(100);
    record.name = text("P");
    tree->updateProcessor(tree->getItem(testId(100)), record);
    QCOMPARE(tree.dump(), text("All processors(1)[P[1]]"));
    QCOMPARE(tree.processor(100).name, text("P"));
    QVERIFY(tree.group(100).id.isNull());
    tree->moveProcessors({tree.index(1)}, QUuid());
    QCOMPARE(tree.dump(), text("All processors(1)[P[],1]"));
}

void TreeRecordsTest::shouldUpdateTheRowOfTheRecordsIdentity()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    tree->AppendProcessor(testProcessor(2));
    // The host no longer knew processor 1, and its row got an empty record.
    tree->updateProcessor(tree->getItem(testId(1)), ProcessorNode());
    QCOMPARE(tree.dump(), text("All processors(2)[,2]"));
    tree->updateProcessor(tree->getItem(testId(1)), testIpProcessor(1, 5));
    QCOMPARE(tree.dump(), text("All processors(3)[1,,2]"));
}

void TreeRecordsTest::shouldTakeUpRowsBuiltOutside()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    auto* group = new CProcessorItem(NodeGroup);
    group->setUuid(testId(101));
    auto* processor = new CProcessorItem(NodeProcessor);
    processor->setUuid(testId(1));
    processor->setData(QVariant::fromValue(testProcessor(1, 101)), 259);
    group->appendRow(processor);
    tree.root()->appendRow(group);
    QCOMPARE(tree->getItem(testId(1)), static_cast<QStandardItem*>(processor));
    const auto row = tree->findRow(testId(1));
    QVERIFY(row && row->record.cell());
    QCOMPARE(row->record.cell()->load().groupId, testId(101));
    QCOMPARE(tree.processor(1).groupId, testId(101));
    tree.root()->removeRows(0, 2);
    QVERIFY(!tree->getItem(testId(1)));
    QVERIFY(!tree->findRow(testId(101)));
}

void TreeRecordsTest::shouldAskTheHostForItsCheckAtEveryRead()
{
    TestPanel panel;
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    const QModelIndex index = tree.index(1);
    panel.host().clearCalls();
    QCOMPARE(index.data(260), QVariant(false));
    panel.host().checkProcessor = true;
    QCOMPARE(index.data(260), QVariant(true));
    QCOMPARE(index.data(260), QVariant(true));
    panel.host().checkProcessor = false;
    QCOMPARE(index.data(260), QVariant(false));
    QCOMPARE(panel.host().callCount(text("CheckProcessor")), 4);
    QCOMPARE(panel.host().calls().last().argument, text("1"));
    QVERIFY(!tree->getItem(testId(1))->data(260).isValid());
    panel.host().clearCalls();
    index.data(259);
    index.data(Qt::DisplayRole);
    QVERIFY(panel.host().callNames().isEmpty());
}

void TreeRecordsTest::shouldCheckADefaultRecordWhereThereIsNone()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    QCOMPARE(tree.index(100).data(260), QVariant(false));
    TestPanel panel;
    panel.host().checkProcessor = true;
    for (const QModelIndex& index : {tree->index(0, 0), tree.index(100), QModelIndex()}) {
        panel.host().clearCalls();
        QCOMPARE(tree->data(index, 260), QVariant(true));
        QCOMPARE(panel.host().callCount(text("CheckProcessor")), 1);
        QCOMPARE(panel.host().calls().last().argument, QString());
    }
}

void TreeRecordsTest::shouldRenameAProcessorAndItsRecord()
{
    Tree tree;
    ProcessorNode processor = testProcessor(1);
    processor.hostAttribute8 = 88;
    tree->AppendProcessor(processor);
    QVERIFY(tree->setData(tree.index(1), text("Left"), Qt::DisplayRole));
    QCOMPARE(tree.dump(), text("All processors(1)[Left]"));
    QCOMPARE(tree.processor(1).name, text("Left"));
    QCOMPARE(tree.processor(1).hostAttribute8, Q_INT64_C(88));
    QVERIFY(tree->setData(tree.index(1), 5, Qt::DisplayRole));
    QCOMPARE(tree.processor(1).name, text("5"));
}

void TreeRecordsTest::shouldRenameAGroupAndItsRecord()
{
    Tree tree;
    ProcessorGroupNode group = testGroup(100);
    group.processors = {testProcessor(1)};
    tree->AppendGroup(group);
    QVERIFY(tree->setData(tree.index(100), text("Left"), Qt::DisplayRole));
    QCOMPARE(tree.dump(), text("All processors(0)[Left[]]"));
    QCOMPARE(tree.group(100).name, text("Left"));
    QCOMPARE(tree.group(100).processors.size(), 1);
}

void TreeRecordsTest::shouldLeaveTheRecordAloneUnderTheSameName()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1));
    for (const quint32 n : {100U, 1U}) {
        QStandardItem* item = tree->getItem(testId(n));
        const QString name = item->text();
        item->setText(text("out of step"));
        QSignalSpy dataChanged(&*tree, &QAbstractItemModel::dataChanged);
        QVERIFY(tree->setData(item->index(), name, Qt::DisplayRole));
        QCOMPARE(item->text(), name);
        for (const auto& signal : qAsConst(dataChanged))
            QVERIFY(!signal.at(2).value<QVector<int>>().contains(259));
        QCOMPARE(dataChanged.count(), 1);
    }
}

void TreeRecordsTest::shouldRenameTheRoot()
{
    Tree tree;
    QVERIFY(tree->setData(tree->index(0, 0), text("Root"), Qt::DisplayRole));
    QCOMPARE(tree.dump(), text("Root[]"));
    QVERIFY(!tree->index(0, 0).data(259).isValid());
}

void TreeRecordsTest::shouldRefuseInvalidData()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    QVERIFY(!tree->setData(QModelIndex(), text("x"), Qt::DisplayRole));
    QVERIFY(!tree->setData(tree.index(1), QVariant(), Qt::DisplayRole));
    QVERIFY(!tree->setData(tree.index(1), QVariant(), Qt::UserRole + 9));
    QCOMPARE(tree.dump(), text("All processors(1)[1]"));
    QVERIFY(tree->setData(tree.index(1), QString(), Qt::DisplayRole));
    QCOMPARE(tree.processor(1).name, QString());
}

void TreeRecordsTest::shouldPassOtherRolesThrough()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    QVERIFY(tree->setData(tree.index(1), text("tip"), Qt::ToolTipRole));
    QCOMPARE(tree.index(1).data(Qt::ToolTipRole).toString(), text("tip"));
    QVERIFY(tree->setData(tree.index(1), text("edited"), Qt::EditRole));
    QCOMPARE(tree.dump(), text("All processors(1)[edited]"));
    QCOMPARE(tree.processor(1).name, text("1"));
}

TSA_TEST_MAIN(TreeRecordsTest)
#include "tst_treerecords.moc"
