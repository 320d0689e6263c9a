#include "Interface/IPStatusCodes.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/addresses/IpCheck.h"
#include "host/workbench/addresses/PcNetworkReader.h"
#include "host/workbench/project/Project.h"
#include "tests/support/WarningTrap.h"

#include <QTest>
#include <QtAlgorithms>
#include <QtEndian>

#ifdef Q_OS_WIN
#include <winsock2.h>

#include <iphlpapi.h>
#endif

namespace {

quint32 address(const char* text)
{
    quint32 value = 0;
    return parseDottedAddress(QLatin1String(text), value) ? value : 0;
}

/// A PC with two adapters and a tunnel, behind one gateway.
PcNetwork office()
{
    PcNetwork network;
    network.adapters = {{address("192.168.0.7"), 24},
                        {address("10.20.200.3"), 18},
                        {address("172.16.0.1"), 31},
                        {address("172.17.0.1"), 32}};
    network.gateways = {address("192.168.0.1")};
    return network;
}

#ifdef Q_OS_WIN
/// Returns the addresses of the PC with their prefixes, but those of loopback.
QStringList adapterTable()
{
    ULONG size = 0;
    GetIpAddrTable(nullptr, &size, FALSE);
    QByteArray memory(static_cast<int>(size), '\0');
    auto* table = reinterpret_cast<MIB_IPADDRTABLE*>(memory.data());
    QStringList texts;
    if (GetIpAddrTable(table, &size, FALSE) != NO_ERROR)
        return texts;
    for (DWORD n = 0; n < table->dwNumEntries; ++n) {
        const quint32 address = qFromBigEndian(quint32{table->table[n].dwAddr});
        if (address >> 24U != 127) {
            texts.append(QStringLiteral("%1/%2")
                             .arg(dottedAddress(address))
                             .arg(qPopulationCount(quint32{table->table[n].dwMask})));
        }
    }
    texts.sort();
    return texts;
}

/// Returns the gateways of the default routes.
QStringList gatewayTable()
{
    ULONG size = 0;
    GetIpForwardTable(nullptr, &size, FALSE);
    QByteArray memory(static_cast<int>(size), '\0');
    auto* table = reinterpret_cast<MIB_IPFORWARDTABLE*>(memory.data());
    QStringList texts;
    if (GetIpForwardTable(table, &size, FALSE) != NO_ERROR)
        return texts;
    for (DWORD n = 0; n < table->dwNumEntries; ++n) {
        const MIB_IPFORWARDROW& row = table->table[n];
        if (row.dwForwardDest == 0 && row.dwForwardNextHop != 0)
            texts.append(dottedAddress(qFromBigEndian(quint32{row.dwForwardNextHop})));
    }
    texts.removeDuplicates();
    texts.sort();
    return texts;
}
#endif

} // namespace

class IpCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReturnEachCode_data();
    void shouldReturnEachCode();
    void shouldAcceptAnyAddressWithoutANetwork();
    void shouldAcceptSimulatedProcessors();
    void shouldIgnoreUnknownSubnets();
    void shouldFindDefaultGateways();
    void shouldFindNoGatewayInOtherTexts_data();
    void shouldFindNoGatewayInOtherTexts();
    void shouldReadTheNetworkOfThisPc();
#ifdef Q_OS_WIN // Only Windows has these tables.
    void shouldReadWhatTheTablesOfWindowsHave();
#endif
    void shouldReadTheNetworkOnceASecond();
};

