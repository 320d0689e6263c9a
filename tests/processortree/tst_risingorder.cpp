#include "tests/processortree/TestTree.h"
#include "tests/support/TestPanel.h"

#include "base/NodeType.h"
#include "processortree/model/ProcessorItem.h"
#include "tests/support/Seed.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <optional>
#include <random>

namespace {
constexpr quint32 kGroup = 5000;
constexpr int kSteps = 120;

std::optional<CRecordCell::Key> placedAt(const QStandardItem& parent, int row)
{
    const QStandardItem* item = parent.child(row);
    if (!item || nodeType(*item) != NodeProcessor)
        return std::nullopt;
    return placedKey(item->data(NodeDataRole));
}

bool precedes(const CRecordCell::Key& sibling, const ProcessorNode& added)
{
    if (sibling.ipAddress == kNoProcessorAddress)
        return false;
    if (added.ipAddress == kNoProcessorAddress)
        return true;
    if (sibling.reachedByIp && sibling.ipAddress != 0 && added.ipAddress != 0)
        return sibling.ipAddress <= added.ipAddress;
    return sibling.number < added.number;
}

/// Returns the row of `added`, found by a scan of all siblings from the last one.
int scannedRow(const QStandardItem& parent, const ProcessorNode& added)
{
    const int rows = parent.rowCount();
    if (!added.reachedByIp || rows == 0)
        return rows;
    if (rows == 1) {
        const auto only = placedAt(parent, 0);
        return only && only->ipAddress > added.ipAddress ? 0 : 1;
    }
    for (int row = rows - 1; row >= 0; --row) {
        const auto sibling = placedAt(parent, row);
        if (!sibling || precedes(*sibling, added))
            return row + 1;
    }
    return 0;
}

/// A tree with random changes, most of which keep the addresses rising.
class ChangingTree final
{
public:
    explicit ChangingTree(quint32 seed)
        : m_generator(seed)
    {
        m_tree->AppendGroup(testGroup(kGroup));
        // Some trees use all addresses, others only a few.
        m_oddities = below(3) == 0 ? 12 : 2;
    }

    /// What was done; `wrong` says where a row went instead of its place.
    QString step(QString& wrong)
    {
        switch (below(24)) {
        case 0:
            return removeOne();
        case 1:
            return removeByOutsiders();
        case 2:
            return rewriteCell();
        case 3:
            return rewriteRecord();
        case 4:
            return rewriteType();
        case 5:
            return insertByOutsiders();
        case 6:
            return update();
        case 7:
            return move();
        case 8:
            return below(4) == 0 ? startAnew() : sortRows();
        default:
            return append(wrong);
        }
    }

private:
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_generator); }
    bool isOdd() { return below(100) < m_oddities; }

    ProcessorNode processor(quint32 group)
    {
        ProcessorNode made = testIpProcessor(++m_last, static_cast<quint32>(below(40)) + 1, group);
        made.number = below(10);
        if (isOdd())
            made.ipAddress = 0;
        else if (below(5) == 0)
            made.ipAddress = kNoProcessorAddress;
        else if (below(8) == 0)
            made.ipAddress = 0xFFFFFFF0 + static_cast<quint32>(below(16));
        made.reachedByIp = !isOdd();
        return made;
    }

    quint32 anyGroup() { return below(2) == 0 ? 0 : kGroup; }
    QStandardItem* parent(quint32 group)
    {
        return group == 0 ? m_tree.root() : m_tree->getItem(testId(kGroup));
    }
    QStandardItem* anyRow()
    {
        QStandardItem* above = parent(anyGroup());
        if (!above || above->rowCount() == 0)
            return nullptr;
        QStandardItem* row = above->child(below(above->rowCount()));
        return row && nodeType(*row) == NodeProcessor ? row : nullptr;
    }

    QString append(QString& wrong)
    {
        const quint32 group = anyGroup();
        const ProcessorNode added = processor(group);
        const QStandardItem* above = parent(group);
        if (!above)
            return QStringLiteral("nothing");
        const QString before = m_tree.dump();
        const int expected = scannedRow(*above, added);
        m_tree->AppendProcessor(added);
        const int row = m_tree->getItem(added.id)->row();
        if (row != expected)
            wrong = QStringLiteral("%1 goes to row %2 instead of %3 of\n%4")
                        .arg(added.ipAddress)
                        .arg(row)
                        .arg(expected)
                        .arg(before);
        return QStringLiteral("append");
    }

    QString removeOne()
    {
        if (const QStandardItem* row = anyRow())
            m_tree->removeNode(row->data(UuidRole).toUuid());
        return QStringLiteral("remove");
    }

    QString removeByOutsiders()
    {
        QStandardItem* above = parent(anyGroup());
        if (above && above->rowCount() > 4)
            above->removeRows(1 + below(above->rowCount() - 3), 2);
        return QStringLiteral("remove from outside");
    }

    /// As the work thread does, without a signal.
    QString rewriteCell()
    {
        if (const QStandardItem* row = anyRow()) {
            CRecordCell& cell = *recordHandle(row->data(NodeDataRole)).cell();
            cell.replace(processor(0), cell.version());
        }
        return QStringLiteral("rewrite a cell");
    }

    QString rewriteRecord()
    {
        if (QStandardItem* row = anyRow())
            row->setData(QVariant::fromValue(processor(0)), NodeDataRole);
        return QStringLiteral("rewrite a record");
    }

    QString rewriteType()
    {
        if (QStandardItem* row = isOdd() ? anyRow() : nullptr)
            row->setData(QVariant(QStringLiteral("none")), NodeTypeRole);
        return QStringLiteral("rewrite a type");
    }

    QString insertByOutsiders()
    {
        QStandardItem* above = isOdd() ? parent(anyGroup()) : nullptr;
        if (above) {
            const ProcessorNode added = processor(0);
            above->insertRow(below(above->rowCount() + 1),
                             makeProcessorItem(added, CRecordHandle(added)));
        }
        return QStringLiteral("insert from outside");
    }

    QString update()
    {
        if (QStandardItem* row = anyRow()) {
            ProcessorNode changed = processor(anyGroup());
            changed.id = row->data(UuidRole).toUuid();
            m_tree->updateProcessor(row, changed);
        }
        return QStringLiteral("update");
    }

    QString move()
    {
        if (const QStandardItem* row = anyRow())
            m_tree->moveProcessors({row->index()}, below(2) == 0 ? QUuid() : testId(kGroup));
        return QStringLiteral("move");
    }

    QString startAnew()
    {
        m_tree->removeNode(testId(kGroup));
        m_tree->AppendGroup(testGroup(kGroup));
        return QStringLiteral("group anew");
    }

    QString sortRows()
    {
        if (isOdd() && m_tree.root()->rowCount() > 0)
            m_tree.root()->sortChildren(0, Qt::DescendingOrder);
        return QStringLiteral("sort");
    }

    Tree m_tree;
    std::mt19937 m_generator;
    quint32 m_last = 0;
    int m_oddities = 0; // per cent
};

} // namespace

class RisingOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldFindThePlaceThatAScanFinds();
    void shouldKeepItsOrderWhenTheWorkThreadBringsAnAddress();
    void shouldPlaceAMovedRowByItsPresentAddress();
    void shouldForgetRemovedParents();
};

void RisingOrderTest::shouldFindThePlaceThatAScanFinds()
{
    const TestPanel panel;
    for (const quint32 seed : seeds(60)) {
        ChangingTree tree(seed);
        QStringList done;
        for (int n = 0; n < kSteps; ++n) {
            QString wrong;
            done.append(tree.step(wrong));
            QVERIFY2(wrong.isEmpty(), QStringLiteral("TSA_SEED=%1, step %2: %3\n%4")
                                          .arg(seed)
                                          .arg(n)
                                          .arg(wrong, done.mid(n - 5).join(QLatin1String(", ")))
                                          .toUtf8()
                                          .constData());
        }
    }
}

void RisingOrderTest::shouldKeepItsOrderWhenTheWorkThreadBringsAnAddress()
{
    Tree tree;
    for (const quint32 n : {1U, 3U, 5U, 7U, 9U})
        tree->AppendProcessor(testIpProcessor(n, n));
    for (const auto& [n, address] : {std::pair(5U, 100U), std::pair(9U, 1U)}) {
        CRecordCell& cell = *recordHandle(tree->getItem(testId(n))->data(NodeDataRole)).cell();
        QVERIFY(cell.replace(testIpProcessor(n, address), cell.version()));
    }
    // A row that is about to move does not affect the places of rows that are added meanwhile.
    tree->AppendProcessor(testIpProcessor(20, 8));
    tree->AppendProcessor(testIpProcessor(21, 4));
    QCOMPARE(tree.dump(), text("All processors(7)[1,3,21,5,7,20,9]"));
    for (const quint32 n : {5U, 9U}) {
        QStandardItem* row = tree->getItem(testId(n));
        tree->updateProcessor(row, processorRecord(row->data(NodeDataRole)));
    }
    QCOMPARE(tree.dump(), text("All processors(7)[1,9,3,21,7,20,5]"));
}

void RisingOrderTest::shouldPlaceAMovedRowByItsPresentAddress()
{
    Tree tree;
    tree->AppendGroup(testGroup(100));
    for (const quint32 n : {2U, 4U, 6U})
        tree->AppendProcessor(testIpProcessor(n, n));
    tree->AppendProcessor(testIpProcessor(9, 9, 100));
    CRecordCell& cell = *recordHandle(tree->getItem(testId(9))->data(NodeDataRole)).cell();
    QVERIFY(cell.replace(testIpProcessor(9, 3, 100), cell.version()));
    QCOMPARE(tree->moveProcessors({tree->getItem(testId(9))->index()}, QUuid()).size(), 1);
    QCOMPARE(tree.dump(), text("All processors(4)[G100[],2,9,4,6]"));
    tree->AppendProcessor(testIpProcessor(5, 5));
    QCOMPARE(tree.dump(), text("All processors(5)[G100[],2,9,4,5,6]"));
}

void RisingOrderTest::shouldForgetRemovedParents()
{
    CRisingOrder order;
    auto parent = std::make_unique<QStandardItem>();
    auto* group = new QStandardItem;
    parent->appendRow(group);
    const auto add = [](QStandardItem& above, quint32 n, quint32 address) {
        const ProcessorNode added = testIpProcessor(n, address);
        above.appendRow(makeProcessorItem(added, CRecordHandle(added)));
    };
    for (const quint32 n : {1U, 2U, 3U})
        add(*group, n, n);
    QCOMPARE(order.insertionRow(*group, recordKey(testIpProcessor(9, 2))), 2);
    order.onAboutToBeRemoved(*parent, 0, 0);
    // Another parent at the same place in memory, whose rows do not rise.
    group->removeRows(0, 3);
    for (const quint32 address : {9U, 1U, 8U})
        add(*group, address, address);
    QCOMPARE(order.insertionRow(*group, recordKey(testIpProcessor(9, 5))), 2);
}

TSA_TEST_MAIN(RisingOrderTest)
#include "tst_risingorder.moc"
