// The rows that the filter accepts: the search rules, and the parents of found rows.

#include "base/RecordCell.h"
#include "tests/search/SearchTree.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace {
constexpr quint32 kAddress = 0xC0A80114; // 192.168.1.20

/// Processor 1, a mixer that shows the number 7, in the group Left.
void addMixer(SearchTree& search)
{
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addByNumber(1, QStringLiteral("mixer"), 6, kGroup);
}

} // namespace

class FilterProxyTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldBeSetUpForASearch();
    void shouldFindNothingWithoutAText();
    void shouldFindAnAddressUnderAnyName();
    void shouldFindADisplayedNumber();
    void shouldNotFindAnAddressedProcessorByItsNumber();
    void shouldFindADisplayedNumberBelowOne();
    void shouldFindNumbersBeyondTheRangeOfInt();
    void shouldFindNamesInAnyCase_data();
    void shouldFindNamesInAnyCase();
    void shouldSearchForATextLiterally();
    void shouldKeepTheParentsOfFoundRows();
    void shouldNotifyReceiversThatReadRows();
    void shouldReturnItsRowsAfterUnreadTexts();
    void shouldFindGroupsAndTheRootByTheirTexts();
    void shouldFollowARecordThatStopsMatching();
    void shouldFollowARecordThatStartsMatching();
    void shouldFollowANameThatTheRecordLacks();
    void shouldFollowAnAnnouncedRecord();
    void shouldFollowAnotherSource();
    void shouldBeEmptyWithoutASourceModel();
};

void FilterProxyTest::shouldBeSetUpForASearch()
{
    const CProcessorFilterProxyModel filter;
    QVERIFY(filter.isRecursiveFilteringEnabled());
    QCOMPARE(filter.filterCaseSensitivity(), Qt::CaseInsensitive);
    QVERIFY(filter.dynamicSortFilter());
    QCOMPARE(filter.rowCount(), 0);
}

void FilterProxyTest::shouldFindNothingWithoutAText()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("one"), 0);
    QCOMPARE(search.filter().rowCount(), 0);
    QCOMPARE(search.found(QStringLiteral("o")), QStringLiteral("one"));
    QCOMPARE(search.found(QString()), QString());
    QCOMPARE(search.filter().rowCount(), 0);
}

void FilterProxyTest::shouldFindAnAddressUnderAnyName()
{
    SearchTree search;
    search.addByAddress(1, QStringLiteral("by address"), kAddress, 0);
    ProcessorNode byNumber = testProcessor(2);
    byNumber.name = QStringLiteral("by number");
    byNumber.ipAddress = kAddress;
    search.tree().AppendProcessor(byNumber);
    for (const char* text : {"192.168", "192.168.1.20", "8.1.2", "."})
        QCOMPARE(search.found(QLatin1String(text)), QStringLiteral("by address"));
    QCOMPARE(search.found(QStringLiteral("192.168.1.21")), QString());
}

void FilterProxyTest::shouldFindADisplayedNumber()
{
    SearchTree search;
    for (const int number : {0, 1, 8, 9, 10, 19, 20})
        search.addByNumber(static_cast<quint32>(number) + 1, QString(QChar('a' + number)), number);
    QCOMPARE(search.found(QStringLiteral("1")), QStringLiteral("a,j,k,u"));
    QCOMPARE(search.found(QStringLiteral("2")), QStringLiteral("b,t,u"));
    QCOMPARE(search.found(QStringLiteral("10")), QStringLiteral("j"));
    QCOMPARE(search.found(QStringLiteral("0")), QStringLiteral("j,t"));
}

void FilterProxyTest::shouldNotFindAnAddressedProcessorByItsNumber()
{
    SearchTree search;
    search.addByAddress(1, QStringLiteral("by address"), 0x0A000002, 76);
    QCOMPARE(search.found(QStringLiteral("77")), QString());
    QCOMPARE(search.found(QStringLiteral("10.0.0.2")), QStringLiteral("by address"));
}

void FilterProxyTest::shouldFindADisplayedNumberBelowOne()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("below"), -5);
    QCOMPARE(search.found(QStringLiteral("-4")), QStringLiteral("below"));
    QCOMPARE(search.found(QStringLiteral("-")), QStringLiteral("below"));
}

