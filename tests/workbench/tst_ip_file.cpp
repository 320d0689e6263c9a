#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/addresses/IpFile.h"
#include "host/workbench/project/Project.h"
#include "tests/support/LocaleCodec.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/SampleRecords.h"

#include <QTest>
#include <QTextCodec>

namespace {

/// "1:10.0.0.1(A) 3:10.0.0.2()": the lines with entries.
QString linesText(const ImportedIpList& imported)
{
    QStringList texts;
    for (const ImportedIpLine& line : imported.lines)
        texts.append(QString::number(line.number) + QLatin1Char(':') + ipEntryText(line.entry));
    return texts.join(QLatin1Char(' '));
}

/// "2 4": the numbers of the refused lines.
QString refusedText(const ImportedIpList& imported)
{
    QStringList texts;
    for (const RefusedIpLine& line : imported.refused)
        texts.append(QString::number(line.number));
    return texts.join(QLatin1Char(' '));
}

/// The line that an export writes for an entry: what is before the first "(", a comma, and what is
/// between that and the first ")".
QString exportedLine(const QString& entry)
{
    const int open = entry.indexOf(QLatin1Char('('));
    const int close = entry.indexOf(QLatin1Char(')'));
    return entry.left(open) + QLatin1Char(',') + entry.mid(open + 1, close - open - 1);
}

/// UTF-8 as the system's own encoding, which on Windows has no number.
class SystemUtf8 final : public QTextCodec
{
public:
    QByteArray name() const override { return "System's UTF-8"; }
    int mibEnum() const override { return 0; }

protected:
    QString convertToUnicode(const char* in, int length, ConverterState* state) const override
    {
        return codecForName("UTF-8")->toUnicode(in, length, state);
    }
    QByteArray convertFromUnicode(const QChar* in, int length, ConverterState* state) const override
    {
        return codecForName("UTF-8")->fromUnicode(in, length, state);
    }
};

} // namespace

class IpFileTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadLines_data();
    void shouldReadLines();
    void shouldSayWhyALineIsRefused_data();
    void shouldSayWhyALineIsRefused();
    void shouldKeepNoMoreThan255Entries();
    void shouldCountRefusedLinesThatItDoesNotKeep();
    void shouldReadNamesOfOtherEncodings_data();
    void shouldReadNamesOfOtherEncodings();
    void shouldReadGbkWhereTheSystemHasItsOwnUtf8();
    void shouldReadBytesOfSeveralEncodings_data();
    void shouldReadBytesOfSeveralEncodings();
    void shouldReadWhatAnExportWrites_data();
    void shouldReadWhatAnExportWrites();
};

void IpFileTest::shouldReadLines_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("refused");
    const auto row = [](const char* name, const QByteArray& file, const char* lines,
                        const char* refused = "") {
        QTest::newRow(name) << file << QString::fromUtf8(lines) << QString::fromUtf8(refused);
    };
    row("empty", "", "");
    row("nothing but blank lines", "\n\r\n \t\r", "");
    row("LF", "10.0.0.1,A\n10.0.0.2,\n", "1:10.0.0.1(A) 2:10.0.0.2()");
    row("CR LF", "10.0.0.1,A\r\n10.0.0.2,\r\n", "1:10.0.0.1(A) 2:10.0.0.2()");
    row("CR", "10.0.0.1,A\r10.0.0.2,\r", "1:10.0.0.1(A) 2:10.0.0.2()");
    row("mixed", "10.0.0.1,A\r\r\n10.0.0.2,\n\r10.0.0.3,C",
        "1:10.0.0.1(A) 3:10.0.0.2() 5:10.0.0.3(C)");
    row("no line end at the end", "10.0.0.1,A", "1:10.0.0.1(A)");
    row("byte order mark",
        "\xEF\xBB\xBF"
        "10.0.0.1,A\n",
        "1:10.0.0.1(A)");
    row("only a byte order mark", "\xEF\xBB\xBF", "");
    row("byte order mark in a name",
        "10.0.0.1,\xEF\xBB\xBF"
        "A",
        "1:10.0.0.1(\xEF\xBB\xBF"
        "A)");
    row("commas in a name", "10.0.0.1,a, b,,", "1:10.0.0.1(a, b,,)");
    row("blanks in a name", "10.0.0.1, A ", "1:10.0.0.1( A )");
    row("quotes", "10.0.0.1,\"A\"", "1:10.0.0.1(\"A\")");
    row("no comma", "10.0.0.1", "1:10.0.0.1()");
    row("blanks around the address", " \t10.0.0.1 ,A", "1:10.0.0.1(A)");
    row("leading zeros", "010.000.000.001,A", "1:10.0.0.1(A)");
    row("no address", "A\n10.0.0.1,A\n10.0.0\n,A\nA,10.0.0.2", "2:10.0.0.1(A)", "1 3 4 5");
    row("out of range", "256.0.0.1,\n10.0.0.1,A\n-1.0.0.1,", "2:10.0.0.1(A)", "1 3");
    row("not for processors", "0.0.0.0,\n127.0.0.1,\n224.0.0.1,\n255.255.255.255,", "", "1 2 3 4");
    row("twice", "10.0.0.1,A\n10.0.0.1,B", "1:10.0.0.1(A)", "2");
    row("null character", QByteArray("10.0.0.1,A\n\0\n10.0.0.2,B", 23),
        "1:10.0.0.1(A) 3:10.0.0.2(B)", "2");
}

