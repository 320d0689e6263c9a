#include "processortree/model/ProcessorOrder.h"

#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TestRecords.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QStandardItem>
#include <QTest>

namespace {
/// One letter for the row in the dump, then its kind: a number ("a#5": addressed by number 5), an
/// address ("b@7"), both ("c@7#5": addressed by IP), an address that is not used ("d~7#5"), or "-"
/// for none ("e@-": addressed by IP without an address).
ProcessorNode parse(const QString& text, quint32 group)
{
    static quint32 next = 1000;
    ProcessorNode processor = testProcessor(++next, group);
    processor.name = text.left(1);
    processor.number = 0;
    for (const QString& part : text.mid(1)
                                   .replace(QLatin1Char('#'), QLatin1String(" #"))
                                   .split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString value = part.mid(1);
        if (part.startsWith(QLatin1Char('#'))) {
            processor.number = value.toInt();
            continue;
        }
        processor.reachedByIp = part.startsWith(QLatin1Char('@'));
        processor.ipAddress = value == QLatin1String("-") ? kNoProcessorAddress : value.toUInt();
    }
    return processor;
}

} // namespace

class ProcessorOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldPlaceProcessorsInAGroup_data();
    void shouldPlaceProcessorsInAGroup();
    void shouldPlaceProcessorsUnderTheRoot_data();
    void shouldPlaceProcessorsUnderTheRoot();
    void shouldStayBelowRowsWithoutAType();
    void shouldStayBelowASingleRowWithoutAType();
    void shouldFindTheSameRowAskedDirectly();
};

void ProcessorOrderTest::shouldPlaceProcessorsInAGroup_data()
{
    QTest::addColumn<QString>("arrivals");
    QTest::addColumn<QString>("order");
    const auto row = [](const char* name, const char* arrivals, const char* order) {
        QTest::newRow(name) << QString::fromLatin1(arrivals) << QString::fromLatin1(order);
    };
    row("by number: in order of arrival", "a#5 b#2 c#9", "a,b,c");
    row("an empty group takes the first", "a@7", "a");
    row("an empty group takes one without an address", "a@-", "a");
    row("two by address", "a@167772165 b@167772162", "b,a");
    row("by address, then one without", "a@167772165 b@167772162 c@-", "b,a,c");
    row("one row: a greater address goes behind", "a@2 b@3", "a,b");
    row("one row: the same address goes behind", "a@2 b@2", "a,b");
    row("one row: plain comparison puts no address before a greater one", "a@3232235521 b@-",
        "b,a");
    row("one row: plain comparison puts no address behind a smaller one", "a@5 b@-", "a,b");
    row("one row: plain comparison puts a small address before none", "a@- b@5", "b,a");
    row("one row: plain comparison puts a great address behind none", "a@- b@3232235521", "a,b");
    row("one row: its address counts when it is not used", "a~9#1 b@5#7", "b,a");
    row("one row: numbers do not count", "a@5#9 b@5#1", "a,b");
    row("one row: an address of 0 goes before any other", "a@5 b@0", "b,a");
    row("three by address", "a@5 b@9 c@7", "a,c,b");
    row("the smallest comes first", "a@5 b@9 c@1", "c,a,b");
    row("the greatest comes last", "a@5 b@9 c@11", "a,b,c");
    row("the later of equal ones comes behind", "a@5 b@9 c@5 d@5", "a,c,d,b");
    row("the greatest address of all", "a@5 b@4294967295 c@4294967294 d@4294967295", "a,c,b,d");
    row("none stays behind greater ones", "a@3232235521 b@3232235522 c@-", "a,b,c");
    row("none stays behind none", "a@1 b@2 c@- d@-", "a,b,d,c");
    row("an address goes before those without", "a@1 b@9 c@- d@- e@5", "a,e,b,d,c");
    row("only rows without an address", "a@1 b@- c@-", "a,c,b");
    row("those addressed by number have none", "a#1 b#2 c@5", "c,a,b");
    row("none among those addressed by number goes first", "a#1 b#2 c@-", "c,a,b");
    row("none goes behind an address that is not used", "a~9#5 b~9#6 c@-#0", "a,b,c");
    row("none goes behind an address of 0", "a@0#5 b@0#6 c@-#0", "a,b,c");
    row("against an unused address the number counts", "a~9#1 b~9#5 c@1#3", "a,c,b");
    row("against an unused address equal numbers go before", "a~9#1 b~9#5 c@1#5", "a,c,b");
    row("against an unused address a greater number goes behind", "a~9#1 b~9#5 c@1#6", "a,b,c");
    row("against an address of 0 the number counts", "a@0#1 b@0#5 c@1#3", "a,c,b");
    row("an address of 0 counts by number", "a@1#1 b@2#5 c@0#3", "a,c,b");
    row("equal numbers without addresses go before", "a@0#1 b@0#5 c@0#5", "a,c,b");
    row("negative numbers", "a@0#-1 b@0#5 c@0#-2", "c,a,b");
    row("one by number goes last whatever its address", "a@5 b@9 c~1#0", "a,b,c");
    row("the scan ends at the last row that precedes", "a@9#0 b@1#0 c@5", "b,c,a");
    row("the scan looks no further up", "a@9 b~1#9 c~1#0 d@5#1", "a,b,c,d");
}

