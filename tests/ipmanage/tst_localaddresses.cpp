#include "ipmanage/LocalAddresses.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

namespace {

constexpr QNetworkInterface::InterfaceFlags kRunning =
    QNetworkInterface::IsUp | QNetworkInterface::IsRunning | QNetworkInterface::CanBroadcast;

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

SLocalAdapter adapter(const char* hardwareAddress, const QStringList& addresses)
{
    SLocalAdapter made;
    made.hardwareAddress = text(hardwareAddress);
    made.humanReadableName = text("Ethernet");
    made.flags = kRunning;
    for (const QString& address : addresses)
        made.addresses.append(QHostAddress(address));
    return made;
}

SLocalAdapter wifi(const char* hardwareAddress, const QStringList& addresses)
{
    SLocalAdapter made = adapter(hardwareAddress, addresses);
    made.isWifi = true;
    return made;
}

QString usable(const QVector<SLocalAdapter>& adapters)
{
    QStringList list;
    for (const QHostAddress& address : usableAddresses(adapters))
        list.append(address.toString());
    return list.join(QLatin1Char(' '));
}

QString base(const QStringList& addresses)
{
    QList<QHostAddress> list;
    for (const QString& address : addresses)
        list.append(QHostAddress(address));
    return QHostAddress(proposalBase(list)).toString();
}

} // namespace

class LocalAddressesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldOrderByHardwareAddress();
    void shouldPutWifiLast();
    void shouldKeepAddressesOfEqualHardwareAddresses();
    void shouldTakeIPv4Only();
    void shouldUseRunningAdaptersOnly_data();
    void shouldUseRunningAdaptersOnly();
    void shouldSkipAdaptersByName_data();
    void shouldSkipAdaptersByName();
    void shouldStartAfterTheFirstRealAddress();
    void shouldStartAfterTheLocalHostOtherwise();
    void shouldReturnTheAddressesOfThisPC();
};

void LocalAddressesTest::shouldOrderByHardwareAddress()
{
    QCOMPARE(usable({adapter("00:BB", {text("10.0.0.2"), text("10.0.0.1")}),
                     adapter("00:AA", {text("10.0.0.3")})}),
             text("10.0.0.3 10.0.0.2 10.0.0.1"));
    QCOMPARE(usable({}), QString());
}

void LocalAddressesTest::shouldPutWifiLast()
{
    QCOMPARE(usable({wifi("00:AA", {text("10.0.0.1")}), wifi("00:00", {text("10.0.0.2")}),
                     adapter("00:BB", {text("10.0.0.3")}), adapter("00:AA", {text("10.0.0.4")})}),
             text("10.0.0.4 10.0.0.3 10.0.0.2 10.0.0.1"));
}

void LocalAddressesTest::shouldKeepAddressesOfEqualHardwareAddresses()
{
    QCOMPARE(usable({adapter("00:AA", {text("10.0.0.2")}), adapter("00:AA", {text("10.0.0.1")}),
                     adapter("", {text("10.0.0.3")}), adapter("", {text("10.0.0.4")})}),
             text("10.0.0.3 10.0.0.4 10.0.0.2 10.0.0.1"));
}

void LocalAddressesTest::shouldTakeIPv4Only()
{
    QCOMPARE(usable({adapter("00:AA", {text("fe80::1"), text("10.0.0.1"), text("::ffff:10.0.0.2")}),
                     adapter("00:BB", {text("fe80::2")}), adapter("00:CC", {})}),
             text("10.0.0.1"));
}

void LocalAddressesTest::shouldUseRunningAdaptersOnly_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("addresses");

    const auto row = [](const char* name, QNetworkInterface::InterfaceFlags flags, bool taken) {
        QTest::newRow(name) << static_cast<int>(flags) << (taken ? text("10.0.0.1") : QString());
    };
    row("running", kRunning, true);
    row("nothing", {}, false);
    row("not up", QNetworkInterface::IsRunning, false);
    row("not running", QNetworkInterface::IsUp, false);
    row("loop-back", kRunning | QNetworkInterface::IsLoopBack, false);
    row("point to point", kRunning | QNetworkInterface::IsPointToPoint, true);
}

void LocalAddressesTest::shouldUseRunningAdaptersOnly()
{
    QFETCH(int, flags);
    QFETCH(QString, addresses);
    SLocalAdapter one = adapter("00:AA", {text("10.0.0.1")});
    one.flags = QNetworkInterface::InterfaceFlags(flags);
    QCOMPARE(usable({one}), addresses);
}

void LocalAddressesTest::shouldSkipAdaptersByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("taken");

    QTest::newRow("virtual") << text("VMware Network Adapter VMnet8") << false;
    QTest::newRow("at the end") << text("My Adapter") << false;
    QTest::newRow("in a word") << text("TheAdapters") << false;
    QTest::newRow("small") << text("my adapter") << true;
    QTest::newRow("capital") << text("ADAPTER") << true;
    QTest::newRow("nothing") << QString() << true;
}

void LocalAddressesTest::shouldSkipAdaptersByName()
{
    QFETCH(QString, name);
    QFETCH(bool, taken);
    SLocalAdapter one = adapter("00:AA", {text("10.0.0.1")});
    one.humanReadableName = name;
    QCOMPARE(!usable({one}).isEmpty(), taken);
}

void LocalAddressesTest::shouldStartAfterTheFirstRealAddress()
{
    QCOMPARE(base({text("10.0.0.1"), text("10.0.0.2")}), text("10.0.0.1"));
    QCOMPARE(base({text("127.0.0.1"), text("0.0.0.0"), text("10.0.0.2")}), text("10.0.0.2"));
    QCOMPARE(base({text("fe80::1"), text("127.0.0.2")}), text("127.0.0.2"));
}

void LocalAddressesTest::shouldStartAfterTheLocalHostOtherwise()
{
    QCOMPARE(base({}), text("127.0.0.1"));
    QCOMPARE(base({text("127.0.0.1"), text("0.0.0.0"), text("fe80::1")}), text("127.0.0.1"));
}

void LocalAddressesTest::shouldReturnTheAddressesOfThisPC()
{
    const QList<QHostAddress> all = QNetworkInterface::allAddresses();
    const QList<QHostAddress> local = localAddresses();
    for (const QHostAddress& address : local) {
        QCOMPARE(address.protocol(), QAbstractSocket::IPv4Protocol);
        QVERIFY(all.contains(address));
    }
    QVERIFY(proposalBase(local) != 0);
}

TSA_GUILESS_TEST_MAIN(LocalAddressesTest)
#include "tst_localaddresses.moc"
