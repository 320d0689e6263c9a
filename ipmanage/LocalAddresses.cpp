#include "ipmanage/LocalAddresses.h"

#include <QMap>

namespace {

bool isUsable(const SLocalAdapter& adapter)
{
    return adapter.flags.testFlag(QNetworkInterface::IsUp)
           && adapter.flags.testFlag(QNetworkInterface::IsRunning)
           && !adapter.flags.testFlag(QNetworkInterface::IsLoopBack)
           && !adapter.humanReadableName.contains(QLatin1String("Adapter"));
}

QList<QHostAddress> joined(const QMap<QString, QList<QHostAddress>>& addresses)
{
    QList<QHostAddress> all;
    for (const QList<QHostAddress>& some : addresses)
        all.append(some);
    return all;
}

} // namespace

QList<QHostAddress> usableAddresses(const QVector<SLocalAdapter>& adapters)
{
    // Adapters such as bridges and virtual networks may share a hardware address.
    QMap<QString, QList<QHostAddress>> wired;
    QMap<QString, QList<QHostAddress>> wifi;
    for (const SLocalAdapter& adapter : adapters) {
        if (!isUsable(adapter))
            continue;
        QList<QHostAddress>& known = (adapter.isWifi ? wifi : wired)[adapter.hardwareAddress];
        for (const QHostAddress& address : adapter.addresses) {
            if (address.protocol() == QAbstractSocket::IPv4Protocol)
                known.append(address);
        }
    }
    return joined(wired) + joined(wifi);
}

QList<QHostAddress> localAddresses()
{
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    QVector<SLocalAdapter> adapters;
    adapters.reserve(interfaces.size());
    for (const QNetworkInterface& interface : interfaces) {
        SLocalAdapter adapter;
        adapter.hardwareAddress = interface.hardwareAddress();
        adapter.humanReadableName = interface.humanReadableName();
        adapter.flags = interface.flags();
        adapter.isWifi = interface.type() == QNetworkInterface::Wifi;
        const QList<QNetworkAddressEntry> entries = interface.addressEntries();
        for (const QNetworkAddressEntry& entry : entries)
            adapter.addresses.append(entry.ip());
        adapters.append(adapter);
    }
    return usableAddresses(adapters);
}

quint32 proposalBase(const QList<QHostAddress>& addresses)
{
    const QHostAddress localHost(QHostAddress::LocalHost);
    for (const QHostAddress& address : addresses) {
        if (address != localHost && address.toIPv4Address() != 0)
            return address.toIPv4Address();
    }
    return localHost.toIPv4Address();
}
