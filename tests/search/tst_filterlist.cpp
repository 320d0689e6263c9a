// The list of results: its order, its deviations from a regular model, its signals and persistent
// indexes.

#include "processortree/model/ProcessorItem.h"
#include "tests/search/SearchTree.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QIdentityProxyModel>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

namespace {
/// The list without children of its rows.
///
/// A model tester rejects two properties of the list. Every row counts the whole list as its
/// children, but has no indexes for them. And the list changes without a signal unless rows were
/// inserted or removed; the tester does not notice this.
class FlatList final : public QIdentityProxyModel
{
public:
    explicit FlatList(CProcessorFilterModel& list) { setSourceModel(&list); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::rowCount(parent);
    }
};

} // namespace

class FilterListTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldListNoGroupsAndNoRoot();
    void shouldListByNumberAcrossGroups();
    void shouldListEqualNumbersInTheOrderOfTheTree();
    void shouldLeaveOutRowsWithChildren();
    void shouldSkipRowsWithoutAType();
    void shouldListAnyTree();
    void shouldCountAllRowsForEveryParent();
    void shouldReturnIndexesWithoutAParentOnly();
    void shouldBeEmptyWithoutASource();
    void shouldIgnoreANullSource();
    void shouldDisconnectFromAFormerSource();
    void shouldSurviveItsSource();
    void shouldReturnTheDataOfTheTree();
    void shouldMapBothWays();
    void shouldResetWhenRowsAreInserted();
    void shouldResetWhenRowsAreRemoved();
    void shouldEmitForUnreadRows();
    void shouldResetOncePerText();
    void shouldNotListARowBeingRemoved();
    void shouldEmitNoSignalForOtherChanges();
    void shouldPassTheModelTester();
    void shouldMoveTheCurrentIndexToItsProcessor();
    void shouldClearTheCurrentIndexOfARemovedRow_data();
    void shouldClearTheCurrentIndexOfARemovedRow();
};

void FilterListTest::shouldListNoGroupsAndNoRoot()
{
    SearchTree search;
    search.addGroup(kGroup, QStringLiteral("All left"));
    search.addByNumber(1, QStringLiteral("all"), 0, kGroup);
    QCOMPARE(search.found(QStringLiteral("all")), QStringLiteral("all"));
    QCOMPARE(search.found(QStringLiteral("all l")), QString());
}

void FilterListTest::shouldListByNumberAcrossGroups()
{
    SearchTree search;
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addGroup(kOtherGroup, QStringLiteral("Right"));
    search.addByNumber(1, QStringLiteral("n5"), 5, kGroup);
    search.addByNumber(2, QStringLiteral("n1"), 1, kGroup);
    search.addByNumber(3, QStringLiteral("n3"), 3, kOtherGroup);
    search.addByNumber(4, QStringLiteral("n2"), 2);
    search.addByAddress(5, QStringLiteral("n4"), 0x0A000001, 4, kOtherGroup);
    search.addByNumber(6, QStringLiteral("n-1"), -1);
    QCOMPARE(search.found(QStringLiteral("N")), QStringLiteral("n-1,n1,n2,n3,n4,n5"));
}

void FilterListTest::shouldListEqualNumbersInTheOrderOfTheTree()
{
    SearchTree search;
    QStringList expected;
    for (quint32 id = 1; id <= 60; ++id) {
        search.addByNumber(id, QStringLiteral("n%1").arg(id), id <= 30 ? 7 : 3);
        expected.append(QStringLiteral("n%1").arg(id));
    }
    expected = expected.mid(30) + expected.mid(0, 30);
    QCOMPARE(search.found(QStringLiteral("n")), expected.join(QLatin1Char(',')));
}

void FilterListTest::shouldLeaveOutRowsWithChildren()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("node"), 0);
    search.item(1)->appendRow(new QStandardItem(QStringLiteral("note")));
    QCOMPARE(search.found(QStringLiteral("no")), QString());
    QCOMPARE(search.found(QStringLiteral("nod")), QStringLiteral("node"));
}

void FilterListTest::shouldSkipRowsWithoutAType()
{
    SearchTree search;
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addByNumber(1, QStringLiteral("mixer"), 0, kGroup);
    search.addByNumber(2, QStringLiteral("mast"), 1);
    search.item(2)->setData(QStringLiteral("no type"), NodeTypeRole);
    search.item(kGroup)->setData(QVariant(), NodeTypeRole);
    QCOMPARE(search.found(QStringLiteral("m")), QStringLiteral("mixer"));
}

