#include "host/workbench/addresses/IpList.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/SampleRecords.h"

#include <QTest>

class IpListTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepNamesInTexts();
    void shouldReadTexts_data();
    void shouldReadTexts();
    void shouldKeepOrderAndRefuseDuplicates();
    void shouldReplaceRows();
    void shouldHoldNoMoreThan255Entries();
    void shouldGiveTheReasonOfARefusal();
};

void IpListTest::shouldKeepNamesInTexts()
{
    QCOMPARE(ipEntryText({0x0A000001, QStringLiteral("Left (wing)")}),
             QStringLiteral("10.0.0.1(Left (wing))"));
    const QStringList names = awkwardNames();
    for (const QString& name : names) {
        const IpEntry entry{0xC0A8000A, name};
        const auto again = ipEntryOfText(ipEntryText(entry));
        QVERIFY2(again && *again == entry, qPrintable(name));
    }
}

void IpListTest::shouldReadTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isEntry");
    QTest::addColumn<QString>("name");
    QTest::newRow("whole") << QStringLiteral("10.0.0.1(A)") << true << QStringLiteral("A");
    QTest::newRow("without name") << QStringLiteral("10.0.0.1") << true << QString();
    QTest::newRow("not closed") << QStringLiteral("10.0.0.1(A") << true << QStringLiteral("A");
    QTest::newRow("no address") << QStringLiteral("(A)") << false << QString();
    QTest::newRow("broken address") << QStringLiteral("10.0.1(A)") << false << QString();
    QTest::newRow("empty") << QString() << false << QString();
}

void IpListTest::shouldReadTexts()
{
    QFETCH(QString, text);
    QFETCH(bool, isEntry);
    QFETCH(QString, name);
    const auto entry = ipEntryOfText(text);
    QCOMPARE(entry.has_value(), isEntry);
    if (isEntry)
        QVERIFY((*entry == IpEntry{0x0A000001, name}));
}

void IpListTest::shouldKeepOrderAndRefuseDuplicates()
{
    IpList list;
    for (const quint32 address : {3U, 1U, 2U})
        QVERIFY(list.append({address, QString()}) == IpRefusal::None);
    QVERIFY(list.append({1, QStringLiteral("other name")}) == IpRefusal::Duplicate);
    QVERIFY(list.append({4, QString(257, QLatin1Char('x'))}) == IpRefusal::NameTooLong);
    QVERIFY(list.remove(1));
    QVERIFY(!list.remove(1));
    QCOMPARE(list.entries(), (QList<IpEntry>{{3, {}}, {2, {}}}));
    QCOMPARE(list.addresses(), (QSet<quint32>{2, 3}));
    list.clear();
    QVERIFY(list == IpList());
    QVERIFY(list.addresses().isEmpty());
}

void IpListTest::shouldReplaceRows()
{
    IpList list;
    list.append({1, QStringLiteral("A")});
    list.append({2, QStringLiteral("B")});
    QVERIFY(list.replace(0, {1, QStringLiteral("C")}) == IpRefusal::None);
    QVERIFY(list.replace(1, {1, QStringLiteral("D")}) == IpRefusal::Duplicate);
    QVERIFY(list.replace(1, {3, QString(257, QLatin1Char('x'))}) == IpRefusal::NameTooLong);
    QVERIFY(list.replace(-1, {3, {}}) == IpRefusal::NoSuchRow);
    QVERIFY(list.replace(2, {3, {}}) == IpRefusal::NoSuchRow);
    QVERIFY(list.replace(1, {3, QStringLiteral("E")}) == IpRefusal::None);
    QCOMPARE(list.entries(), (QList<IpEntry>{{1, QStringLiteral("C")}, {3, QStringLiteral("E")}}));
    QCOMPARE(list.addresses(), (QSet<quint32>{1, 3}));
}

void IpListTest::shouldHoldNoMoreThan255Entries()
{
    IpList list;
    for (quint32 n = 1; n <= 255; ++n)
        QVERIFY(list.append({n, QString()}) == IpRefusal::None);
    QVERIFY(list.isFull());
    QVERIFY(list.append({256, QString()}) == IpRefusal::Full);
    QVERIFY(list.append({255, QString()}) == IpRefusal::Duplicate);
    QVERIFY(list.replace(7, {256, QString()}) == IpRefusal::None);
    QCOMPARE(list.size(), 255);
}

void IpListTest::shouldGiveTheReasonOfARefusal()
{
    QVERIFY(refusalText(IpRefusal::None).isEmpty());
    QSet<QString> texts;
    for (const IpRefusal refusal :
         {IpRefusal::NoAddress, IpRefusal::Unsuitable, IpRefusal::Unreadable,
          IpRefusal::NameTooLong, IpRefusal::Duplicate, IpRefusal::Full, IpRefusal::NoSuchRow}) {
        QVERIFY(!refusalText(refusal).isEmpty());
        texts.insert(refusalText(refusal));
    }
    QCOMPARE(texts.size(), 7);
}

TSA_GUILESS_TEST_MAIN(IpListTest)
#include "tst_ip_list.moc"
