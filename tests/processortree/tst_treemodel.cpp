#include "tests/processortree/TestTree.h"
#include "tests/support/TestPanel.h"

#include "processortree/model/ProcessorItem.h"
#include "tests/support/WarningTrap.h"

#include <QSignalSpy>
#include <QTest>

class TreeModelTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldOfferItsSlotsByName_data();
    void shouldOfferItsSlotsByName();
    void shouldShowTheRootAlone();
    void shouldTakeASecondRootForTheRoot();
    void shouldDoNothingWithoutARoot();
    void shouldGoBackToTheRoot();
    void shouldKeepUngroupedProcessorsBelowGroups();
    void shouldKeepTheRecordOfAGroup();
    void shouldKeepTheOrderOfArrivalInAGroup();
    void shouldOrderByAddressInAGroup();
    void shouldLeaveOutProcessorsOfUnknownGroups();
    void shouldCountProcessorsAppendedByNumber();
    void shouldUseTheGroupBehindAnotherRowOfItsIdentity();
    void shouldFindRowsDepthFirst();
    void shouldFindTheFirstOfSeveralRows();
    void shouldFollowIdentitiesWrittenIntoRows();
    void shouldDescendIntoGroupsAlone();
    void shouldPassOverRowsWithoutAType();
    void shouldCountProcessorsInNestedGroups();
    void shouldListProcessorsBelowARow();
    void shouldRemoveAProcessor();
    void shouldKeepTheProcessorsOfARemovedGroup();
    void shouldPlaceTheProcessorsOfARemovedGroupByAddress();
    void shouldNotRemoveTheRootOrUnknownRows();
    void shouldRemoveSeveralRowsInTheirOrder();
    void shouldRemoveAllGroups();
    void shouldStandBeingCleared();
    void shouldStandLosingItsRoot();
    void shouldStandAHostsNonsense();
};

void TreeModelTest::shouldOfferItsSlotsByName_data()
{
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("reset()") << QByteArray("void");
    QTest::newRow("AppendGroup(ProcessorGroupNode)") << QByteArray("CProcessorItem*");
    QTest::newRow("AppendProcessor(ProcessorNode)") << QByteArray("void");
    QTest::newRow("AppendProcessors(QList<QUuid>)") << QByteArray("void");
    QTest::newRow("removeNode(QUuid)") << QByteArray("void");
    QTest::newRow("removeNodes(QList<QUuid>)") << QByteArray("void");
}

void TreeModelTest::shouldOfferItsSlotsByName()
{
    QFETCH(QByteArray, result);
    const CProcessorTreeModel model;
    const QMetaObject& meta = *model.metaObject();
    QCOMPARE(QByteArray(meta.className()), QByteArray("CProcessorTreeModel"));
    const int index = meta.indexOfSlot(QTest::currentDataTag());
    QVERIFY(index >= meta.methodOffset());
    QCOMPARE(QByteArray(meta.method(index).typeName()), result);
    for (const QByteArray& type : meta.method(index).parameterTypes())
        QVERIFY2(QMetaType::type(type) != QMetaType::UnknownType, type.constData());
}

void TreeModelTest::shouldShowTheRootAlone()
{
    Tree tree;
    QCOMPARE(tree.dump(), text("All processors(0)[]"));
    QCOMPARE(tree->columnCount(), 1);
    const QModelIndex root = tree->index(0, 0);
    QVERIFY(root.data(257).toUuid().isNull());
    QCOMPARE(root.data(257).userType(), int(QMetaType::QUuid));
    QCOMPARE(root.data(258).toInt(), 0);
    QVERIFY(!root.data(259).isValid());
    QVERIFY(!(root.flags() & (Qt::ItemIsEditable | Qt::ItemIsDragEnabled)));
    QVERIFY(root.flags() & Qt::ItemIsDropEnabled);
    QCOMPARE(tree->getItem(QUuid()), tree.root());
    QCOMPARE(tree->groupCount(), 0);
    QCOMPARE(tree->getAllProcessorCount(), 0);
}

void TreeModelTest::shouldTakeASecondRootForTheRoot()
{
    Tree tree;
    tree->initRoot();
    tree->AppendProcessor(testProcessor(1));
    QCOMPARE(tree.dump(), text("All processors(0)[],All processors(1)[1]"));
    QCOMPARE(tree->getItem(QUuid()), tree->item(1));
}