void IpFileTest::shouldReadLines()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, lines);
    QFETCH(QString, refused);
    const ImportedIpList imported = parseIpFile(file);
    QCOMPARE(linesText(imported), lines);
    QCOMPARE(refusedText(imported), refused);
    QCOMPARE(imported.refusedCount, imported.refused.size());
}

void IpFileTest::shouldSayWhyALineIsRefused_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("reason");
    const auto row = [](const char* name, const QByteArray& line, IpRefusal reason) {
        QTest::newRow(name) << line << static_cast<int>(reason);
    };
    row("no address", "Hall", IpRefusal::NoAddress);
    row("loopback", "127.0.0.1,Hall", IpRefusal::Unsuitable);
    row("twice", "10.0.0.1,Hall", IpRefusal::Duplicate);
    row("256 characters", "10.0.0.2," + QByteArray(256, 'x'), IpRefusal::None);
    row("257 characters", "10.0.0.2," + QByteArray(257, 'x'), IpRefusal::NameTooLong);
    row("no UTF-8", "10.0.0.2,\xFF", IpRefusal::Unreadable);
    row("cut UTF-8", "10.0.0.2,\xE5\xA4", IpRefusal::Unreadable);
    row("replacement character", "10.0.0.2,\xEF\xBF\xBD", IpRefusal::None);
}

void IpFileTest::shouldSayWhyALineIsRefused()
{
    QFETCH(QByteArray, line);
    QFETCH(int, reason);
    const ImportedIpList imported = parseIpFile("\xEF\xBB\xBF"
                                                "10.0.0.1,A\n"
                                                + line + '\n');
    const bool isRefused = reason != static_cast<int>(IpRefusal::None);
    QCOMPARE(imported.lines.size(), isRefused ? 1 : 2);
    QCOMPARE(imported.refusedCount, isRefused ? 1 : 0);
    if (isRefused) {
        QCOMPARE(static_cast<int>(imported.refused.first().reason), reason);
        QCOMPARE(imported.refused.first().number, 2);
    }
}

void IpFileTest::shouldKeepNoMoreThan255Entries()
{
    QByteArray file;
    for (quint32 n = 0; n < 258; ++n)
        file += dottedAddress(0x0A000000 + n).toLatin1() + ",\n";
    const ImportedIpList imported = parseIpFile(file);
    QCOMPARE(imported.lines.size(), 255);
    QCOMPARE(imported.refusedCount, 3);
    QVERIFY(imported.refused.last().reason == IpRefusal::Full);
    QCOMPARE(imported.refused.last().text, QStringLiteral("10.0.1.1,"));
}

void IpFileTest::shouldCountRefusedLinesThatItDoesNotKeep()
{
    const ImportedIpList imported =
        parseIpFile(QByteArray(5000, 'x') + QByteArray("\nx").repeated(99));
    QCOMPARE(imported.refusedCount, 100);
    QCOMPARE(imported.refused.size(), ImportedIpList::kMaxRefusedKept);
    QVERIFY(imported.refused.first().text.size() < 100);
}

void IpFileTest::shouldReadNamesOfOtherEncodings_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("encoding");
    QTest::newRow("UTF-8 where that is usual") << QByteArray("UTF-8") << QByteArray("UTF-8");
    QTest::newRow("UTF-8 where it is not") << QByteArray("GB18030") << QByteArray("UTF-8");
    QTest::newRow("GBK where that is usual") << QByteArray("GB18030") << QByteArray("GBK");
    QTest::newRow("GBK where UTF-8 is usual") << QByteArray("UTF-8") << QByteArray("GBK");
    QTest::newRow("Big5 where that is usual") << QByteArray("Big5") << QByteArray("Big5");
}

