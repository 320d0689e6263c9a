#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItem>
#include <QTest>

#include <memory>

namespace {
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QString numbersOf(const QList<ProcessorNode>& processors)
{
    QStringList names;
    for (const ProcessorNode& processor : processors)
        names.append(processor.name);
    return names.join(QLatin1Char(','));
}

} // namespace

class TreeMovesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void shouldMoveARowBetweenParents();
    void shouldTurnABlockOfRowsRound();
    void shouldMoveNoMoreRowsThanThereAre();
    void shouldAcceptAMoveOfNothing();
    void shouldRefuseMovesThatMakeNoSense_data();
    void shouldRefuseMovesThatMakeNoSense();
    void shouldRefuseToMoveARowIntoItself();
    void shouldSignalMovesAsRemovalsAndInsertions();
    void shouldMoveProcessorsToAGroup();
    void shouldMoveProcessorsToTheRoot();
    void shouldPlaceMovedProcessorsByAddress();
    void shouldLeaveProcessorsThatAreThereAlready();
    void shouldChangeNothingForAnUnknownTarget();
    void shouldMoveProcessorsAlone();
    void shouldMoveToNoProcessor();
    void shouldUpdateTheRecordsOfMovedProcessors();
    void shouldUpdateTheMembersOfBothGroups();
    void shouldReportTheNewMembership();
    void shouldReportNothingWhenNothingMoved();
    void shouldLetTheHostChangeTheTreeWhileItIsTold();
    void shouldKeepRowsFindableForThreads();

private:
    QString dump() const { return dumpTree(m_panel->model()); }
    CProcessorTreeModel& model() const { return m_panel->model(); }
    QModelIndex index(quint32 n) const { return model().getItem(testId(n))->index(); }
    QModelIndex root() const { return model().index(0, 0); }
    ProcessorNode processor(quint32 n) const { return index(n).data(259).value<ProcessorNode>(); }
    ProcessorGroupNode group(quint32 n) const
    {
        return index(n).data(259).value<ProcessorGroupNode>();
    }

    std::unique_ptr<TestPanel> m_panel;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TreeMovesTest::init()
{
    m_panel = std::make_unique<TestPanel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(&m_panel->model());
    ProcessorGroupNode a = testGroup(100, text("A"));
    a.processors = {testProcessor(1, 100), testProcessor(2, 100), testProcessor(3, 100)};
    model().AppendGroup(a);
    model().AppendGroup(testGroup(101, text("B")));
    for (const quint32 n : {1U, 2U, 3U})
        model().AppendProcessor(testProcessor(n, 100));
    model().AppendProcessor(testProcessor(4, 101));
    model().AppendProcessor(testProcessor(5));
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3],B[4],5]"));
}

void TreeMovesTest::cleanup()
{
    m_tester.reset();
    m_panel.reset();
}

void TreeMovesTest::shouldMoveARowBetweenParents()
{
    QVERIFY(model().moveRows(index(100), 1, 1, index(101), 1));
    QCOMPARE(dump(), text("All processors(5)[A[1,3],B[4,2],5]"));
    QVERIFY(model().moveRows(index(101), 0, 1, root(), 2));
    QCOMPARE(dump(), text("All processors(5)[A[1,3],B[2],4,5]"));
}

void TreeMovesTest::shouldTurnABlockOfRowsRound()
{
    QVERIFY(model().moveRows(index(100), 0, 2, index(101), 0));
    QCOMPARE(dump(), text("All processors(5)[A[3],B[2,1,4],5]"));
}

void TreeMovesTest::shouldMoveNoMoreRowsThanThereAre()
{
    QVERIFY(model().moveRows(index(100), 1, 50, index(101), 1));
    QCOMPARE(dump(), text("All processors(5)[A[1],B[4,3,2],5]"));
}

void TreeMovesTest::shouldAcceptAMoveOfNothing()
{
    QVERIFY(model().moveRows(index(100), 0, 0, index(101), 0));
    QVERIFY(model().moveRows(index(100), 0, -3, index(101), 0));
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3],B[4],5]"));
}

void TreeMovesTest::shouldRefuseMovesThatMakeNoSense_data()
{
    QTest::addColumn<int>("from"); // 0: the root; -1: no index; -2: another model's
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("destination");
    QTest::newRow("within one parent") << 100 << 0 << 100 << 2;
    QTest::newRow("within the root") << 0 << 2 << 0 << 0;
    QTest::newRow("no source") << -1 << 0 << 101 << 0;
    QTest::newRow("no destination") << 100 << 0 << -1 << 0;
    QTest::newRow("neither") << -1 << 0 << -1 << 0;
    QTest::newRow("negative row") << 100 << -1 << 101 << 0;
    QTest::newRow("negative destination") << 100 << 0 << 101 << -1;
    QTest::newRow("row behind the last") << 100 << 3 << 101 << 0;
    QTest::newRow("row of an empty parent") << 5 << 0 << 101 << 0;
    QTest::newRow("destination past the end") << 100 << 0 << 101 << 2;
    QTest::newRow("source of another model") << -2 << 0 << 101 << 0;
    QTest::newRow("destination of another model") << 100 << 0 << -2 << 0;
}