void TreeModelTest::shouldDoNothingWithoutARoot()
{
    TestPanel panel;
    panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    QVERIFY(!model.AppendGroup(testGroup(100)));
    model.AppendProcessor(testProcessor(1));
    model.AppendProcessor(testProcessor(1, 100));
    model.AppendProcessors({testId(1)});
    model.reset();
    model.removeNode(QUuid());
    model.removeNodes({testId(1), QUuid()});
    model.updateRootText();
    model.removeAllGroups();
    model.updateProcessor(nullptr, testProcessor(1));
    model.announceRecords({QUuid()});
    QVERIFY(model.moveProcessors({}, QUuid()).isEmpty());
    QVERIFY(!model.getItem(QUuid()));
    QVERIFY(!model.findRow(QUuid()));
    QCOMPARE(model.getAllProcessorCount(), 0);
    QCOMPARE(model.groupCount(), 0);
    QVERIFY(model.getChildProcessor(QModelIndex()).isEmpty());
    QCOMPARE(model.rowCount(), 0);
}

void TreeModelTest::shouldGoBackToTheRoot()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1, 100));
    tree->clearToRoot();
    QCOMPARE(tree.dump(), text("All processors(0)[]"));
    QVERIFY(!tree->getItem(testId(1)));
    tree->AppendProcessor(testProcessor(1));
    QCOMPARE(tree.dump(), text("All processors(1)[1]"));
}

void TreeModelTest::shouldKeepUngroupedProcessorsBelowGroups()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    tree->AppendProcessor(testProcessor(2));
    CProcessorItem* first = tree->AppendGroup(testGroup(100));
    const CProcessorItem* second = tree->AppendGroup(testGroup(101));
    QCOMPARE(tree.dump(), text("All processors(2)[G100[],G101[],1,2]"));
    QCOMPARE(first->row(), 0);
    QCOMPARE(second->row(), 1);
    QCOMPARE(tree->getItem(testId(100)), static_cast<QStandardItem*>(first));
    QCOMPARE(tree->groupCount(), 2);
}

void TreeModelTest::shouldKeepTheRecordOfAGroup()
{
    Tree tree;
    ProcessorGroupNode group = testGroup(100);
    group.hostAttribute3 = 33;
    group.processors = {testProcessor(1)};
    tree->AppendGroup(group);
    QCOMPARE(tree.group(100).hostAttribute3, 33);
    QCOMPARE(tree.group(100).processors.size(), 1);
    QCOMPARE(tree.index(100).data(258).toInt(), 1);
    QCOMPARE(tree.dump(), text("All processors(0)[G100[]]"));
}

void TreeModelTest::shouldKeepTheOrderOfArrivalInAGroup()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    for (const quint32 shown : {6U, 3U, 10U})
        tree->AppendProcessor(testProcessor(shown, 100));
    QCOMPARE(tree.dump(), text("All processors(3)[G100[6,3,10]]"));
}

void TreeModelTest::shouldOrderByAddressInAGroup()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testIpProcessor(1, 0x0A000005, 100));
    tree->AppendProcessor(testIpProcessor(2, 0x0A000002, 100));
    tree->AppendProcessor(testIpProcessor(3, kNoProcessorAddress, 100));
    QCOMPARE(tree.dump(), text("All processors(3)[G100[2,1,3]]"));
}

void TreeModelTest::shouldLeaveOutProcessorsOfUnknownGroups()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    tree->AppendProcessor(testProcessor(2, 100));
    tree->AppendProcessor(testIpProcessor(3, 5, 100));
    QCOMPARE(tree.dump(), text("All processors(1)[1]"));
    QVERIFY(!tree->getItem(testId(2)));
}

void TreeModelTest::shouldCountProcessorsAppendedByNumber()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1, 100));
    QCOMPARE(tree.dump(), text("All processors(1)[G100[1]]"));
}

