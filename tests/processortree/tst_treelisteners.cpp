#include "tests/processortree/TestTree.h"
#include "tests/support/TestPanel.h"

#include "processortree/model/ProcessorItem.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <functional>

namespace {
/// A tree with the group 100, which holds 1 and 2, and with 3 outside. Whoever hears the first
/// signal of one kind changes the tree at once.
struct HeardTree
{
    HeardTree()
    {
        tree->AppendGroup(testGroup(100));
        for (const quint32 n : {1U, 2U})
            tree->AppendProcessor(testProcessor(n, 100));
        tree->AppendProcessor(testProcessor(3));
    }

    template <typename Signal>
    void once(Signal signal, const std::function<void()>& change)
    {
        auto* const context = new QObject(&*tree);
        QObject::connect(&*tree, signal, context, [context, change] {
            context->disconnect();
            delete context;
            change();
        });
    }

    void remove(quint32 n)
    {
        QStandardItem* item = tree->getItem(testId(n));
        item->parent()->removeRow(item->row());
    }

    TestPanel panel;
    Tree tree;
};

} // namespace

/// Receivers of the model's signals change the model themselves.
class TreeListenersTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldNotRenameAProcessorThatIsGone();
    void shouldNotRenameAGroupThatIsGone();
    void shouldSayWhenARowGoesWithItsNewText();
    void shouldSayWhenARowGoesWithOtherData();
    void shouldNotUpdateTheTextOfARowThatIsGone();
    void shouldCountWhatListenersTakeFromUnderAnUpdate();
    void shouldTakeUpRowsThatAListenerPutsElsewhere();
    void shouldNotReturnAGroupThatIsGone();
    void shouldLeaveRowsThatAreGoneOutOfAMove();
    void shouldMoveNoEmptyRow();
    void shouldStandARootThatGoesWithARow();
    void shouldKeepTheRootThatAListenerMade();
};

void TreeListenersTest::shouldNotRenameAProcessorThatIsGone()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(1); });
    QVERIFY(!heard.tree->setData(heard.tree.index(1), text("new"), Qt::DisplayRole));
    QCOMPARE(heard.tree.dump(), text("All processors(3)[G100[2],3]"));
}

void TreeListenersTest::shouldNotRenameAGroupThatIsGone()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(100); });
    QVERIFY(!heard.tree->setData(heard.tree.index(100), text("new"), Qt::DisplayRole));
    QCOMPARE(heard.tree.dump(), text("All processors(3)[3]"));
}

void TreeListenersTest::shouldSayWhenARowGoesWithItsNewText()
{
    HeardTree heard;
    // The record already has that name, so only the text changes.
    heard.tree->getItem(testId(1))->setText(text("other"));
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(1); });
    QVERIFY(!heard.tree->setData(heard.tree.index(1), text("1"), Qt::DisplayRole));
    QVERIFY(heard.tree->setData(heard.tree.index(2), text("two"), Qt::DisplayRole));
}

void TreeListenersTest::shouldSayWhenARowGoesWithOtherData()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(1); });
    QVERIFY(!heard.tree->setData(heard.tree.index(1), text("tip"), Qt::ToolTipRole));
}

void TreeListenersTest::shouldNotUpdateTheTextOfARowThatIsGone()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(1); });
    ProcessorNode changed = testProcessor(1, 100);
    changed.name = text("new");
    heard.tree->updateProcessor(heard.tree->getItem(testId(1)), changed);
    QCOMPARE(heard.tree.dump(), text("All processors(3)[G100[2],3]"));
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(2); });
    heard.tree->announceRecords({testId(2), testId(2), testId(3)});
    QCOMPARE(heard.tree.dump(), text("All processors(3)[G100[],3]"));
}

void TreeListenersTest::shouldCountWhatListenersTakeFromUnderAnUpdate()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::rowsRemoved, [&] { heard.remove(2); });
    heard.tree->updateProcessor(heard.tree->getItem(testId(3)), testIpProcessor(3, 9));
    QCOMPARE(heard.tree.dump(), text("All processors(2)[G100[1],3]"));
}

void TreeListenersTest::shouldTakeUpRowsThatAListenerPutsElsewhere()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::rowsAboutToBeInserted, [&] {
        auto* item = new CProcessorItem(NodeProcessor, testId(5));
        item->setText(text("5"));
        item->setData(QVariant::fromValue(testProcessor(5)), NodeDataRole);
        heard.tree->getItem(testId(100))->appendRow(item);
    });
    heard.tree->AppendProcessor(testProcessor(4));
    QCOMPARE(heard.tree.dump(), text("All processors(5)[G100[1,2,5],3,4]"));
    for (const quint32 n : {4U, 5U}) {
        const auto row = heard.tree->findRow(testId(n));
        QVERIFY(row && row->record.cell());
        QCOMPARE(row->record.cell()->load().id, testId(n));
    }
}

void TreeListenersTest::shouldNotReturnAGroupThatIsGone()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::rowsInserted, [&] { heard.remove(101); });
    QVERIFY(!heard.tree->AppendGroup(testGroup(101)));
    heard.once(&QAbstractItemModel::rowsInserted, [&] { heard.tree->clear(); });
    QVERIFY(!heard.tree->AppendGroup(testGroup(101)));
    QVERIFY(!heard.tree->AppendGroup(testGroup(102)));
}

void TreeListenersTest::shouldLeaveRowsThatAreGoneOutOfAMove()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::rowsInserted, [&] { heard.remove(1); });
    const QPersistentModelIndex one = heard.tree.index(1);
    const QPersistentModelIndex two = heard.tree.index(2);
    QCOMPARE(heard.tree->moveProcessors({one, two}, QUuid()).size(), 1);
    QCOMPARE(heard.tree.dump(), text("All processors(3)[G100[],3,2]"));
    heard.once(&QAbstractItemModel::dataChanged, [&] { heard.remove(2); });
    QVERIFY(heard.tree->moveProcessors({heard.tree.index(2)}, testId(100)).isEmpty());
    QCOMPARE(heard.tree.dump(), text("All processors(3)[G100[],3]"));
}

void TreeListenersTest::shouldMoveNoEmptyRow()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::rowsInserted, [&] { heard.remove(2); });
    const QModelIndex group = heard.tree.index(100);
    QVERIFY(heard.tree->moveRows(group, 0, 2, group.parent(), 1));
    QCOMPARE(heard.tree.root()->rowCount(), 3);
    QCOMPARE(heard.tree.dump(), text("All processors(3)[G100[],1,3]"));
}

void TreeListenersTest::shouldStandARootThatGoesWithARow()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::rowsRemoved, [&] { heard.tree->clear(); });
    heard.tree->removeNode(testId(3));
    QCOMPARE(heard.tree->rowCount(), 0);
    QCOMPARE(heard.tree->getAllProcessorCount(), 0);
    heard.tree->initRoot();
    heard.once(&QAbstractItemModel::rowsInserted, [&] { heard.tree->clear(); });
    heard.tree->AppendProcessor(testProcessor(1));
    QCOMPARE(heard.tree->rowCount(), 0);
}

void TreeListenersTest::shouldKeepTheRootThatAListenerMade()
{
    HeardTree heard;
    heard.once(&QAbstractItemModel::modelReset, [&] { heard.tree->initRoot(); });
    heard.tree->clearToRoot();
    QCOMPARE(heard.tree->rowCount(), 1);
    QCOMPARE(heard.tree.dump(), text("All processors(0)[]"));
}

TSA_TEST_MAIN(TreeListenersTest)
#include "tst_treelisteners.moc"