void ProcessorOrderTest::shouldPlaceProcessorsInAGroup()
{
    QFETCH(QString, arrivals);
    QFETCH(QString, order);
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.AppendGroup(testGroup(100, QStringLiteral("G")));
    const QStringList each = arrivals.split(QLatin1Char(' '));
    for (const QString& arrival : each)
        model.AppendProcessor(parse(arrival, 100));
    QCOMPARE(dumpTree(model),
             QStringLiteral("All processors(%1)[G[%2]]").arg(QString::number(each.size()), order));
}

void ProcessorOrderTest::shouldPlaceProcessorsUnderTheRoot_data()
{
    QTest::addColumn<QString>("arrivals");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char* name, const char* arrivals, const char* rows) {
        QTest::newRow(name) << QString::fromLatin1(arrivals) << QString::fromLatin1(rows);
    };
    row("behind a single group", "G a@0", "G[],a");
    row("behind two groups", "G H a@0", "G[],H[],a");
    row("above a processor, below the groups", "G H a@9 b@1", "G[],H[],b,a");
    row("one group and one processor are scanned", "G a@9 b@1", "G[],b,a");
    row("no address below the groups too", "G a@9 b@-", "G[],a,b");
    row("by number at the end", "G a@9 b#0 c#0", "G[],a,b,c");
    row("groups above processors that came first", "a@9 b@1 G", "G[],b,a");
    row("without groups", "a@9 b@1 c@5", "b,c,a");
}

void ProcessorOrderTest::shouldPlaceProcessorsUnderTheRoot()
{
    QFETCH(QString, arrivals);
    QFETCH(QString, rows);
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    quint32 group = 100;
    for (const QString& arrival : arrivals.split(QLatin1Char(' '))) {
        if (arrival.at(0).isUpper())
            model.AppendGroup(testGroup(group++, arrival));
        else
            model.AppendProcessor(parse(arrival, 0));
    }
    const QString dump = dumpTree(model);
    QCOMPARE(dump.mid(dump.indexOf(QLatin1Char('['))), QLatin1Char('[') + rows + QLatin1Char(']'));
}

void ProcessorOrderTest::shouldStayBelowRowsWithoutAType()
{
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.AppendProcessor(testIpProcessor(9, 9));
    model.item(0)->appendRow(new QStandardItem(QStringLiteral("?")));
    model.AppendProcessor(testIpProcessor(1, 1));
    QCOMPARE(dumpTree(model), QStringLiteral("All processors(2)[9,?[],1]"));
}

void ProcessorOrderTest::shouldStayBelowASingleRowWithoutAType()
{
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.item(0)->appendRow(new QStandardItem(QStringLiteral("?")));
    model.AppendProcessor(testIpProcessor(1, 1));
    QCOMPARE(dumpTree(model), QStringLiteral("All processors(1)[?[],1]"));
}

void ProcessorOrderTest::shouldFindTheSameRowAskedDirectly()
{
    CProcessorTreeModel model;
    model.initRoot();
    const QStandardItem* root = model.item(0);
    QCOMPARE(insertionRow(*root, recordKey(testIpProcessor(1, 5))), 0);
    QCOMPARE(insertionRow(*root, recordKey(testProcessor(1))), 0);
    model.AppendProcessor(testIpProcessor(2, 7));
    QCOMPARE(insertionRow(*root, recordKey(testIpProcessor(1, 5))), 0);
    QCOMPARE(insertionRow(*root, recordKey(testIpProcessor(1, 7))), 1);
    QCOMPARE(insertionRow(*root, recordKey(testProcessor(1))), 1);
    model.AppendGroup(testGroup(100));
    QCOMPARE(insertionRow(*root, recordKey(testIpProcessor(1, 5))), 1);
    QCOMPARE(insertionRow(*root, recordKey(testIpProcessor(1, 7))), 2);
}

TSA_TEST_MAIN(ProcessorOrderTest)
#include "tst_processororder.moc"