void TreeModelTest::shouldUseTheGroupBehindAnotherRowOfItsIdentity()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendGroup(testGroup(101));
    tree->AppendProcessor(testProcessor(101, 100));
    tree->AppendProcessor(testProcessor(1, 101));
    QCOMPARE(tree.dump(), text("All processors(2)[G100[101],G101[1]]"));
    tree->AppendProcessor(testProcessor(2));
    tree->AppendProcessor(testProcessor(3, 2));
    QCOMPARE(tree.dump(), text("All processors(3)[G100[101],G101[1],2]"));
}

void TreeModelTest::shouldFindRowsDepthFirst()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1, 100));
    tree->AppendProcessor(testProcessor(2));
    for (const quint32 n : {100U, 1U, 2U}) {
        QCOMPARE(tree->getItem(testId(n))->data(257).toUuid(), testId(n));
        QVERIFY(tree->findRow(testId(n)));
    }
    QVERIFY(!tree->getItem(testId(3)));
    QVERIFY(!tree->findRow(testId(3)));
    QVERIFY(tree->findRow(testId(1))->type == NodeProcessor);
    QVERIFY(tree->findRow(testId(100))->type == NodeGroup);
    QVERIFY(tree->findRow(QUuid())->type == NodeRoot);
}

void TreeModelTest::shouldFindTheFirstOfSeveralRows()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1));
    tree->AppendProcessor(testProcessor(1, 100));
    QCOMPARE(tree.dump(), text("All processors(2)[G100[1],1]"));
    QCOMPARE(tree->getItem(testId(1))->parent(), tree->getItem(testId(100)));
    tree->removeNode(testId(1));
    QCOMPARE(tree.dump(), text("All processors(1)[G100[],1]"));
    QCOMPARE(tree->getItem(testId(1))->parent(), tree.root());
    tree->removeNode(testId(1));
    QVERIFY(!tree->getItem(testId(1)));
    // A row whose identity is null does not hide the root.
    tree->AppendProcessor(testProcessor(0));
    QCOMPARE(tree->getItem(QUuid()), tree.root());
}

void TreeModelTest::shouldFollowIdentitiesWrittenIntoRows()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1, 100));
    tree->AppendProcessor(testProcessor(2));
    QStandardItem* first = tree->getItem(testId(1));
    QStandardItem* second = tree->getItem(testId(2));

    first->setData(testId(7), 257);
    QVERIFY(!tree->getItem(testId(1)));
    QCOMPARE(tree->getItem(testId(7)), first);
    QVERIFY(tree->setData(second->index(), testId(7), 257));
    QVERIFY(!tree->getItem(testId(2)));
    QCOMPARE(tree->getItem(testId(7)), first);
    first->setData(testId(8), 257);
    QCOMPARE(tree->getItem(testId(7)), second);
    tree.root()->setData(testId(8), 257);
    QCOMPARE(tree->getItem(testId(8)), tree.root());
    QVERIFY(!tree->getItem(QUuid()));
}

void TreeModelTest::shouldDescendIntoGroupsAlone()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    auto* hidden = new CProcessorItem(NodeProcessor);
    hidden->setUuid(testId(5));
    tree->getItem(testId(1))->appendRow(hidden);
    QVERIFY(!tree->getItem(testId(5)));
    QCOMPARE(tree->getAllProcessorCount(), 1);
    tree->getItem(testId(1))->setData(testId(2), 257); // everything is looked through again
    QVERIFY(!tree->getItem(testId(5)));
    tree->getItem(testId(2))->setData(QVariant::fromValue(NodeGroup), 258);
    QCOMPARE(tree->getItem(testId(5)), static_cast<QStandardItem*>(hidden));
    QCOMPARE(tree->getAllProcessorCount(), 1);
}

void TreeModelTest::shouldPassOverRowsWithoutAType()
{
    Tree tree;
    auto* plain = new QStandardItem(text("?"));
    plain->setData(testId(5), 257);
    auto* below = new CProcessorItem(NodeProcessor);
    below->setUuid(testId(6));
    plain->appendRow(below);
    tree.root()->appendRow(plain);
    QVERIFY(!tree->getItem(testId(5)));
    QVERIFY(!tree->getItem(testId(6)));
    QCOMPARE(tree->getAllProcessorCount(), 0);
    QCOMPARE(tree->groupCount(), 0);
    tree->removeNode(testId(5));
    QCOMPARE(tree.root()->rowCount(), 1);
    plain->setData(1, 258);
    QCOMPARE(tree->getItem(testId(6)), static_cast<QStandardItem*>(below));
    plain->setData(text("nonsense"), 258);
    QVERIFY(!tree->getItem(testId(6)));
}

