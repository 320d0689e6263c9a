#include "base/IPText.h"
#include "tests/support/WarningTrap.h"

#include <QTest>
#include <QtEndian>

class IPTextTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadAddresses_data();
    void shouldReadAddresses();
    void shouldWriteAddresses();
    void shouldReadWhatItWrites();
    void shouldCutEntries_data();
    void shouldCutEntries();
    void shouldSwapTheBytesOfAddresses();
};

void IPTextTest::shouldReadAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("address");

    const auto row = [](const char* text, quint32 address) {
        QTest::newRow(*text ? text : "nothing") << QString::fromLatin1(text) << address;
    };
    row("192.168.0.10", 0xC0A8000A);
    row("0.0.0.1", 1);
    row("255.255.255.255", 0xFFFFFFFF);
    row("127.0.0.1", 0x7F000001);
    row("0.0.0.0", 0);
    row("", 0);
    row("...", 0);
    row("192.168.0.", 0);
    row("192.168.0.256", 0);
    row("192.168.0.10(Hall)", 0);
    row("Hall", 0);
    row("fe80::1", 0);
}

void IPTextTest::shouldReadAddresses()
{
    QFETCH(QString, text);
    QFETCH(quint32, address);
    QCOMPARE(addressOfText(text), address);
}

void IPTextTest::shouldWriteAddresses()
{
    QCOMPARE(addressText(0xC0A8000A), QStringLiteral("192.168.0.10"));
    QCOMPARE(addressText(0), QStringLiteral("0.0.0.0"));
    QCOMPARE(addressText(0xFFFFFFFF), QStringLiteral("255.255.255.255"));
}

void IPTextTest::shouldReadWhatItWrites()
{
    for (quint32 bit = 0; bit < 32; ++bit) {
        const quint32 address = 0x80000001U ^ (1U << bit);
        QCOMPARE(addressOfText(addressText(address)), address);
    }
}

void IPTextTest::shouldCutEntries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("line");

    const auto row = [](const char* what, const char* entry, const char* address,
                        const char* line) {
        QTest::newRow(what) << QString::fromUtf8(entry) << QString::fromUtf8(address)
                            << QString::fromUtf8(line);
    };
    row("usual", "192.168.0.10(Hall)", "192.168.0.10", "192.168.0.10,Hall");
    row("no name", "192.168.0.10()", "192.168.0.10", "192.168.0.10,");
    row("no parentheses", "192.168.0.10", "192.168.0.10", "192.168.0.10,192.168.0.10");
    row("nothing", "", "", ",");
    row("comma in the name", "10.0.0.1(a,b)", "10.0.0.1", "10.0.0.1,a,b");
    row("Chinese name", "10.0.0.1(左翼)", "10.0.0.1", "10.0.0.1,左翼");
    row("text behind", "10.0.0.1(Hall) x", "10.0.0.1", "10.0.0.1,Hall");
    row("no address", "(Hall)", "", ",Hall");
    // A name ends at the first closing parenthesis.
    row("parentheses in the name", "10.0.0.1(Hall (east))", "10.0.0.1", "10.0.0.1,Hall (east");
    row("two pairs", "10.0.0.1(Hall)(east)", "10.0.0.1", "10.0.0.1,Hall");
    row("opened twice", "10.0.0.1((Hall)", "10.0.0.1", "10.0.0.1,(Hall");
    // A name without a closing parenthesis ends with the entry.
    row("never closed", "10.0.0.1(Hall", "10.0.0.1", "10.0.0.1,Hall");
    row("opened at the end", "10.0.0.1(", "10.0.0.1", "10.0.0.1,");
    row("closed before opened", "10.0.0.1)x(Hall", "10.0.0.1)x", "10.0.0.1)x,Hall");
    row("closed on both sides", "10.0.0.1)x(Hall)", "10.0.0.1)x", "10.0.0.1)x,Hall)");
    row("closed right before opened", "10.0.0.1)(Hall)", "10.0.0.1)", "10.0.0.1),Hall)");
    // A name without an opening parenthesis starts with the entry.
    row("never opened", "10.0.0.1Hall)", "10.0.0.1Hall)", "10.0.0.1Hall),10.0.0.1Hall");
    row("only closed", ")", ")", "),");
}

void IPTextTest::shouldCutEntries()
{
    QFETCH(QString, entry);
    QFETCH(QString, address);
    QFETCH(QString, line);
    QCOMPARE(addressOfEntry(entry), address);
    QCOMPARE(exportLine(entry), line);
}

void IPTextTest::shouldSwapTheBytesOfAddresses()
{
    const auto hostOrder = [](const char* entry) {
        return qFromBigEndian(networkAddressOfEntry(QString::fromLatin1(entry)));
    };
    QCOMPARE(hostOrder("192.168.0.10(Hall)"), quint32{0xC0A8000A});
    QCOMPARE(hostOrder("1.2.3.4"), quint32{0x01020304});
    QCOMPARE(hostOrder("(Hall)"), quint32{0});
    if (Q_BYTE_ORDER == Q_LITTLE_ENDIAN)
        QCOMPARE(networkAddressOfEntry(QStringLiteral("192.168.0.10(Hall)")), quint32{0x0A00A8C0});
}

TSA_APPLESS_TEST_MAIN(IPTextTest)
#include "tst_iptext.moc"
