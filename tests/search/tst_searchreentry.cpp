// Receivers that use or change the search inside a signal of a change.

#include "tests/search/SearchTree.h"
#include "tests/support/WarningTrap.h"

#include <QListView>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {
/// "mixer" and "mast", numbers 1 and 2, in a group.
struct TwoFound : SearchTree
{
    explicit TwoFound(const QString& text = QStringLiteral("m"))
    {
        addGroup(kGroup, QStringLiteral("Left"));
        addByNumber(1, QStringLiteral("mixer"), 6, kGroup);
        addByNumber(2, QStringLiteral("mast"), 7, kGroup);
        filter().setFilterText(text);
    }

    /// Returns whether every listed row maps to a row of the filter and of the tree.
    bool mapsAll()
    {
        for (int row = 0; row < list().rowCount(); ++row) {
            const QModelIndex inFilter = list().mapToSource(list().index(row, 0));
            if (!filter().mapToSource(inFilter).isValid())
                return false;
        }
        return true;
    }
};

} // namespace

class SearchReentryTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldSearchForATextDuringARemoval();
    void shouldReadTheListDuringARemoval_data();
    void shouldReadTheListDuringARemoval();
    void shouldMapRowsDuringARemoval();
    void shouldAnnounceTheParentOfARemovedRow();
    void shouldFollowATreeThatChangesAtOnce();
    void shouldListATreeWhenTheFilterIsReset();
    void shouldAcceptTheSameSourceTwice();
    void shouldSurviveItsDestructionByAReceiver();
    void shouldNotifyReceiversOfTheFilter();
    void shouldNotAskTheFilterForPainting();
};

void SearchReentryTest::shouldSearchForATextDuringARemoval()
{
    TwoFound search{QString()};
    const auto typing = connect(&search.tree(), &QAbstractItemModel::rowsAboutToBeRemoved, this,
                                [&] { search.filter().setFilterText(QStringLiteral("m")); });
    search.tree().removeNode(testId(1));
    disconnect(typing);
    QCOMPARE(search.listed(), QStringLiteral("mast"));
    QVERIFY(search.mapsAll());
}

void SearchReentryTest::shouldReadTheListDuringARemoval_data()
{
    QTest::addColumn<bool>("atTheEnd");
    QTest::newRow("about to") << false;
    QTest::newRow("when told") << true;
}

void SearchReentryTest::shouldReadTheListDuringARemoval()
{
    QFETCH(bool, atTheEnd);
    TwoFound search;
    CProcessorFilterModel other;
    const auto take = [&] {
        search.list().invalidate();
        other.setSourceModel(&search.filter());
    };
    const auto taking =
        atTheEnd ? connect(&search.list(), &CProcessorFilterModel::rowsRemed, this, take)
                 : connect(&search.tree(), &QAbstractItemModel::rowsAboutToBeRemoved, this, take);
    search.tree().removeNode(testId(1));
    disconnect(taking);
    QCOMPARE(search.listed(), QStringLiteral("mast"));
    QCOMPARE(other.rowCount(), 1);
    QCOMPARE(other.index(0, 0).data().toString(), QStringLiteral("mast"));
}

void SearchReentryTest::shouldMapRowsDuringARemoval()
{
    TwoFound search;
    int heard = 0;
    bool areMapped = true;
    const auto mapping = connect(&search.list(), &QAbstractItemModel::modelReset, this, [&] {
        ++heard;
        areMapped = areMapped && search.mapsAll();
    });
    search.tree().removeNode(testId(1));
    disconnect(mapping);
    QCOMPARE(heard, 1);
    QVERIFY(areMapped);
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(1)[Left[mast]]"));
    QCOMPARE(search.found(QStringLiteral("ma")), QStringLiteral("mast"));
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(1)[Left[mast]]"));
}

