#include "tests/processortree/TestTree.h"
#include "tests/support/TestPanel.h"

#include "base/NodeType.h"
#include "processortree/model/ProcessorItem.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <utility>

namespace {
/// The processors that a walk from `parent` meets; it enters groups alone.
int walkedProcessors(const QStandardItem& parent)
{
    int count = 0;
    for (int row = 0; row < parent.rowCount(); ++row) {
        const QStandardItem* child = parent.child(row);
        const auto type = child ? nodeType(*child) : std::nullopt;
        if (type == NodeProcessor)
            ++count;
        else if (type == NodeGroup)
            count += walkedProcessors(*child);
    }
    return count;
}

int walkedGroups(const QStandardItem& root)
{
    int count = 0;
    for (int row = 0; row < root.rowCount(); ++row) {
        if (root.child(row) && nodeType(*root.child(row)) == NodeGroup)
            ++count;
    }
    return count;
}

CProcessorItem* processorItem(quint32 n)
{
    const ProcessorNode processor = testProcessor(n);
    return makeProcessorItem(processor, CRecordHandle(processor));
}

/// A tree with the groups 100 and 101, of which 100 holds 1 and 2, and 3 and 4 outside. Compares
/// its counts with a walk whenever rows have come or gone.
struct CountedTree
{
    CountedTree()
    {
        tree->AppendGroup(testGroup(100));
        tree->AppendGroup(testGroup(101));
        for (const quint32 n : {1U, 2U})
            tree->AppendProcessor(testProcessor(n, 100));
        for (const quint32 n : {3U, 4U})
            tree->AppendProcessor(testProcessor(n));
        for (const auto signal :
             {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
            QObject::connect(&*tree, signal, &*tree, [this] { areAlwaysRight &= areRight(); });
    }

    bool areRight()
    {
        const QStandardItem* root = tree.root();
        return root && tree->getAllProcessorCount() == walkedProcessors(*root)
               && tree->groupCount() == walkedGroups(*root);
    }

    /// "4 in 2": processors and groups.
    QString counts()
    {
        return QStringLiteral("%1 in %2").arg(tree->getAllProcessorCount()).arg(tree->groupCount());
    }

    TestPanel panel;
    Tree tree;
    bool areAlwaysRight = true;
};

} // namespace

/// The numbers of processors and groups, which are kept and not counted anew.
class TreeCountsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldFollowTheModelsOwnChanges();
    void shouldFollowRowsOfOutsiders();
    void shouldFollowANestedRemoval();
    void shouldFollowRowsThatComeWhileTheirBranchGoes();
    void shouldFollowChangesOfKind();
    void shouldFollowReplacedRows();
    void shouldCountRowsThatShareAnIdentity();
    void shouldCountNothingWithoutARoot();
    void shouldCountAfterABatch();
};

void TreeCountsTest::shouldFollowTheModelsOwnChanges()
{
    CountedTree counted;
    QCOMPARE(counted.counts(), text("4 in 2"));
    counted.tree->moveProcessors({counted.tree.index(3)}, testId(101));
    QCOMPARE(counted.counts(), text("4 in 2"));
    counted.tree->removeNode(testId(1));
    QCOMPARE(counted.counts(), text("3 in 2"));
    counted.tree->removeNode(testId(100));
    QCOMPARE(counted.counts(), text("3 in 1"));
    counted.tree->updateProcessor(counted.tree->getItem(testId(4)), testIpProcessor(4, 9));
    QCOMPARE(counted.counts(), text("3 in 1"));
    counted.tree->updateProcessor(counted.tree->getItem(testId(4)), testIpProcessor(4, 8, 999));
    QCOMPARE(counted.counts(), text("2 in 1"));
    counted.tree->removeAllGroups();
    QCOMPARE(counted.counts(), text("1 in 0"));
    QVERIFY(counted.areAlwaysRight && counted.areRight());
}

void TreeCountsTest::shouldFollowRowsOfOutsiders()
{
    CountedTree counted;
    QStandardItem* root = counted.tree.root();
    root->insertRow(0, processorItem(50));
    auto* group = new CProcessorItem(NodeGroup);
    group->appendRow(processorItem(51));
    auto* inner = new CProcessorItem(NodeGroup);
    inner->appendRow(processorItem(52));
    group->appendRow(inner);
    root->appendRow(group);
    QCOMPARE(counted.counts(), text("7 in 3"));
    // Rows below a processor are not searched.
    root->child(0)->appendRow(processorItem(53));
    root->child(0)->removeRow(0);
    QCOMPARE(counted.counts(), text("7 in 3"));
    const QList<QStandardItem*> taken = root->takeRow(group->row());
    QCOMPARE(counted.counts(), text("5 in 2"));
    root->insertRow(1, taken);
    QCOMPARE(counted.counts(), text("7 in 3"));
    counted.tree->removeRows(0, 3, root->index());
    QVERIFY(counted.areAlwaysRight && counted.areRight());
    QCOMPARE(counted.counts(), text("2 in 1"));
}

void TreeCountsTest::shouldFollowANestedRemoval()
{
    CountedTree counted;
    bool isNested = false;
    QObject::connect(&*counted.tree, &QAbstractItemModel::rowsAboutToBeRemoved, &*counted.tree,
                     [&](const QModelIndex& parent, int first) {
                         const QModelIndex group = counted.tree->index(first, 0, parent);
                         if (std::exchange(isNested, true))
                             return;
                         counted.tree->removeRow(0, group);
                     });
    counted.tree.root()->removeRow(0);
    QVERIFY(isNested);
    QCOMPARE(counted.counts(), text("2 in 1"));
    QVERIFY(counted.areRight());
}

void TreeCountsTest::shouldFollowRowsThatComeWhileTheirBranchGoes()
{
    CountedTree counted;
    const auto connection =
        QObject::connect(&*counted.tree, &QAbstractItemModel::rowsAboutToBeRemoved, &*counted.tree,
                         [&] { counted.tree.root()->child(0)->appendRow(processorItem(60)); });
    counted.tree.root()->removeRow(0);
    QObject::disconnect(connection);
    QCOMPARE(counted.counts(), text("2 in 1"));
    QVERIFY(!counted.tree->getItem(testId(60)));
    counted.tree->AppendProcessor(testProcessor(61));
    QCOMPARE(counted.counts(), text("3 in 1"));
    QVERIFY(counted.areRight());
}

void TreeCountsTest::shouldFollowChangesOfKind()
{
    CountedTree counted;
    counted.tree->getItem(testId(3))->setData(QVariant::fromValue(NodeGroup), NodeTypeRole);
    QCOMPARE(counted.counts(), text("3 in 3"));
    counted.tree->getItem(testId(100))->setData(text("none"), NodeTypeRole);
    QCOMPARE(counted.counts(), text("1 in 2"));
    counted.tree.root()->child(0)->setData(QVariant::fromValue(NodeGroup), NodeTypeRole);
    QCOMPARE(counted.counts(), text("3 in 3"));
    QVERIFY(counted.areRight());
}

void TreeCountsTest::shouldFollowReplacedRows()
{
    CountedTree counted;
    counted.tree.root()->setChild(0, processorItem(70));
    QCOMPARE(counted.counts(), text("3 in 1"));
    QVERIFY(counted.areRight());
}

void TreeCountsTest::shouldCountRowsThatShareAnIdentity()
{
    CountedTree counted;
    counted.tree->AppendProcessor(testProcessor(1));
    counted.tree->AppendProcessor(testProcessor(1, 100));
    counted.tree->AppendGroup(testGroup(100));
    QCOMPARE(counted.counts(), text("6 in 3"));
    counted.tree->removeNode(testId(1));
    counted.tree->removeNode(testId(1));
    QCOMPARE(counted.counts(), text("4 in 3"));
    counted.tree->removeNode(testId(100));
    QCOMPARE(counted.counts(), text("4 in 2"));
    QVERIFY(counted.areAlwaysRight && counted.areRight());
}

void TreeCountsTest::shouldCountNothingWithoutARoot()
{
    CountedTree counted;
    counted.tree->removeRow(0);
    QCOMPARE(counted.counts(), text("0 in 0"));
    counted.tree->initRoot();
    counted.tree->AppendProcessor(testProcessor(1));
    QCOMPARE(counted.counts(), text("1 in 0"));
    counted.tree->clear();
    QCOMPARE(counted.counts(), text("0 in 0"));
    counted.tree->initRoot();
    counted.tree->AppendGroup(testGroup(100));
    QCOMPARE(counted.counts(), text("0 in 1"));
    counted.tree->clearToRoot();
    QCOMPARE(counted.counts(), text("0 in 0"));
}

void TreeCountsTest::shouldCountAfterABatch()
{
    CountedTree counted;
    counted.panel.host().setProject({testGroup(200), testGroup(200)},
                                    {testProcessor(1, 200), testProcessor(2), testProcessor(2)});
    counted.tree->AppendProcessors({testId(2), testId(1), testId(2)});
    QCOMPARE(counted.counts(), text("6 in 2"));
    QVERIFY(counted.areRight());
    counted.tree->reset();
    QVERIFY(counted.areRight());
    QCOMPARE(counted.tree->groupCount(), 1);
}

TSA_TEST_MAIN(TreeCountsTest)
#include "tst_treecounts.moc"
