#include "host/workbench/addresses/PcNetworkReader.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QtEndian>

#include <utility>

namespace {

/// The columns of /proc/net/route, separated by tabs below a line of headings; see proc(5).
/// Addresses are 32-bit hexadecimal numbers whose bytes in memory are in network order.
enum RouteColumn { Destination = 1, Gateway = 2, Flags = 3, Mask = 7, RouteColumns };

constexpr uint kRouteUp = 0x1;
constexpr uint kRouteHasGateway = 0x2;

/// Returns the number in a column; clears `isRoute` if there is none.
quint32 routeNumber(const QByteArray& column, bool& isRoute)
{
    bool isNumber = false;
    const quint32 number = column.trimmed().toUInt(&isNumber, 16);
    isRoute = isRoute && isNumber;
    return number;
}

void addAdapters(const QNetworkInterface& interface, QList<PcAdapter>& adapters)
{
    const QList<QNetworkAddressEntry> entries = interface.addressEntries();
    for (const QNetworkAddressEntry& entry : entries) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
            adapters.append({entry.ip().toIPv4Address(), entry.prefixLength()});
    }
}

qint64 steadyMs()
{
    return QDeadlineTimer::current().deadline();
}

} // namespace

PcNetwork readPcNetwork()
{
    PcNetwork network;
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface& interface : interfaces) {
        if (interface.flags().testFlag(QNetworkInterface::IsUp)
            && !interface.flags().testFlag(QNetworkInterface::IsLoopBack))
            addAdapters(interface, network.adapters);
    }
    // Only Linux has this file; elsewhere no gateway is known.
    QFile routes(QStringLiteral("/proc/net/route"));
    if (routes.open(QIODevice::ReadOnly))
        network.gateways = gatewaysOfRouteTable(routes.readAll());
    return network;
}

QList<quint32> gatewaysOfRouteTable(const QByteArray& text)
{
    QList<quint32> gateways;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> columns = line.split('\t');
        if (columns.size() < RouteColumns)
            continue;
        bool isRoute = true;
        const quint32 destination = routeNumber(columns.at(Destination), isRoute);
        const quint32 mask = routeNumber(columns.at(Mask), isRoute);
        const quint32 flags = routeNumber(columns.at(Flags), isRoute);
        const quint32 gateway = qFromBigEndian(routeNumber(columns.at(Gateway), isRoute));
        const bool isDefault = isRoute && destination == 0 && mask == 0;
        if (isDefault && (flags & kRouteUp) != 0 && (flags & kRouteHasGateway) != 0
            && !gateways.contains(gateway))
            gateways.append(gateway);
    }
    return gateways;
}

PcNetworkCache::PcNetworkCache(Reader read, Clock clock)
    : m_read(std::move(read))
    , m_clock(clock ? std::move(clock) : steadyMs)
{
}

const PcNetwork& PcNetworkCache::current()
{
    const qint64 now = m_clock();
    if (!m_network || now - m_readAt > kMaxAgeMs) {
        m_network = m_read();
        m_readAt = now;
    }
    return *m_network;
}