void IpCheckTest::shouldReturnEachCode_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint32>("code");
    const auto row = [](const char* text, quint32 code) {
        QTest::newRow(text) << QByteArray(text) << code;
    };
    row("0.0.0.0", IPCHECK_UNREASONABLE);
    row("0.0.0.1", IPCHECK_STARTS_WITH_ZERO);
    row("0.255.255.255", IPCHECK_STARTS_WITH_ZERO);
    row("1.0.0.0", 0);
    row("126.255.255.255", 0);
    row("127.0.0.1", IPCHECK_UNREASONABLE);
    row("127.255.255.255", IPCHECK_UNREASONABLE);
    row("128.0.0.0", 0);
    row("223.255.255.255", 0);
    row("224.0.0.0", IPCHECK_UNREASONABLE);
    row("239.255.255.255", IPCHECK_UNREASONABLE);
    row("240.0.0.0", IPCHECK_UNREASONABLE);
    row("255.255.255.254", IPCHECK_UNREASONABLE);
    row("255.255.255.255", IPCHECK_BROADCAST);

    row("192.168.0.7", IPCHECK_SAME_AS_PC);
    row("10.20.200.3", IPCHECK_SAME_AS_PC);
    row("192.168.0.1", IPCHECK_GATEWAY);
    row("192.168.0.0", IPCHECK_UNREASONABLE);
    row("192.168.0.255", IPCHECK_BROADCAST);
    row("192.168.1.255", 0);
    row("192.168.1.0", 0);
    row("10.20.192.0", IPCHECK_UNREASONABLE);
    row("10.20.193.0", 0);
    row("10.20.254.255", 0);
    row("10.20.255.255", IPCHECK_BROADCAST);
    // Point to point: both addresses of the subnet are hosts.
    row("172.16.0.0", 0);
    row("172.16.0.1", IPCHECK_SAME_AS_PC);
    row("172.17.0.1", IPCHECK_SAME_AS_PC);

    row("192.168.0.20", IPCHECK_USED);
    row("192.168.0.21", 0);
    row("10.99.0.1", IPCHECK_USED);
}

void IpCheckTest::shouldReturnEachCode()
{
    QFETCH(QByteArray, text);
    QFETCH(quint32, code);
    // Whatever else is wrong with an address comes before its being used.
    QSet<quint32> used{address("192.168.0.20"), address("10.99.0.1"),      address("192.168.0.7"),
                       address("192.168.0.1"),  address("192.168.0.0"),    address("192.168.0.255"),
                       address("127.0.0.1"),    address("255.255.255.255")};
    QCOMPARE(checkIpAddress(address(text), office(), used), code);
    used.remove(address(text));
    QCOMPARE(checkIpAddress(address(text), office(), used), code == IPCHECK_USED ? 0U : code);
}

void IpCheckTest::shouldAcceptAnyAddressWithoutANetwork()
{
    for (const char* text : {"192.168.0.0", "192.168.0.1", "192.168.0.7", "192.168.0.255"})
        QCOMPARE(checkIpAddress(address(text), PcNetwork(), {}), 0U);
}

void IpCheckTest::shouldAcceptSimulatedProcessors()
{
    const QSet<quint32> used{address("127.0.1.2")};
    const auto check = [&](const char* text) {
        return checkIpAddress(address(text), office(), used, true);
    };
    QCOMPARE(check("127.0.1.1"), 0U);
    QCOMPARE(check("127.0.1.2"), quint32{IPCHECK_USED});
    QCOMPARE(check("127.0.0.1"), quint32{IPCHECK_UNREASONABLE});
    QCOMPARE(check("127.255.255.255"), quint32{IPCHECK_UNREASONABLE});
    QCOMPARE(check("192.168.0.1"), quint32{IPCHECK_GATEWAY});
    QCOMPARE(checkIpAddress(address("127.0.1.1"), office(), {}), quint32{IPCHECK_UNREASONABLE});
}

void IpCheckTest::shouldIgnoreUnknownSubnets()
{
    PcNetwork network;
    for (const int length : {-1, 0, 33})
        network.adapters.append({address("192.168.0.7"), length});
    QCOMPARE(checkIpAddress(address("192.168.0.255"), network, {}), 0U);
    QCOMPARE(checkIpAddress(address("192.168.0.7"), network, {}), quint32{IPCHECK_SAME_AS_PC});
}