void TreeModelTest::shouldCountProcessorsInNestedGroups()
{
    Tree tree;
    CProcessorItem* outer = tree->AppendGroup(testGroup(100));
    auto* inner = new CProcessorItem(NodeGroup);
    inner->setUuid(testId(101));
    outer->appendRow(inner);
    auto* processor = new CProcessorItem(NodeProcessor);
    processor->setUuid(testId(1));
    inner->appendRow(processor);
    QCOMPARE(tree->getAllProcessorCount(), 1);
    QCOMPARE(tree->groupCount(), 1);
    QCOMPARE(tree->getItem(testId(1)), static_cast<QStandardItem*>(processor));
    tree->updateRootText();
    QCOMPARE(tree.root()->text(), text("All processors(1)"));
}

void TreeModelTest::shouldListProcessorsBelowARow()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendGroup(testGroup(101));
    tree->AppendProcessor(testProcessor(1, 101));
    tree->AppendProcessor(testProcessor(2, 100));
    tree->AppendProcessor(testProcessor(3, 100));
    tree->AppendProcessor(testProcessor(4));
    QCOMPARE(tree->getChildProcessor(tree->index(0, 0)),
             (QList<QUuid>{testId(2), testId(3), testId(1), testId(4)}));
    QCOMPARE(tree->getChildProcessor(tree.index(100)), (QList<QUuid>{testId(2), testId(3)}));
    QVERIFY(tree->getChildProcessor(tree.index(4)).isEmpty());
    QVERIFY(tree->getChildProcessor(QModelIndex()).isEmpty());
}

void TreeModelTest::shouldRemoveAProcessor()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendProcessor(testProcessor(1, 100));
    tree->AppendProcessor(testProcessor(2));
    QSignalSpy removed(&*tree, &QAbstractItemModel::rowsRemoved);
    tree->removeNode(testId(1));
    QCOMPARE(tree.dump(), text("All processors(1)[G100[],2]"));
    tree->removeNode(testId(2));
    QCOMPARE(tree.dump(), text("All processors(0)[G100[]]"));
    QCOMPARE(removed.count(), 2);
}

void TreeModelTest::shouldKeepTheProcessorsOfARemovedGroup()
{
    TestPanel panel;
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendGroup(testGroup(101));
    tree->AppendProcessor(testProcessor(1, 100));
    tree->AppendProcessor(testProcessor(2, 100));
    tree->AppendProcessor(testProcessor(3));
    tree.root()->setText(text("All processors(9)"));
    tree->removeNode(testId(100));
    QCOMPARE(tree.dump(), text("All processors(9)[G101[],3,2,1]"));
    QVERIFY(tree.processor(1).groupId.isNull());
    QCOMPARE(panel.host().memberships.size(), 2);
    QCOMPARE(panel.host().memberships.at(0).processors, QList<QUuid>{testId(2)});
    QCOMPARE(panel.host().memberships.at(1).processors, QList<QUuid>{testId(1)});
    tree->removeNode(testId(101));
    QCOMPARE(tree.dump(), text("All processors(9)[3,2,1]"));
}

void TreeModelTest::shouldPlaceTheProcessorsOfARemovedGroupByAddress()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    for (const quint32 n : {2U, 4U, 9U})
        tree->AppendProcessor(testIpProcessor(n, n, 100));
    for (const quint32 n : {3U, 5U})
        tree->AppendProcessor(testIpProcessor(n, n));
    tree->removeNode(testId(100));
    QCOMPARE(tree.dump(), text("All processors(5)[2,3,4,5,9]"));
}

void TreeModelTest::shouldNotRemoveTheRootOrUnknownRows()
{
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    tree.root()->setText(text("kept"));
    tree->removeNode(QUuid());
    tree->removeNode(testId(9));
    tree->removeNodes({});
    tree->removeNodes({QUuid(), testId(9)});
    QCOMPARE(tree.dump(), text("kept[1]"));
}

