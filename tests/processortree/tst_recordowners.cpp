#include "tests/processortree/TestTree.h"

#include "processortree/model/ProcessorItem.h"
#include "tests/support/WarningTrap.h"

#include <QSignalBlocker>
#include <QTest>

#include <memory>
#include <utility>

namespace {
CRecordCell* cellOf(const QStandardItem* item)
{
    return recordHandle(item->data(NodeDataRole)).cell();
}

ProcessorNode named(quint32 n, const char* name)
{
    ProcessorNode processor = testProcessor(n);
    processor.name = text(name);
    return processor;
}

/// A tree with the processors 1 and 2.
struct TwoProcessors
{
    TwoProcessors()
    {
        tree->AppendProcessor(testProcessor(1));
        tree->AppendProcessor(testProcessor(2));
    }

    QStandardItem* item(quint32 n) { return tree->getItem(testId(n)); }

    /// Writes a record plainly into the row of `n`.
    void write(quint32 n, const char* name)
    {
        item(n)->setData(QVariant::fromValue(named(n, name)), NodeDataRole);
    }

    /// Returns whether that record has moved into a cell, which other threads find.
    bool isAdopted(quint32 n, const char* name)
    {
        CRecordCell* cell = cellOf(item(n));
        const auto found = tree->findRow(testId(n));
        return cell && cell->load().name == text(name) && found && found->record.cell() == cell;
    }

    /// Returns whether the row at `row` has a cell of its own, found by its identity, with the
    /// record that was processor 1's, and changes without it.
    bool isIndependent(int row)
    {
        const QStandardItem* copy = tree.root()->child(row);
        CRecordCell* cell = cellOf(copy);
        const auto found = tree->findRow(copy->data(UuidRole).toUuid());
        if (!cell || cell == cellOf(item(1)) || cell->load().name != text("1") || !found)
            return false;
        tree->updateProcessor(item(1), named(1, "changed"));
        return copy->data(NodeDataRole).value<ProcessorNode>().name == text("1")
               && (tree->getItem(copy->data(UuidRole).toUuid()) != copy
                   || found->record.cell() == cell);
    }

    Tree tree;
};

} // namespace

/// Each row owns its record, also after other code wrote a handle of another row into it.
class RecordOwnersTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldCopyTheRecordOfAClone();
    void shouldGiveAnInsertedCloneItsOwnRecord();
    void shouldGiveATakenCloneItsOwnRecord();
    void shouldGiveARowCopiedByAListenerItsOwnRecord();
    void shouldCopyTheRawDataOfAnotherRow();
    void shouldCopyTheItemDataOfAnotherRow();
    void shouldCopyTheRawDataBelowANewBranch();
    void shouldCopyTheRawDataOfARowWithoutAType();
    void shouldKeepTheRecordOfAMovedRow();
    void shouldAdoptARecordThatAListenerWrites();
    void shouldAdoptARecordWrittenAfterASilentUpdate();
    void shouldAdoptARecordWrittenBeforeTheType();
    void shouldAdoptRecordsBelowARowThatBecomesAGroup();
};

void RecordOwnersTest::shouldCopyTheRecordOfAClone()
{
    TwoProcessors two;
    const std::unique_ptr<QStandardItem> copy(two.item(1)->clone());
    QCOMPARE(copy->text(), text("1"));
    QCOMPARE(copy->data(UuidRole).toUuid(), testId(1));
    two.tree->updateProcessor(two.item(1), named(1, "changed"));
    QCOMPARE(copy->data(NodeDataRole).value<ProcessorNode>().name, text("1"));
    const std::unique_ptr<QStandardItem> group(CProcessorItem(NodeGroup).clone());
    QVERIFY(!group->data(NodeDataRole).isValid());
}

void RecordOwnersTest::shouldGiveAnInsertedCloneItsOwnRecord()
{
    TwoProcessors two;
    QStandardItem* copy = two.item(1)->clone();
    copy->setData(testId(9), UuidRole);
    two.tree.root()->appendRow(copy);
    QVERIFY(two.isIndependent(2));
}

void RecordOwnersTest::shouldGiveATakenCloneItsOwnRecord()
{
    TwoProcessors two;
    two.tree.root()->appendRow(two.item(1)->clone());
    const QList<QStandardItem*> taken = two.tree.root()->takeRow(2);
    two.tree.root()->insertRow(1, taken);
    QVERIFY(two.isIndependent(1));
}