void FilterListTest::shouldListAnyTree()
{
    QStandardItemModel tree;
    auto* group = new CProcessorItem(NodeGroup);
    tree.appendRow(group);
    tree.appendRow(new QStandardItem(QStringLiteral("no type")));
    for (quint32 id = 1; id <= 3; ++id) {
        auto* item = new CProcessorItem(NodeProcessor);
        item->setText(QStringLiteral("n%1").arg(id));
        item->setData(QVariant::fromValue(testProcessor(10 - id)), NodeDataRole);
        group->appendRow(item);
    }
    CProcessorFilterModel list;
    list.setSourceModel(&tree);
    QCOMPARE(list.rowCount(), 3);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(list.mapToSource(list.index(row, 0)), group->child(2 - row)->index());
}

void FilterListTest::shouldCountAllRowsForEveryParent()
{
    SearchTree search;
    for (quint32 id = 1; id <= 3; ++id)
        search.addByNumber(id, QStringLiteral("n"), 0);
    search.found(QStringLiteral("n"));
    QCOMPARE(search.list().rowCount(), 3);
    QCOMPARE(search.list().rowCount(search.list().index(0, 0)), 3);
    QCOMPARE(search.list().columnCount(search.list().index(0, 0)), 1);
}

void FilterListTest::shouldReturnIndexesWithoutAParentOnly()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("n"), 0);
    search.found(QStringLiteral("n"));
    const CProcessorFilterModel& list = search.list();
    const QModelIndex top = list.index(0, 0);
    QVERIFY(top.isValid());
    QCOMPARE(top.internalPointer(), nullptr);
    QVERIFY(!list.parent(top).isValid());
    QVERIFY(!list.index(0, 0, top).isValid());
    QVERIFY(!list.index(-1, 0).isValid());
    QVERIFY(!list.index(0, -1).isValid());
    QVERIFY(!list.index(0, 1).isValid());
    const QModelIndex beyond = list.index(7, 0);
    QCOMPARE(beyond.row(), 7);
    QVERIFY(!list.mapToSource(beyond).isValid());
    QVERIFY(!list.data(beyond).isValid());
    QCOMPARE(list.flags(beyond), Qt::NoItemFlags);
}

void FilterListTest::shouldBeEmptyWithoutASource()
{
    CProcessorFilterModel list;
    QCOMPARE(list.rowCount(), 0);
    QCOMPARE(list.columnCount(), 0);
    QVERIFY(!list.index(0, 0).isValid());
    QVERIFY(!list.data(QModelIndex()).isValid());
    QCOMPARE(list.flags(QModelIndex()), Qt::NoItemFlags);
    QVERIFY(!list.mapToSource(QModelIndex()).isValid());
    QVERIFY(!list.mapFromSource(QModelIndex()).isValid());
    list.invalidate();
    QCOMPARE(list.rowCount(), 0);
}

void FilterListTest::shouldIgnoreANullSource()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("n"), 0);
    search.list().setSourceModel(nullptr);
    QCOMPARE(search.list().sourceModel(), &search.filter());
    QCOMPARE(search.found(QStringLiteral("n")), QStringLiteral("n"));
}

void FilterListTest::shouldDisconnectFromAFormerSource()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("n"), 0);
    search.found(QStringLiteral("n"));
    SearchTree other;
    other.addByNumber(2, QStringLiteral("other"), 0);
    other.found(QStringLiteral("o"));
    search.list().setSourceModel(&other.filter());
    QCOMPARE(search.listed(), QStringLiteral("other"));
    const QSignalSpy gone(&search.list(), &CProcessorFilterModel::rowsRemed);
    search.filter().setFilterText(QString());
    QCOMPARE(gone.count(), 0);
    other.filter().setFilterText(QString());
    QCOMPARE(gone.count(), 1);
}