void FilterProxyTest::shouldFindNumbersBeyondTheRangeOfInt()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("last"), 2147483647);
    QCOMPARE(search.found(QStringLiteral("2147483648")), QStringLiteral("last"));
}

void FilterProxyTest::shouldFindNamesInAnyCase_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("lower in upper") << QStringLiteral("LAB-3") << QStringLiteral("ab");
    QTest::newRow("upper in lower") << QStringLiteral("lab-3") << QStringLiteral("AB-");
    QTest::newRow("umlauts") << QStringLiteral("KÜCHE") << QStringLiteral("küch");
    QTest::newRow("Chinese") << QStringLiteral("主控制器A") << QStringLiteral("控制器a");
    QTest::newRow("beyond the basic plane")
        << QStringLiteral("x\U0001F600y") << QStringLiteral("\U0001F600Y");
    QTest::newRow("digits of a name") << QStringLiteral("hall 512") << QStringLiteral("51");
    QTest::newRow("a dot") << QStringLiteral("v2.b") << QStringLiteral("2.B");
}

void FilterProxyTest::shouldFindNamesInAnyCase()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    SearchTree search;
    search.addByNumber(1, QStringLiteral("other"), 6);
    search.addByNumber(2, name, 6);
    search.addByAddress(3, name, 0xDE000000, 7);
    QCOMPARE(search.found(text), name + QLatin1Char(',') + name);
}

void FilterProxyTest::shouldSearchForATextLiterally()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("a*b"), 0);
    search.addByNumber(2, QStringLiteral("axb"), 1);
    QCOMPARE(search.found(QStringLiteral("A*")), QStringLiteral("a*b"));
    QCOMPARE(search.found(QStringLiteral("[ax]")), QString());
    QCOMPARE(search.found(QStringLiteral("a.b")), QString());
}

void FilterProxyTest::shouldKeepTheParentsOfFoundRows()
{
    SearchTree search;
    const QAbstractItemModelTester tester(&search.filter());
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addGroup(kOtherGroup, QStringLiteral("Right"));
    search.addByNumber(1, QStringLiteral("mixer"), 0, kGroup);
    search.addByNumber(2, QStringLiteral("stage"), 1, kGroup);
    search.addByNumber(3, QStringLiteral("stand"), 2, kOtherGroup);
    search.addByNumber(4, QStringLiteral("mast"), 3);
    search.found(QStringLiteral("mi"));
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(4)[Left[mixer]]"));
    search.found(QStringLiteral("m"));
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(4)[Left[mixer],mast]"));
    search.found(QStringLiteral("sta"));
    QCOMPARE(dumpTree(search.filter()),
             QStringLiteral("All processors(4)[Left[stage],Right[stand]]"));
    search.found(QStringLiteral("nowhere"));
    QCOMPARE(dumpTree(search.filter()), QString());
}

void FilterProxyTest::shouldNotifyReceiversThatReadRows()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("mixer"), 6);
    search.addByNumber(2, QStringLiteral("mast"), 6);
    search.found(QStringLiteral("m"));
    const QPersistentModelIndex mast = search.filter().mapFromSource(search.item(2)->index());
    QVERIFY(mast.isValid());
    const QSignalSpy went(&search.filter(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy came(&search.filter(), &QAbstractItemModel::rowsInserted);
    search.found(QStringLiteral("ma"));
    QCOMPARE(went.count(), 1);
    QCOMPARE(mast.row(), 0);
    search.found(QStringLiteral("m"));
    QCOMPARE(came.count(), 1);
    QCOMPARE(mast.row(), 1);
    search.found(QStringLiteral("nowhere"));
    QVERIFY(!mast.isValid());
    QCOMPARE(search.filter().rowCount(), 0);
    search.found(QStringLiteral("m"));
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(2)[mixer,mast]"));
}

void FilterProxyTest::shouldReturnItsRowsAfterUnreadTexts()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("mixer"), 6);
    search.addByNumber(2, QStringLiteral("stage"), 6);
    search.found(QStringLiteral("nowhere"));
    search.found(QStringLiteral("mi"));
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(2)[mixer]"));
    search.found(QString());
    search.found(QStringLiteral("st"));
    search.found(QStringLiteral("nowhere"));
    QCOMPARE(search.filter().rowCount(), 0);
}