void TreeMovesTest::shouldRefuseMovesThatMakeNoSense()
{
    QFETCH(int, from);
    QFETCH(int, row);
    QFETCH(int, to);
    QFETCH(int, destination);
    CProcessorTreeModel other;
    other.initRoot();
    other.AppendProcessor(testProcessor(1));
    const auto pick = [&](int n) {
        if (n == -2)
            return other.index(0, 0);
        if (n == -1)
            return QModelIndex();
        return n == 0 ? root() : index(static_cast<quint32>(n));
    };
    QVERIFY(!model().moveRows(pick(from), row, 1, pick(to), destination));
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3],B[4],5]"));
    QCOMPARE(dumpTree(other), text("All processors(1)[1]"));
}

void TreeMovesTest::shouldRefuseToMoveARowIntoItself()
{
    QVERIFY(!model().moveRows(root(), 0, 1, index(100), 0));
    QVERIFY(!model().moveRows(root(), 0, 2, index(101), 0));
    QVERIFY(!model().moveRows(root(), 0, 1, index(1), 0));
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3],B[4],5]"));
}

void TreeMovesTest::shouldSignalMovesAsRemovalsAndInsertions()
{
    const QSignalSpy inserted(&model(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy removed(&model(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy moved(&model(), &QAbstractItemModel::rowsMoved);
    const QSignalSpy reset(&model(), &QAbstractItemModel::modelReset);
    QVERIFY(model().moveRows(index(100), 0, 2, index(101), 0));
    QCOMPARE(inserted.count(), 2);
    QCOMPARE(removed.count(), 2);
    QCOMPARE(moved.count(), 0);
    QCOMPARE(reset.count(), 0);
}

void TreeMovesTest::shouldMoveProcessorsToAGroup()
{
    const auto moved = model().moveProcessors({index(5), index(1)}, testId(101));
    QCOMPARE(dump(), text("All processors(5)[A[2,3],B[4,5,1]]"));
    QCOMPARE(moved.size(), 2);
    QCOMPARE(QModelIndex(moved.at(0)), index(5));
    QCOMPARE(QModelIndex(moved.at(1)), index(1));
}

void TreeMovesTest::shouldMoveProcessorsToTheRoot()
{
    const auto moved = model().moveProcessors({index(2), index(4)}, QUuid());
    QCOMPARE(dump(), text("All processors(5)[A[1,3],B[],5,2,4]"));
    QCOMPARE(moved.size(), 2);
}

void TreeMovesTest::shouldPlaceMovedProcessorsByAddress()
{
    model().AppendGroup(testGroup(102, text("C")));
    for (const quint32 n : {10U, 20U, 30U})
        model().AppendProcessor(testIpProcessor(n, n, 102));
    model().AppendProcessor(testIpProcessor(15, 15));
    model().AppendProcessor(testIpProcessor(40, 40));
    model().moveProcessors({index(40), index(15)}, testId(102));
    QCOMPARE(dump(), text("All processors(10)[A[1,2,3],B[4],C[10,15,20,30,40],5]"));
    model().moveProcessors({index(30), index(10)}, QUuid());
    QCOMPARE(dump(), text("All processors(10)[A[1,2,3],B[4],C[15,20,40],10,30,5]"));
}

void TreeMovesTest::shouldLeaveProcessorsThatAreThereAlready()
{
    const auto moved = model().moveProcessors({index(1), index(5), index(3)}, testId(100));
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3,5],B[4]]"));
    QCOMPARE(moved.size(), 1);
    QCOMPARE(QModelIndex(moved.at(0)), index(5));
    QCOMPARE(model().moveProcessors({index(4), index(4)}, testId(100)).size(), 1);
}

void TreeMovesTest::shouldChangeNothingForAnUnknownTarget()
{
    QVERIFY(model().moveProcessors({index(1)}, testId(999)).isEmpty());
    QVERIFY(model().moveProcessors({}, testId(101)).isEmpty());
    QVERIFY(model().moveProcessors({QPersistentModelIndex()}, testId(101)).isEmpty());
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3],B[4],5]"));
    QVERIFY(m_panel->host().memberships.isEmpty());
}