void FilterListTest::shouldSurviveItsSource()
{
    SearchTree search;
    QPersistentModelIndex held;
    {
        SearchTree other;
        other.addByNumber(2, QStringLiteral("other"), 0);
        other.found(QStringLiteral("o"));
        search.list().setSourceModel(&other.filter());
        QCOMPARE(search.list().rowCount(), 1);
        held = search.list().index(0, 0);
    }
    QCOMPARE(search.list().rowCount(), 0);
    QCOMPARE(search.list().columnCount(), 0);
    QVERIFY(!search.list().mapToSource(held).isValid());
}

void FilterListTest::shouldReturnTheDataOfTheTree()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("one"), 4);
    search.found(QStringLiteral("one"));
    const QModelIndex index = search.list().index(0, 0);
    const QModelIndex inTree = search.item(1)->index();
    QCOMPARE(index.data(UuidRole).toUuid(), testId(1));
    QCOMPARE(index.data(NodeDataRole).value<ProcessorNode>().number, 4);
    QCOMPARE(index.data(Qt::SizeHintRole), inTree.data(Qt::SizeHintRole));
    QCOMPARE(index.flags(), inTree.flags());
    search.item(1)->setEnabled(false);
    QCOMPARE(index.flags(), inTree.flags());
}

void FilterListTest::shouldMapBothWays()
{
    SearchTree search;
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addByNumber(1, QStringLiteral("n1"), 5, kGroup);
    search.addByNumber(2, QStringLiteral("n2"), 3);
    search.addByNumber(3, QStringLiteral("other"), 4);
    search.found(QStringLiteral("n"));
    QCOMPARE(search.rowOf(1), 1);
    QCOMPARE(search.rowOf(2), 0);
    QCOMPARE(search.rowOf(3), -1);
    QCOMPARE(search.rowOf(kGroup), -1);
    for (int row = 0; row < 2; ++row) {
        const QModelIndex index = search.list().index(row, 0);
        const QModelIndex source = search.list().mapToSource(index);
        QCOMPARE(source.model(), &search.filter());
        QCOMPARE(search.list().mapFromSource(source), index);
    }
}

void FilterListTest::shouldResetWhenRowsAreInserted()
{
    SearchTree search;
    QStringList heard;
    QString atTheEnd;
    QObject::connect(&search.list(), &QAbstractItemModel::modelAboutToBeReset, this,
                     [&] { heard.append(QStringLiteral("about")); });
    QObject::connect(&search.list(), &QAbstractItemModel::modelReset, this,
                     [&] { heard.append(QStringLiteral("reset")); });
    QObject::connect(&search.list(), &CProcessorFilterModel::rowsAdded, this, [&] {
        heard.append(QStringLiteral("added"));
        atTheEnd = search.listed();
    });
    search.addByNumber(1, QStringLiteral("n1"), 5);
    QCOMPARE(heard, QStringList());
    search.filter().setFilterText(QStringLiteral("n1"));
    QCOMPARE(heard.join(QLatin1Char(',')), QStringLiteral("about,reset,added"));
    QCOMPARE(atTheEnd, QStringLiteral("n1"));
    search.addByNumber(2, QStringLiteral("n12"), 4);
    QCOMPARE(heard.join(QLatin1Char(',')), QStringLiteral("about,reset,added,about,reset,added"));
    QCOMPARE(atTheEnd, QStringLiteral("n12,n1"));
    disconnect(&search.list(), nullptr, this, nullptr);
}

void FilterListTest::shouldResetWhenRowsAreRemoved()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("n1"), 5);
    search.addByNumber(2, QStringLiteral("n2"), 5);
    search.found(QStringLiteral("n"));
    const QSignalSpy reset(&search.list(), &QAbstractItemModel::modelReset);
    const QSignalSpy gone(&search.list(), &CProcessorFilterModel::rowsRemed);
    const QSignalSpy came(&search.list(), &CProcessorFilterModel::rowsAdded);
    search.tree().removeNode(testId(1));
    QCOMPARE(reset.count(), 1);
    QCOMPARE(gone.count(), 1);
    QCOMPARE(search.listed(), QStringLiteral("n2"));
    search.tree().setData(search.item(2)->index(), QStringLiteral("other"));
    QVERIFY(gone.count() > 1);
    QCOMPARE(reset.count(), gone.count());
    QCOMPARE(search.listed(), QString());
    QCOMPARE(came.count(), 0);
}

