#include "Interface/IPStatusCodes.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/addresses/IpFile.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/HandlerUnderTest.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

QStringList listOf(HandlerUnderTest& test)
{
    QStringList entries{QStringLiteral("stale")};
    test.handler.GetIPList(entries);
    return entries;
}

quint32 check(HandlerUnderTest& test, quint32 address, bool processorMode)
{
    int code = -1;
    const bool isRejected = test.handler.CheckIPAddress(address, &code, processorMode);
    return isRejected == (code != 0) ? static_cast<quint32>(code) : 1;
}

} // namespace

class HandlerIpListTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerAlikeEverywhere();
    void shouldRefuseWithALineInTheLog();
    void shouldSayWhatSavingMeans();
    void shouldDeleteInNetworkByteOrder();
    void shouldCheckAgainstTheListOrTheProcessors();
    void shouldCheckAgainstThePc();
    void shouldReadTheNetworkOnceForManyChecks();
    void shouldForceAnswers();
    void shouldForceTheNextChecks();
    void shouldCompareAddressesOnly_data();
    void shouldCompareAddressesOnly();
    void shouldImportFiles();
    void shouldLogTheLinesLeftOutOfAnImport();
    void shouldRefuseWhatIsNoAddressFile();
    void shouldAddProcessorsForEntries();
};

void HandlerIpListTest::shouldAnswerAlikeEverywhere()
{
    HandlerUnderTest test;
    const QStringList names = awkwardNames();
    for (int n = 0; n < names.size(); ++n)
        test.handler.AddIPAddress(QStringLiteral("10.0.1.%1").arg(n), names.at(n));
    const QStringList entries = listOf(test);
    QStringList ips{QStringLiteral("stale")};
    QStringList given{QStringLiteral("stale")};
    test.handler.GetIPNameLists(ips, given);
    QCOMPARE(given, names);
    QCOMPARE(test.handler.GetIPCount(0), names.size());
    QCOMPARE(entries.size(), names.size());
    for (int n = 0; n < names.size(); ++n) {
        QCOMPARE(ips.at(n), QStringLiteral("10.0.1.%1").arg(n));
        QCOMPARE(entries.at(n), ips.at(n) + QLatin1Char('(') + names.at(n) + QLatin1Char(')'));
        QCOMPARE(test.handler.GetIPEntry(n), entries.at(n));
    }
    QCOMPARE(test.handler.GetIPEntry(names.size()), QString());
    QCOMPARE(test.handler.GetIPEntry(-1), QString());
    test.handler.ClearIPList();
    QCOMPARE(test.handler.GetIPCount(0), 0);
}

void HandlerIpListTest::shouldRefuseWithALineInTheLog()
{
    HandlerUnderTest test;
    LogTrap log;
    test.handler.AddIPAddress(QStringLiteral("10.0.0.1"), QStringLiteral("A"));
    test.handler.AddIPAddress(QStringLiteral("10.0.0.2"), QStringLiteral("B"));
    test.handler.ModifyIPAddress(0, QStringLiteral("10.0.0.1"), QStringLiteral("C"));
    test.handler.ModifyIPAddress(1, QStringLiteral("10.0.0.3"), QStringLiteral("B"));
    QCOMPARE(log.take(), QStringList());
    const QStringList kept = listOf(test);
    QCOMPARE(kept.join(QLatin1Char(' ')), QStringLiteral("10.0.0.1(C) 10.0.0.3(B)"));

    test.handler.AddIPAddress(QStringLiteral("10.0.0.1"), QStringLiteral("D"));
    test.handler.AddIPAddress(QStringLiteral("10.0.0"), QStringLiteral("D"));
    test.handler.ModifyIPAddress(0, QStringLiteral("10.0.0.3"), QStringLiteral("D"));
    test.handler.ModifyIPAddress(0, QString(), QStringLiteral("D"));
    test.handler.ModifyIPAddress(2, QStringLiteral("10.0.0.4"), QStringLiteral("D"));
    test.handler.ModifyIPAddress(-1, QStringLiteral("10.0.0.4"), QStringLiteral("D"));
    test.handler.DeleteIPAddress(qToBigEndian(0x0A000009U));
    QCOMPARE(
        log.take(),
        (QStringList{QStringLiteral("10.0.0.1 is refused: the address is there already"),
                     QStringLiteral("10.0.0 is refused: there is no valid address"),
                     QStringLiteral("row 0, 10.0.0.3 is refused: the address is there already"),
                     QStringLiteral("row 0,  is refused: there is no valid address"),
                     QStringLiteral("row 2, 10.0.0.4 is refused: there is no such row"),
                     QStringLiteral("row -1, 10.0.0.4 is refused: there is no such row"),
                     QStringLiteral("10.0.0.9 is refused: there is no such row")}));
    QCOMPARE(listOf(test), kept);

    for (quint32 n = 0; n < 300; ++n)
        test.handler.AddIPAddress(dottedAddress(0x0B000000 + n), QString());
    QCOMPARE(test.handler.GetIPCount(0), 255);
    QCOMPARE(log.messages().size(), 300 - 253);
    QCOMPARE(log.messages().constLast(),
             QStringLiteral("11.0.1.43 is refused: the list is full with 255 entries"));
}

