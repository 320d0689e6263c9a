#include "host/widgets/IPOctets.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

class TestIPFieldText final : public QObject
{
    Q_OBJECT

private slots:
    void shouldAcceptEveryOctet();
    void shouldRemoveLeadingZeros();
    void shouldReadAddresses_data();
    void shouldReadAddresses();
    void shouldReadEveryAddressOfABytePattern();
};

void TestIPFieldText::shouldAcceptEveryOctet()
{
    for (int number = 0; number <= 99999; ++number) {
        const QString text = QString::number(number);
        QCOMPARE(IPOctets::isOctet(text), number <= 255);
        const QString padded = text.rightJustified(3, QLatin1Char('0'));
        QCOMPARE(IPOctets::isOctet(padded), number <= 255);
    }
    // Only ten characters are an octet on their own.
    int known = 0;
    for (int code = 0; code <= 0xFFFF; ++code)
        known += IPOctets::isOctet(QChar(code)) ? 1 : 0;
    QCOMPARE(known, 10);
    for (const QString& text :
         {QString(), QStringLiteral(" 1"), QStringLiteral("+1"), QStringLiteral("-0"),
          QStringLiteral("0x1"), QStringLiteral("0001"), QStringLiteral("1\u0661")})
        QVERIFY2(!IPOctets::isOctet(text), qPrintable(text));
}

void TestIPFieldText::shouldRemoveLeadingZeros()
{
    QCOMPARE(IPOctets::normalizedOctet(QString()), QString());
    for (int number = 0; number <= 255; ++number) {
        const QString text = QString::number(number);
        for (int width = text.size(); width <= 3; ++width)
            QCOMPARE(IPOctets::normalizedOctet(text.rightJustified(width, QLatin1Char('0'))), text);
    }
}

void TestIPFieldText::shouldReadAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("address");

    const QString none;
    QTest::newRow("plain") << "192.168.1.10"
                           << "192.168.1.10";
    QTest::newRow("zeros") << "010.001.000.09"
                           << "10.1.0.9";
    QTest::newRow("white space") << " \t10.0.0.1\r\n"
                                 << "10.0.0.1";
    QTest::newRow("no-break space") << QStringLiteral("\u00A010.0.0.1\u3000") << "10.0.0.1";
    QTest::newRow("empty") << none << none;
    QTest::newRow("three octets") << "10.0.0" << none;
    QTest::newRow("five octets") << "10.0.0.1.2" << none;
    QTest::newRow("empty octet") << "10..0.1" << none;
    QTest::newRow("dot at the end") << "10.0.0.1." << none;
    QTest::newRow("too large") << "10.0.0.256" << none;
    QTest::newRow("four digits") << "10.0.0.0001" << none;
    QTest::newRow("space within") << "10.0. 0.1" << none;
    QTest::newRow("sign") << "10.0.0.+1" << none;
    QTest::newRow("port") << "10.0.0.1:80" << none;
    QTest::newRow("full-width digits") << QStringLiteral("1\uFF10.0.0.1") << none;
    QTest::newRow("Arabic digits") << QStringLiteral("\u0661.0.0.1") << none;
    QTest::newRow("ideographic dots") << QStringLiteral("10\u30020\u30020\u30021") << none;
}

void TestIPFieldText::shouldReadAddresses()
{
    QFETCH(const QString, text);
    QFETCH(const QString, address);
    QCOMPARE(IPOctets::normalizedAddress(text), address);
}

void TestIPFieldText::shouldReadEveryAddressOfABytePattern()
{
    const QString pattern = QStringLiteral("%1.%2.%3.%4");
    for (int high = 0; high <= 255; ++high) {
        for (int low = 0; low <= 255; ++low) {
            const QString address = pattern.arg(high).arg(low).arg(255 - high).arg(255 - low);
            QCOMPARE(IPOctets::normalizedAddress(address), address);
        }
    }
}

TSA_APPLESS_TEST_MAIN(TestIPFieldText)

#include "tst_ipfieldtext.moc"