void TreeModelTest::shouldRemoveSeveralRowsInTheirOrder()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    for (const quint32 n : {1U, 2U, 3U})
        tree->AppendProcessor(testProcessor(n, 100));
    tree->AppendProcessor(testProcessor(4));
    tree->removeNodes({testId(2), testId(9), testId(100), testId(2), testId(3)});
    QCOMPARE(tree.dump(), text("All processors(2)[4,1]"));
}

void TreeModelTest::shouldRemoveAllGroups()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    tree->AppendGroup(testGroup(101));
    tree->AppendProcessor(testProcessor(1, 100));
    tree->AppendProcessor(testProcessor(2));
    tree->removeAllGroups();
    QCOMPARE(tree.dump(), text("All processors(1)[2]"));
    QVERIFY(!tree->getItem(testId(1)));
    QVERIFY(!tree->getItem(testId(101)));
}

void TreeModelTest::shouldStandBeingCleared()
{
    TestPanel panel;
    panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    Tree tree;
    tree->AppendProcessor(testProcessor(1));
    tree->clear();
    QVERIFY(!tree->getItem(testId(1)));
    QVERIFY(!tree->getItem(QUuid()));
    QVERIFY(!tree->findRow(testId(1)));
    tree->AppendProcessor(testProcessor(2));
    QVERIFY(!tree->AppendGroup(testGroup(100)));
    tree->AppendProcessors({testId(1)});
    tree->reset();
    tree->removeNode(testId(1));
    tree->updateRootText();
    tree->removeAllGroups();
    QCOMPARE(tree.dump(), QString());
    tree->initRoot();
    tree->reset();
    QCOMPARE(tree.dump(), text("All processors(1)[G100[],1]"));
}

void TreeModelTest::shouldStandLosingItsRoot()
{
    TestPanel panel;
    panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    for (const bool taken : {false, true}) {
        Tree tree;
        tree->AppendGroup(testGroup(100));
        tree->AppendProcessor(testProcessor(1, 100));
        tree->AppendProcessor(testProcessor(1));
        if (taken)
            qDeleteAll(tree->takeRow(0));
        else
            QVERIFY(tree->removeRow(0));
        QVERIFY(!tree->getItem(testId(1)));
        QVERIFY(!tree->findRow(QUuid()));
        tree->AppendProcessor(testProcessor(2));
        tree->AppendProcessors({testId(1)});
        tree->reset();
        tree->updateRootText();
        QCOMPARE(tree.dump(), QString());
        tree->clearToRoot();
        tree->AppendProcessor(testProcessor(2));
        QCOMPARE(tree.dump(), text("All processors(1)[2]"));
    }
}

void TreeModelTest::shouldStandAHostsNonsense()
{
    TestPanel panel;
    const QString longName(10000, QLatin1Char('n'));
    QList<ProcessorGroupNode> groups{testGroup(100), testGroup(100), testGroup(0), testGroup(1)};
    groups[0].name = longName;
    QList<ProcessorNode> processors{ProcessorNode(), testProcessor(1, 100), testProcessor(1, 100),
                                    testProcessor(100), testProcessor(0, 100)};
    for (quint32 n = 1000; n < 1300; ++n)
        processors.append(testIpProcessor(n, n % 7 == 0 ? 0 : 5000 - n, n % 2 ? 100 : 0));
    processors[1].name = longName;
    panel.host().setProject(groups, processors);
    Tree tree;
    tree->reset();
    QCOMPARE(tree.root()->text(), text("All processors(305)"));
    QCOMPARE(tree->groupCount(), 2);
    QCOMPARE(tree.root()->child(0)->text(), longName);
    QCOMPARE(tree->getItem(testId(100)), tree.root()->child(0));
    QCOMPARE(tree->getItem(QUuid()), tree.root());
    for (quint32 n = 1000; n < 1300; ++n)
        QVERIFY(tree->getItem(testId(n)));
    tree->removeNodes({testId(100), QUuid(), testId(1), testId(100), testId(100), testId(100)});
    QVERIFY(!tree->getItem(testId(100)));
    tree->AppendProcessor(ProcessorNode());
    QCOMPARE(tree->getItem(QUuid()), tree.root());
    QCOMPARE(tree.root()->text(),
             QStringLiteral("All processors(%1)").arg(tree->getAllProcessorCount()));
}

TSA_TEST_MAIN(TreeModelTest)
#include "tst_treemodel.moc"