void SearchReentryTest::shouldAnnounceTheParentOfARemovedRow()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("node"), 0);
    search.item(1)->appendRow(new QStandardItem(QStringLiteral("note")));
    QCOMPARE(search.found(QStringLiteral("no")), QString());
    QString whenReset;
    const auto reading = connect(&search.list(), &QAbstractItemModel::modelReset, this,
                                 [&] { whenReset = search.listed(); });
    const QSignalSpy gone(&search.list(), &CProcessorFilterModel::rowsRemed);
    search.item(1)->removeRow(0);
    disconnect(reading);
    QCOMPARE(gone.count(), 1);
    QCOMPARE(whenReset, QStringLiteral("node"));
}

void SearchReentryTest::shouldFollowATreeThatChangesAtOnce()
{
    TwoFound search;
    TwoFound other;
    const auto changing = connect(&search.filter(), &QAbstractItemModel::modelReset, this, [&] {
        other.tree().removeNode(testId(1));
        other.addByNumber(3, QStringLiteral("meter"), 2);
    });
    search.filter().setSourceModel(&other.tree());
    disconnect(changing);
    QCOMPARE(search.listed(), QStringLiteral("meter,mast"));
    QVERIFY(search.mapsAll());
}

void SearchReentryTest::shouldListATreeWhenTheFilterIsReset()
{
    TwoFound search;
    TwoFound other;
    QStringList listed;
    const auto reading = connect(&search.filter(), &QAbstractItemModel::modelReset, this,
                                 [&] { listed.append(search.listed()); });
    other.item(1)->setText(QStringLiteral("mixing desk"));
    search.filter().setSourceModel(&other.tree());
    other.tree().clearToRoot();
    disconnect(reading);
    QCOMPARE(listed.first(), QStringLiteral("mixing desk,mast"));
    QCOMPARE(search.listed(), QString());
}

void SearchReentryTest::shouldAcceptTheSameSourceTwice()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("mixer"), 6);
    CProcessorFilterModel list;
    auto filter = std::make_unique<CProcessorFilterProxyModel>();
    filter->setSourceModel(&search.tree());
    list.setSourceModel(filter.get());
    list.setSourceModel(filter.get());
    filter->setFilterText(QStringLiteral("m"));
    QCOMPARE(list.rowCount(), 1);
    filter.reset();
    QCOMPARE(list.rowCount(), 0);
    QCOMPARE(list.columnCount(), 0);
    QVERIFY(!list.mapToSource(list.index(0, 0)).isValid());
}

void SearchReentryTest::shouldSurviveItsDestructionByAReceiver()
{
    TwoFound search(QStringLiteral("mi"));
    auto list = std::make_unique<CProcessorFilterModel>();
    list->setSourceModel(&search.filter());
    QCOMPARE(list->rowCount(), 1);
    connect(list.get(), &CProcessorFilterModel::rowsRemed, this, [&] { list.reset(); });
    search.filter().setFilterText(QStringLiteral("ma"));
    QVERIFY(!list);
    QCOMPARE(search.listed(), QStringLiteral("mast"));
}

void SearchReentryTest::shouldNotifyReceiversOfTheFilter()
{
    TwoFound search{QString()};
    const QSignalSpy came(&search.filter(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy went(&search.filter(), &QAbstractItemModel::rowsRemoved);
    for (int time = 1; time <= 2; ++time) {
        search.filter().setFilterText(QStringLiteral("m"));
        QCOMPARE(came.count(), time);
        search.filter().setFilterText(QString());
        QCOMPARE(went.count(), time);
    }
}

void SearchReentryTest::shouldNotAskTheFilterForPainting()
{
    TwoFound search{QString()};
    QListView view;
    view.setModel(&search.list());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    // A filter whose rows were never requested may discard its mapping for each text.
    int forgotten = 0;
    const auto counting =
        connect(&search.filter(), &QAbstractItemModel::layoutChanged, this, [&] { ++forgotten; });
    for (const char* text : {"m", "mi", "m"}) {
        search.filter().setFilterText(QLatin1String(text));
        QVERIFY(!view.grab().isNull());
    }
    disconnect(counting);
    QCOMPARE(forgotten, 3);
}

TSA_TEST_MAIN(SearchReentryTest)
#include "tst_searchreentry.moc"