void FilterListTest::shouldEmitForUnreadRows()
{
    SearchTree search;
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addByNumber(1, QStringLiteral("ab"), 0, kGroup);
    search.addByNumber(2, QStringLiteral("ac"), 1, kGroup);
    const QSignalSpy came(&search.list(), &CProcessorFilterModel::rowsAdded);
    const QSignalSpy gone(&search.list(), &CProcessorFilterModel::rowsRemed);
    search.filter().setFilterText(QStringLiteral("a"));
    QCOMPARE(came.count(), 1);
    search.filter().setFilterText(QStringLiteral("ab"));
    QCOMPARE(gone.count(), 1);
    search.filter().setFilterText(QStringLiteral("a"));
    QCOMPARE(came.count(), 2);
    QCOMPARE(search.listed(), QStringLiteral("ab,ac"));
}

void FilterListTest::shouldResetOncePerText()
{
    SearchTree search;
    for (quint32 id = 1; id <= 40; ++id)
        search.addByNumber(id, id % 2 ? QStringLiteral("stage") : QStringLiteral("stand"), 6);
    search.found(QStringLiteral("sta"));
    const QSignalSpy reset(&search.list(), &QAbstractItemModel::modelReset);
    const QSignalSpy gone(&search.list(), &CProcessorFilterModel::rowsRemed);
    const QSignalSpy came(&search.list(), &CProcessorFilterModel::rowsAdded);
    search.filter().setFilterText(QStringLiteral("stag")); // removes rows at twenty places
    QCOMPARE(reset.count(), 1);
    QCOMPARE(gone.count(), 1);
    QCOMPARE(came.count(), 0);
    search.filter().setFilterText(QStringLiteral("stan"));
    QCOMPARE(reset.count(), 2);
    QCOMPARE(gone.count(), 2);
    QCOMPARE(came.count(), 1);
    search.filter().setFilterText(QStringLiteral("stand"));
    QCOMPARE(reset.count(), 2);
    QCOMPARE(search.list().rowCount(), 20);
}

/// The item of a removed row is destroyed before the last receiver of rowsRemoved() is called.
void FilterListTest::shouldNotListARowBeingRemoved()
{
    CProcessorTreeModel tree;
    CProcessorFilterProxyModel filter;
    CProcessorFilterModel list;
    QStringList read;
    const auto readList = [&] {
        for (int row = 0; row < list.rowCount(); ++row)
            read.append(list.index(row, 0).data().toString());
    };
    const auto early = connect(&tree, &QAbstractItemModel::rowsRemoved, this, readList);
    tree.initRoot();
    filter.setSourceModel(&tree);
    list.setSourceModel(&filter);
    tree.AppendGroup(testGroup(kGroup));
    for (quint32 id = 1; id <= 3; ++id) {
        ProcessorNode processor = testProcessor(id, id == 3 ? 0 : kGroup);
        processor.name = QStringLiteral("P%1").arg(id);
        tree.AppendProcessor(processor);
    }
    filter.setFilterText(QStringLiteral("p"));
    QCOMPARE(list.rowCount(), 3);
    const auto late = connect(&tree, &QAbstractItemModel::rowsAboutToBeRemoved, this, readList);
    tree.removeAllGroups();
    QCOMPARE(read.size(), 2);
    QCOMPARE(read.at(0), read.at(1));
    QCOMPARE(list.rowCount(), 1);
    disconnect(early);
    disconnect(late);
}

void FilterListTest::shouldEmitNoSignalForOtherChanges()
{
    const TestPanel panel;
    SearchTree search;
    search.addByNumber(1, QStringLiteral("n1"), 1);
    search.addByNumber(2, QStringLiteral("n2"), 2);
    QCOMPARE(search.found(QStringLiteral("n")), QStringLiteral("n1,n2"));
    int signalCount = 0;
    const auto count = [&] { ++signalCount; };
    QObject::connect(&search.list(), &QAbstractItemModel::modelReset, this, count);
    QObject::connect(&search.list(), &QAbstractItemModel::layoutChanged, this, count);
    QObject::connect(&search.list(), &QAbstractItemModel::dataChanged, this, count);
    QObject::connect(&search.list(), &CProcessorFilterModel::rowsAdded, this, count);
    QObject::connect(&search.list(), &CProcessorFilterModel::rowsRemed, this, count);
    search.renumber(1, 3);
    QCOMPARE(search.listed(), QStringLiteral("n2,n1"));
    search.item(1)->setData(QVariant::fromValue(NodeGroup), NodeTypeRole);
    QCOMPARE(search.listed(), QStringLiteral("n2"));
    search.tree().sort(0, Qt::DescendingOrder);
    QCOMPARE(search.listed(), QStringLiteral("n2"));
    search.list().invalidate();
    QCOMPARE(search.listed(), QStringLiteral("n2"));
    search.tree().reset();
    QCOMPARE(search.listed(), QString());
    QCOMPARE(signalCount, 0);
    disconnect(&search.list(), nullptr, this, nullptr);
}