void HandlerIpListTest::shouldSayWhatSavingMeans()
{
    HandlerUnderTest test;
    LogTrap log;
    test.handler.AddIPAddress(QStringLiteral("10.0.0.1"), QString());
    QVERIFY(test.store.isModified());
    test.handler.SaveIPList();
    QVERIFY(test.store.isModified());
    QCOMPARE(log.messages(),
             QStringList(QStringLiteral("1 entries are part of the project and saved with it")));
}

void HandlerIpListTest::shouldDeleteInNetworkByteOrder()
{
    HandlerUnderTest test;
    test.handler.AddIPAddress(QStringLiteral("10.0.0.1"), QString());
    test.handler.AddIPAddress(QStringLiteral("1.0.0.10"), QString());
    test.handler.DeleteIPAddress(qToBigEndian(0x0A000001U));
    QCOMPARE(test.lastEntry().text, QStringLiteral("DeleteIPAddress(\"10.0.0.1\")"));
    QCOMPARE(listOf(test), QStringList(QStringLiteral("1.0.0.10()")));
}

void HandlerIpListTest::shouldCheckAgainstTheListOrTheProcessors()
{
    HandlerUnderTest test;
    test.handler.AddIPAddress(QStringLiteral("10.0.0.9"), QString());
    QCOMPARE(check(test, 0x0A000009, false), quint32{IPCHECK_USED});
    QCOMPARE(check(test, 0x0A000009, true), 0U);
    QCOMPARE(check(test, 0x0A000001, false), 0U);
    QCOMPARE(check(test, 0x0A000001, true), quint32{IPCHECK_USED});
    QVERIFY(test.handler.CheckIPAddress(0x0A000001, nullptr, true));
    QVERIFY(!test.handler.CheckIPAddress(0x0A000001, nullptr, false));
    test.store.setAddress(sampleId(11), kNoProcessorAddress);
    QCOMPARE(check(test, 0x0A000001, true), 0U);
    QCOMPARE(check(test, kNoProcessorAddress, true), quint32{IPCHECK_UNREASONABLE});
}

void HandlerIpListTest::shouldCheckAgainstThePc()
{
    HandlerUnderTest test;
    test.network.adapters = {{0xC0A80007, 24}};
    test.network.gateways = {0xC0A80001};
    for (const bool processorMode : {false, true}) {
        QCOMPARE(check(test, 0xC0A80007, processorMode), quint32{IPCHECK_SAME_AS_PC});
        QCOMPARE(check(test, 0x00000001, processorMode), quint32{IPCHECK_STARTS_WITH_ZERO});
        QCOMPARE(check(test, 0xC0A80001, processorMode), quint32{IPCHECK_GATEWAY});
        QCOMPARE(check(test, 0xC0A800FF, processorMode), quint32{IPCHECK_BROADCAST});
        QCOMPARE(check(test, 0, processorMode), quint32{IPCHECK_UNREASONABLE});
        QCOMPARE(check(test, 0xC0A80008, processorMode), 0U);
    }
}