void IpCheckTest::shouldFindDefaultGateways()
{
    QByteArray table =
        "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";
    const auto route = [&](const char* destination, quint32 gateway, const char* flags,
                           const char* mask) {
        // The number whose bytes in memory are in network order.
        const quint32 number = qToBigEndian(gateway);
        table += QByteArray("eth0\t") + destination + '\t'
                 + QByteArray::number(number, 16).rightJustified(8, '0').toUpper() + '\t' + flags
                 + "\t0\t0\t100\t" + mask + "\t0\t0\t0      \n";
    };
    route("00000000", 0xC0A80001, "0003", "00000000");
    route("0000A8C0", 0, "0001", "00FFFFFF");
    route("00000000", 0x0A000001, "0002", "00000000"); // down
    route("00000000", 0x0A000002, "0001", "00000000"); // without gateway
    route("00000000", 0x0A000003, "0003", "00000080"); // half of all addresses
    route("00000000", 0xC0A80001, "0003", "00000000"); // over another adapter
    route("00000000", 0x0A000004, "0003", "00000000");
    QCOMPARE(gatewaysOfRouteTable(table), (QList<quint32>{0xC0A80001, 0x0A000004}));
}

void IpCheckTest::shouldFindNoGatewayInOtherTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("headings") << QByteArray("Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\t"
                                            "Metric\tMask\t\tMTU\tWindow\tIRTT\n");
    QTest::newRow("cut") << QByteArray("eth0\t00000000\t0100A8C0\t0003\t0\t0\t0");
    QTest::newRow("no numbers") << QByteArray("eth0\tx\ty\t0003\t0\t0\t0\t00000000\t0\t0\t0\n");
}

void IpCheckTest::shouldFindNoGatewayInOtherTexts()
{
    QFETCH(QByteArray, text);
    QVERIFY(gatewaysOfRouteTable(text).isEmpty());
}

void IpCheckTest::shouldReadTheNetworkOfThisPc()
{
    const PcNetwork network = readPcNetwork();
    for (const PcAdapter& adapter : network.adapters) {
        QVERIFY(adapter.address != 0);
        QVERIFY(adapter.address != kNoProcessorAddress);
    }
    QVERIFY(!network.gateways.contains(0));
}

#ifdef Q_OS_WIN
void IpCheckTest::shouldReadWhatTheTablesOfWindowsHave()
{
    const PcNetwork network = readPcNetwork();
    QStringList adapters;
    for (const PcAdapter& adapter : network.adapters) {
        adapters.append(
            QStringLiteral("%1/%2").arg(dottedAddress(adapter.address)).arg(adapter.prefixLength));
    }
    adapters.sort();
    QCOMPARE(adapters, adapterTable());
    QStringList gateways;
    for (const quint32 gateway : network.gateways)
        gateways.append(dottedAddress(gateway));
    gateways.sort();
    QCOMPARE(gateways, gatewayTable());
}
#endif

void IpCheckTest::shouldReadTheNetworkOnceASecond()
{
    qint64 now = 50;
    quint32 reads = 0;
    PcNetworkCache cache(
        [&] {
            PcNetwork network;
            network.gateways = {++reads};
            return network;
        },
        [&] { return now; });
    for (int question = 0; question < 20000; ++question)
        QCOMPARE(cache.current().gateways, QList<quint32>{1});
    now += PcNetworkCache::kMaxAgeMs;
    QCOMPARE(cache.current().gateways, QList<quint32>{1});
    ++now;
    QCOMPARE(cache.current().gateways, QList<quint32>{2});
    cache.forget();
    QCOMPARE(cache.current().gateways, QList<quint32>{3});
    QCOMPARE(PcNetworkCache([] { return office(); }).current().adapters.size(), 4);
}

TSA_GUILESS_TEST_MAIN(IpCheckTest)
#include "tst_ip_check.moc"