void FilterProxyTest::shouldFindGroupsAndTheRootByTheirTexts()
{
    SearchTree search;
    search.addGroup(kGroup, QStringLiteral("Left"));
    search.addByNumber(1, QStringLiteral("mixer"), 6, kGroup);
    QCOMPARE(search.found(QStringLiteral("LEF")), QString());
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(1)[Left[]]"));
    QCOMPARE(search.found(QStringLiteral("all p")), QString());
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(1)[]"));
    // Groups match the number of a default record.
    QCOMPARE(search.found(QStringLiteral("1")), QString());
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(1)[Left[]]"));
}

void FilterProxyTest::shouldFollowARecordThatStopsMatching()
{
    SearchTree search;
    addMixer(search);
    QCOMPARE(search.found(QStringLiteral("7")), QStringLiteral("mixer"));
    search.renumber(1, 7);
    QCOMPARE(search.listed(), QString());
    QCOMPARE(dumpTree(search.filter()), QString());
}

void FilterProxyTest::shouldFollowARecordThatStartsMatching()
{
    SearchTree search;
    addMixer(search);
    QCOMPARE(search.found(QStringLiteral("8")), QString());
    search.renumber(1, 7);
    QCOMPARE(search.listed(), QStringLiteral("mixer"));
    QCOMPARE(dumpTree(search.filter()), QStringLiteral("All processors(1)[Left[mixer]]"));
}

void FilterProxyTest::shouldFollowANameThatTheRecordLacks()
{
    SearchTree search;
    addMixer(search);
    QCOMPARE(search.found(QStringLiteral("stage")), QString());
    search.item(1)->setText(QStringLiteral("stage"));
    QCOMPARE(search.listed(), QStringLiteral("stage"));
    search.item(1)->setText(QStringLiteral("mixer"));
    QCOMPARE(search.listed(), QString());
    QCOMPARE(dumpTree(search.filter()), QString());
}

void FilterProxyTest::shouldFollowAnAnnouncedRecord()
{
    SearchTree search;
    addMixer(search);
    QCOMPARE(search.found(QStringLiteral("8")), QString());
    ProcessorNode changed = processorRecord(search.item(1)->data(NodeDataRole));
    changed.number = 7;
    recordHandle(search.item(1)->data(NodeDataRole)).cell()->store(changed);
    search.tree().announceRecords({testId(1)});
    QCOMPARE(search.listed(), QStringLiteral("mixer"));
}

void FilterProxyTest::shouldFollowAnotherSource()
{
    SearchTree search;
    search.addByNumber(1, QStringLiteral("mixer"), 0);
    QCOMPARE(search.found(QStringLiteral("m")), QStringLiteral("mixer"));
    SearchTree other;
    other.addByNumber(2, QStringLiteral("mast"), 0);
    search.filter().setSourceModel(&other.tree());
    QCOMPARE(search.listed(), QStringLiteral("mast"));
    search.item(1)->setText(QStringLiteral("master"));
    QCOMPARE(search.listed(), QStringLiteral("mast"));
    other.item(2)->setText(QStringLiteral("masthead"));
    QCOMPARE(search.listed(), QStringLiteral("masthead"));
}

void FilterProxyTest::shouldBeEmptyWithoutASourceModel()
{
    SearchTree search;
    {
        SearchTree other;
        other.addByNumber(2, QStringLiteral("mast"), 0);
        search.filter().setSourceModel(&other.tree());
        QCOMPARE(search.found(QStringLiteral("m")), QStringLiteral("mast"));
    }
    QCOMPARE(search.listed(), QString());
    QCOMPARE(search.filter().rowCount(), 0);
    search.filter().setSourceModel(nullptr);
    QCOMPARE(search.found(QStringLiteral("m")), QString());
}

TSA_GUILESS_TEST_MAIN(FilterProxyTest)
#include "tst_filterproxy.moc"