void TreeMovesTest::shouldMoveProcessorsAlone()
{
    const auto moved = model().moveProcessors({index(101), root(), index(5)}, testId(100));
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3,5],B[4]]"));
    QCOMPARE(moved.size(), 1);
}

void TreeMovesTest::shouldMoveToNoProcessor()
{
    QVERIFY(model().moveProcessors({index(1)}, testId(5)).isEmpty());
    QCOMPARE(dump(), text("All processors(5)[A[1,2,3],B[4],5]"));
    QCOMPARE(model().getAllProcessorCount(), 5);
}

void TreeMovesTest::shouldUpdateTheRecordsOfMovedProcessors()
{
    model().moveProcessors({index(1), index(5)}, testId(101));
    QCOMPARE(processor(1).groupId, testId(101));
    QCOMPARE(processor(5).groupId, testId(101));
    model().moveProcessors({index(1)}, QUuid());
    QVERIFY(processor(1).groupId.isNull());
    QCOMPARE(processor(2).groupId, testId(100));
}

void TreeMovesTest::shouldUpdateTheMembersOfBothGroups()
{
    QCOMPARE(numbersOf(group(100).processors), text("1,2,3"));
    model().moveProcessors({index(2)}, testId(101));
    QCOMPARE(numbersOf(group(100).processors), text("1,3"));
    // Processor 4 never was on B's list; the moved one comes as near to its row as the list allows.
    QCOMPARE(numbersOf(group(101).processors), text("2"));
    QCOMPARE(group(101).processors.at(0).groupId, testId(101));
    model().moveProcessors({index(5)}, testId(101));
    QCOMPARE(numbersOf(group(101).processors), text("2,5"));
    model().moveProcessors({index(2)}, QUuid());
    QCOMPARE(numbersOf(group(101).processors), text("5"));
    QCOMPARE(group(101).name, text("B"));
    // Where rows have an order by address, the list follows.
    for (const quint32 n : {10U, 30U, 20U}) {
        model().AppendProcessor(testIpProcessor(n, n));
        model().moveProcessors({index(n)}, testId(100));
    }
    QCOMPARE(dump(), text("All processors(8)[A[10,20,30,1,3],B[4,5],2]"));
    QCOMPARE(numbersOf(group(100).processors), text("10,20,30,1,3"));
}

void TreeMovesTest::shouldReportTheNewMembership()
{
    model().moveProcessors({index(3), index(5), index(4)}, testId(101));
    const auto& told = m_panel->host().memberships;
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).groupId, testId(101));
    QCOMPARE(told.at(0).group.id, testId(101));
    QCOMPARE(told.at(0).group.name, text("B"));
    QCOMPARE(told.at(0).processors, (QList<QUuid>{testId(3), testId(5)}));

    model().moveProcessors({index(3)}, QUuid());
    QCOMPARE(told.size(), 2);
    QVERIFY(told.at(1).groupId.isNull());
    QVERIFY(told.at(1).group.id.isNull() && told.at(1).group.name.isEmpty());
    QCOMPARE(told.at(1).processors, QList<QUuid>{testId(3)});
}

void TreeMovesTest::shouldReportNothingWhenNothingMoved()
{
    model().moveProcessors({index(1)}, testId(100));
    QVERIFY(m_panel->host().memberships.isEmpty());
    m_panel->area().m_controlHandler.reset();
    QCOMPARE(model().moveProcessors({index(1)}, testId(101)).size(), 1);
    QCOMPARE(dump(), text("All processors(5)[A[2,3],B[4,1],5]"));
}

void TreeMovesTest::shouldLetTheHostChangeTheTreeWhileItIsTold()
{
    m_panel->host().inside = [&](const QString& name) {
        if (name == text("SetProcessorGroup")) {
            m_panel->host().inside = {};
            model().removeNodes({testId(1), testId(100)});
        }
    };
    model().removeNode(testId(100));
    QCOMPARE(dump(), text("All processors(4)[B[4],5,3,2]"));
}

void TreeMovesTest::shouldKeepRowsFindableForThreads()
{
    bool found = true;
    const auto look = [&] { found = found && model().findRow(testId(1)).has_value(); };
    connect(&model(), &QAbstractItemModel::rowsRemoved, this, look);
    connect(&model(), &QAbstractItemModel::rowsInserted, this, look);
    const QModelIndex index1 = index(1);
    model().moveProcessors({index1}, testId(101));
    QVERIFY(found);
    disconnect(&model(), nullptr, this, nullptr);
    model().removeNode(testId(1));
    QVERIFY(!model().findRow(testId(1)));
}

TSA_TEST_MAIN(TreeMovesTest)
#include "tst_treemoves.moc"