void FilterListTest::shouldPassTheModelTester()
{
    SearchTree search;
    FlatList flat(search.list());
    const QAbstractItemModelTester tester(&flat);
    search.addGroup(kGroup, QStringLiteral("Left"));
    for (quint32 id = 1; id <= 20; ++id)
        search.addByNumber(id, QStringLiteral("n%1").arg(id), int(id * 7 % 20),
                           id % 2 ? kGroup : 0);
    for (const char* text : {"n", "n1", "1", "", "2", "nowhere", "n"})
        search.found(QLatin1String(text));
    for (quint32 id = 1; id <= 20; ++id) {
        search.tree().removeNode(testId(id));
        QCOMPARE(flat.rowCount(), 20 - int(id));
    }
}

void FilterListTest::shouldMoveTheCurrentIndexToItsProcessor()
{
    SearchTree search;
    QListView view;
    view.setModel(&search.list());
    for (quint32 id = 1; id <= 3; ++id)
        search.addByNumber(id, QStringLiteral("n%1").arg(id), int(id));
    search.found(QStringLiteral("n"));
    view.setCurrentIndex(search.list().index(0, 0));
    search.renumber(1, 9);
    QCOMPARE(search.listed(), QStringLiteral("n2,n3,n1"));
    QCOMPARE(view.currentIndex().row(), 2);
    QCOMPARE(view.currentIndex().data().toString(), QStringLiteral("n1"));
    QCOMPARE(view.selectionModel()->selectedIndexes().size(), 1);
    QCOMPARE(view.selectionModel()->selectedIndexes().constFirst(), view.currentIndex());
}

void FilterListTest::shouldClearTheCurrentIndexOfARemovedRow_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("another text") << 0;
    QTest::newRow("no text") << 1;
    QTest::newRow("renamed") << 2;
    QTest::newRow("removed") << 3;
    QTest::newRow("all removed") << 4;
    QTest::newRow("tree read anew") << 5;
    QTest::newRow("no processor any more") << 6;
    QTest::newRow("another tree") << 7;
}

void FilterListTest::shouldClearTheCurrentIndexOfARemovedRow()
{
    const TestPanel panel;
    QFETCH(int, change);
    SearchTree other;
    SearchTree search;
    QListView view;
    view.setModel(&search.list());
    for (quint32 id = 1; id <= 3; ++id)
        search.addByNumber(id, QStringLiteral("n%1").arg(id), int(id));
    search.found(QStringLiteral("n"));
    const auto fall = [&] {
        if (change == 0)
            search.filter().setFilterText(QStringLiteral("n1"));
        else if (change == 1)
            search.filter().setFilterText(QString());
        else if (change == 2)
            search.item(3)->setText(QStringLiteral("other"));
        else if (change == 3)
            search.tree().removeNode(testId(3));
        else if (change == 4)
            search.tree().removeNodes({testId(1), testId(2), testId(3)});
        else if (change == 5)
            search.tree().reset();
        else if (change == 6)
            search.item(3)->setData(QVariant(), NodeTypeRole);
        else
            search.filter().setSourceModel(&other.tree());
    };
    view.setCurrentIndex(search.list().index(2, 0));
    QCOMPARE(view.currentIndex().data().toString(), QStringLiteral("n3"));
    fall();
    QVERIFY(!view.currentIndex().isValid());
    QVERIFY(view.selectionModel()->selectedIndexes().isEmpty());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.setCurrentIndex(search.list().index(0, 0));
    QCOMPARE(view.currentIndex().isValid(), search.list().rowCount() > 0);
}

TSA_TEST_MAIN(FilterListTest)
#include "tst_filterlist.moc"