void RecordOwnersTest::shouldGiveARowCopiedByAListenerItsOwnRecord()
{
    TwoProcessors two;
    QStandardItem* copy = nullptr;
    QObject::connect(&*two.tree, &QAbstractItemModel::rowsAboutToBeRemoved, &*two.tree, [&] {
        copy = new QStandardItem;
        for (const int role : {int(UuidRole), int(NodeTypeRole), int(NodeDataRole)})
            copy->setData(two.item(1)->data(role), role);
    });
    two.tree->removeNode(testId(2));
    QCOMPARE(cellOf(copy), cellOf(two.item(1)));
    two.tree.root()->appendRow(copy);
    QVERIFY(two.isIndependent(1));
}

void RecordOwnersTest::shouldCopyTheRawDataOfAnotherRow()
{
    TwoProcessors two;
    QVERIFY(two.tree->setData(two.tree.index(2), two.item(1)->data(NodeDataRole), NodeDataRole));
    QVERIFY(two.isIndependent(1));
}

void RecordOwnersTest::shouldCopyTheItemDataOfAnotherRow()
{
    TwoProcessors two;
    QMap<int, QVariant> data;
    data.insert(NodeDataRole, two.item(1)->data(NodeDataRole));
    QVERIFY(two.tree->setItemData(two.tree.index(2), data));
    QVERIFY(two.isIndependent(1));
}

void RecordOwnersTest::shouldCopyTheRawDataBelowANewBranch()
{
    TwoProcessors two;
    auto* branch = new QStandardItem(text("?"));
    auto* copy = new QStandardItem;
    copy->setData(two.item(1)->data(NodeDataRole), NodeDataRole);
    branch->appendRow(copy);
    two.tree.root()->appendRow(branch);
    QVERIFY(cellOf(copy));
    QVERIFY(cellOf(copy) != cellOf(two.item(1)));
}

void RecordOwnersTest::shouldCopyTheRawDataOfARowWithoutAType()
{
    TwoProcessors two;
    auto* copy = new QStandardItem(text("?"));
    two.tree.root()->appendRow(copy);
    copy->setData(two.item(1)->data(NodeDataRole), NodeDataRole);
    QVERIFY(cellOf(copy));
    QVERIFY(cellOf(copy) != cellOf(two.item(1)));
}

void RecordOwnersTest::shouldKeepTheRecordOfAMovedRow()
{
    TwoProcessors two;
    const CRecordCell* cell = cellOf(two.item(1));
    two.tree.root()->insertRow(1, two.tree.root()->takeRow(0));
    QCOMPARE(cellOf(two.item(1)), cell);
    QCOMPARE(two.tree->findRow(testId(1))->record.cell(), cell);
}

void RecordOwnersTest::shouldAdoptARecordThatAListenerWrites()
{
    TwoProcessors two;
    bool isFirst = true;
    QObject::connect(&*two.tree, &QAbstractItemModel::dataChanged, &*two.tree, [&] {
        if (std::exchange(isFirst, false))
            two.write(2, "plain");
    });
    two.tree->updateProcessor(two.item(1), named(1, "changed"));
    QVERIFY(two.isAdopted(2, "plain"));
}

void RecordOwnersTest::shouldAdoptARecordWrittenAfterASilentUpdate()
{
    TwoProcessors two;
    {
        const QSignalBlocker blocker(&*two.tree);
        two.tree->updateProcessor(two.item(1), named(1, "changed"));
    }
    two.write(2, "plain");
    QVERIFY(two.isAdopted(2, "plain"));
}

void RecordOwnersTest::shouldAdoptARecordWrittenBeforeTheType()
{
    TwoProcessors two;
    auto* item = new QStandardItem;
    two.tree.root()->appendRow(item);
    item->setData(testId(3), UuidRole);
    item->setData(QVariant::fromValue(named(3, "three")), NodeDataRole);
    QVERIFY(!cellOf(item));
    item->setData(QVariant::fromValue(NodeProcessor), NodeTypeRole);
    QVERIFY(cellOf(item));
    QCOMPARE(cellOf(item)->load().name, text("three"));
    QCOMPARE(two.tree->findRow(testId(3))->record.cell(), cellOf(item));
}

void RecordOwnersTest::shouldAdoptRecordsBelowARowThatBecomesAGroup()
{
    TwoProcessors two;
    auto* branch = new QStandardItem(text("?"));
    two.tree.root()->appendRow(branch);
    auto* item = new QStandardItem;
    branch->appendRow(item);
    item->setData(testId(3), UuidRole);
    item->setData(QVariant::fromValue(NodeProcessor), NodeTypeRole);
    item->setData(QVariant::fromValue(named(3, "three")), NodeDataRole);
    QVERIFY(!two.tree->findRow(testId(3)));
    branch->setData(QVariant::fromValue(NodeGroup), NodeTypeRole);
    QVERIFY(two.tree->findRow(testId(3)));
    QCOMPARE(two.tree->findRow(testId(3))->record.cell(), cellOf(item));
}

TSA_TEST_MAIN(RecordOwnersTest)
#include "tst_recordowners.moc"