void HandlerIpListTest::shouldReadTheNetworkOnceForManyChecks()
{
    HandlerUnderTest test;
    check(test, 0x0A000009, false);
    QCOMPARE(test.networkReads, 1);
    test.network.gateways = {0x0A000009};
    test.handler.RefreshIPList();
    QCOMPARE(check(test, 0x0A000009, false), quint32{IPCHECK_GATEWAY});
    QCOMPARE(test.networkReads, 2);
}

void HandlerIpListTest::shouldForceAnswers()
{
    HandlerUnderTest test;
    HandlerAnswers answers;
    answers.ipCheckCode = IPCHECK_GATEWAY;
    answers.readOnlineCode = IPLIST_FULL;
    answers.importCode = 7;
    test.store.setAnswers(answers);
    for (int time = 0; time < 3; ++time)
        QCOMPARE(check(test, 0x0A000009, false), quint32{IPCHECK_GATEWAY});
    QCOMPARE(test.handler.ReadOnlineIPAddresses(), quint32{IPLIST_FULL});
    QCOMPARE(test.handler.ImportIPFile(QStringLiteral("/nowhere")), 7U);
    test.store.setAnswers(HandlerAnswers());
    QCOMPARE(check(test, 0x0A000009, false), 0U);
    QCOMPARE(test.handler.ReadOnlineIPAddresses(), quint32{IPLIST_ONLINE_EMPTY});
    QCOMPARE(test.handler.ImportIPFile(QStringLiteral("/nowhere")), quint32{IPIMPORT_OPEN_FAILED});
}

void HandlerIpListTest::shouldForceTheNextChecks()
{
    HandlerUnderTest test;
    HandlerAnswers answers;
    answers.ipCheckCode = 12;
    answers.ipCheckCount = 2;
    test.store.setAnswers(answers);
    QCOMPARE(check(test, 0x0A000009, false), 12U);
    QCOMPARE(test.store.snapshot().answers.ipCheckCount, 1);
    QCOMPARE(check(test, 0x0A000009, true), 12U);
    QCOMPARE(check(test, 0x0A000009, false), 0U);
    QCOMPARE(test.store.snapshot().answers.ipCheckCode, 0U);
}

void HandlerIpListTest::shouldCompareAddressesOnly_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<bool>("isChanged");
    const auto row = [](const char* name, const char* before, const char* after, bool isChanged) {
        QTest::newRow(name) << QString::fromUtf8(before) << QString::fromUtf8(after) << isChanged;
    };
    row("nothing", "", "", false);
    row("same", "10.0.0.1(A) 10.0.0.2()", "10.0.0.1(A) 10.0.0.2()", false);
    row("renamed", "10.0.0.1(A)", "10.0.0.1(B)", false);
    row("other order", "10.0.0.1(A) 10.0.0.2()", "10.0.0.2() 10.0.0.1(A)", false);
    row("added", "10.0.0.1(A)", "10.0.0.1(A) 10.0.0.2()", true);
    row("removed", "10.0.0.1(A)", "", true);
    row("changed", "10.0.0.1(A)", "10.0.0.2(A)", true);
    row("addresses alone", "10.0.0.1", "10.0.0.2", true);
}

void HandlerIpListTest::shouldCompareAddressesOnly()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(bool, isChanged);
    HandlerUnderTest test;
    QCOMPARE(
        test.handler.IpListChanged(before.split(QLatin1Char(' ')), after.split(QLatin1Char(' '))),
        isChanged);
}