void IpFileTest::shouldReadNamesOfOtherEncodings()
{
    QFETCH(QByteArray, locale);
    QFETCH(QByteArray, encoding);
    const LocaleCodec usual(locale);
    const QString name = QString::fromUtf8("大左(A, b");
    const QTextCodec* codec = QTextCodec::codecForName(encoding);
    QVERIFY(codec);
    const ImportedIpList imported =
        parseIpFile(codec->fromUnicode(QStringLiteral("10.0.0.1,%1\r\n10.0.0.2,B").arg(name)));
    QCOMPARE(linesText(imported), QStringLiteral("1:10.0.0.1(%1) 2:10.0.0.2(B)").arg(name));
}

void IpFileTest::shouldReadGbkWhereTheSystemHasItsOwnUtf8()
{
    const LocaleCodec usual(new SystemUtf8); // owned by Qt
    const QString name = QString::fromUtf8("大左");
    const QByteArray bytes =
        QTextCodec::codecForName("GBK")->fromUnicode(QStringLiteral("10.0.0.1,") + name);
    QCOMPARE(linesText(parseIpFile(bytes)), QStringLiteral("1:10.0.0.1(%1)").arg(name));
}

void IpFileTest::shouldReadBytesOfSeveralEncodings_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");
    // GBK for one character, UTF-8 for another.
    const QByteArray either("\xC4\xA3");
    QTest::newRow("GBK") << QByteArray("GBK") << either << QString::fromUtf8("\u6A21");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << either << QString::fromUtf8("\u0123");
    QTest::newRow("neither") << QByteArray("windows-1252") << either << QString::fromUtf8("\u0123");
    QTest::newRow("UTF-8 with more of it")
        << QByteArray("GBK") << either + "\xE5\xA4\xA7" << QString::fromUtf8("\u0123\u5927");
}

void IpFileTest::shouldReadBytesOfSeveralEncodings()
{
    QFETCH(QByteArray, locale);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    const LocaleCodec usual(locale);
    QCOMPARE(linesText(parseIpFile("10.0.0.1," + bytes)),
             QStringLiteral("1:10.0.0.1(%1)").arg(name));
}

void IpFileTest::shouldReadWhatAnExportWrites_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QString>("lineEnd");
    QTest::newRow("UTF-8, LF") << QByteArray("UTF-8") << QStringLiteral("\n");
    QTest::newRow("UTF-8, CR LF") << QByteArray("UTF-8") << QStringLiteral("\r\n");
    QTest::newRow("GB 18030, CR LF") << QByteArray("GB18030") << QStringLiteral("\r\n");
}

void IpFileTest::shouldReadWhatAnExportWrites()
{
    QFETCH(QByteArray, encoding);
    QFETCH(QString, lineEnd);
    const LocaleCodec usual(encoding);
    const QTextCodec* codec = QTextCodec::codecForName(encoding);
    // An export replaces what the encoding lacks: Qt's own GB 18030 ends with the basic plane.
    const QStringList names = encodableTexts(awkwardNames(), *codec);
    QVERIFY(names.size() >= awkwardNames().size() - 1);
    IpList list;
    QString text;
    for (quint32 n = 0; n < 255; ++n) {
        const QString& name = names.at(static_cast<int>(n) % names.size());
        // An export cuts a name before the first ")".
        const QString kept = name.left(name.indexOf(QLatin1Char(')')));
        const quint32 address = 0x0A000001 + n;
        QVERIFY(list.append({address, kept}) == IpRefusal::None);
        text += exportedLine(ipEntryText({address, name})) + lineEnd;
    }
    const ImportedIpList imported = parseIpFile(codec->fromUnicode(text));
    QCOMPARE(imported.refusedCount, 0);
    QCOMPARE(imported.lines.size(), 255);
    for (int row = 0; row < 255; ++row) {
        QCOMPARE(imported.lines.at(row).number, row + 1);
        QCOMPARE(imported.lines.at(row).entry.name, list.entries().at(row).name);
        QCOMPARE(imported.lines.at(row).entry.address, list.entries().at(row).address);
    }
}

TSA_GUILESS_TEST_MAIN(IpFileTest)
#include "tst_ip_file.moc"