void HandlerIpListTest::shouldImportFiles()
{
    HandlerUnderTest test;
    const LogTrap log;
    const QTemporaryDir folder;
    const auto import = [&](const QByteArray& content) {
        QFile file(folder.filePath(QStringLiteral("ipList.txt")));
        const bool isWritten =
            file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
        file.close();
        return isWritten ? test.handler.ImportIPFile(file.fileName()) : 1;
    };
    test.handler.AddIPAddress(QStringLiteral("10.0.0.1"), QStringLiteral("own"));
    QCOMPARE(import(""), quint32{IPIMPORT_NO_VALID_IP});
    QCOMPARE(import("nothing\r\n,\r\n"), quint32{IPIMPORT_NO_VALID_IP});
    QCOMPARE(import("10.0.0.2,a,b\r\n10.0.0.1,other\r\n10.0.0.3,\r\n"), 0U);
    const QString merged = QStringLiteral("10.0.0.1(own) 10.0.0.2(a,b) 10.0.0.3()");
    QCOMPARE(listOf(test).join(QLatin1Char(' ')), merged);
    // Nothing new is a success, too.
    test.store.markSaved();
    QCOMPARE(import("10.0.0.1,other\n"), 0U);
    QCOMPARE(listOf(test).join(QLatin1Char(' ')), merged);
    QVERIFY(!test.store.isModified());

    QByteArray many;
    for (quint32 n = 0; n < 300; ++n)
        many += dottedAddress(0x0A000001 + n).toLatin1() + ",\n";
    QCOMPARE(import(many), 0U);
    QCOMPARE(test.handler.GetIPCount(0), 255);
    QCOMPARE(test.handler.GetIPEntry(254), QStringLiteral("10.0.0.255()"));
}

void HandlerIpListTest::shouldLogTheLinesLeftOutOfAnImport()
{
    HandlerUnderTest test;
    LogTrap log;
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("ipList.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Hall\n10.0.0.1,A\n10.0.0.1,B\n10.0.0.2,C\n");
    file.flush();
    test.handler.AddIPAddress(QStringLiteral("10.0.0.2"), QString());
    QCOMPARE(test.handler.ImportIPFile(file.fileName()), 0U);
    QCOMPARE(log.take(),
             (QStringList{
                 QStringLiteral("line 1 is left out: there is no valid address: Hall"),
                 QStringLiteral("line 3 is left out: the address is there already: 10.0.0.1,B"),
                 QStringLiteral("line 4 is left out: the address is there already: 10.0.0.2(C)"),
                 file.fileName() + QStringLiteral(": 1 lines added, 3 left out")}));
    file.write(QByteArray("x\n").repeated(1000));
    file.flush();
    QCOMPARE(test.handler.ImportIPFile(file.fileName()), 0U);
    QCOMPARE(log.messages().size(), ImportedIpList::kMaxRefusedKept + 1);
    QVERIFY(log.messages().constLast().endsWith(QStringLiteral(": 0 lines added, 1004 left out")));
}

void HandlerIpListTest::shouldRefuseWhatIsNoAddressFile()
{
    HandlerUnderTest test;
    LogTrap log;
    const QTemporaryDir folder;
    const QString large = folder.filePath(QStringLiteral("large.txt"));
    QFile file(large);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("10.0.0.1,A\n");
    QVERIFY(file.resize(kMaxIpFileSize + 1));
    for (const QString& path : {QString(), QStringLiteral("/nowhere/list.txt"), folder.path(),
                                QStringLiteral("/dev/zero"), large}) {
        QCOMPARE(test.handler.ImportIPFile(path), quint32{IPIMPORT_OPEN_FAILED});
        QCOMPARE(log.take().size(), 1);
    }
    QCOMPARE(test.handler.GetIPCount(0), 0);
    QVERIFY(file.resize(kMaxIpFileSize));
    QCOMPARE(test.handler.ImportIPFile(large), 0U);
    QCOMPARE(test.handler.GetIPCount(0), 1);
}

void HandlerIpListTest::shouldAddProcessorsForEntries()
{
    HandlerUnderTest test;
    test.handler.AddProcessorsFromIpList(
        sampleId(2), {QStringLiteral("10.0.0.50(A, (b)"), QStringLiteral("nonsense")});
    QCOMPARE(test.store.snapshot().processors.size(), 5);
    QCOMPARE(test.store.snapshot().processors.last().ipAddress, 0x0A000032U);
}

TSA_GUILESS_TEST_MAIN(HandlerIpListTest)
#include "tst_handler_ip_list.moc"
