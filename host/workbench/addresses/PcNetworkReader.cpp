#include "host/workbench/addresses/PcNetworkReader.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QtEndian>

#include <utility>

#ifdef Q_OS_WIN
#include <QByteArray>

#include <winsock2.h>

#include <iphlpapi.h>
#include <ws2tcpip.h>
#endif

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

void addAdapters(const QNetworkInterface& device, QList<PcAdapter>& adapters)
{
    const QList<QNetworkAddressEntry> entries = device.addressEntries();
    for (const QNetworkAddressEntry& entry : entries) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
            adapters.append({entry.ip().toIPv4Address(), entry.prefixLength()});
    }
}

#ifdef Q_OS_WIN
/// Returns the default gateways of the active adapters.
QList<quint32> readGateways()
{
    constexpr ULONG kFlags = GAA_FLAG_INCLUDE_GATEWAYS | GAA_FLAG_SKIP_ANYCAST
                             | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    ULONG size = 16384;
    QByteArray memory;
    ULONG result = ERROR_BUFFER_OVERFLOW;
    // There may be more of them each time.
    for (int attempt = 0; result == ERROR_BUFFER_OVERFLOW && attempt < 3; ++attempt) {
        memory.resize(static_cast<int>(size));
        result =
            GetAdaptersAddresses(AF_INET, kFlags, nullptr,
                                 reinterpret_cast<IP_ADAPTER_ADDRESSES*>(memory.data()), &size);
    }
    QList<quint32> gateways;
    if (result != ERROR_SUCCESS)
        return gateways;
    const auto* adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(memory.constData());
    for (; adapter; adapter = adapter->Next) {
        if (adapter->OperStatus != IfOperStatusUp)
            continue;
        for (const auto* gateway = adapter->FirstGatewayAddress; gateway; gateway = gateway->Next) {
            const quint32 address = QHostAddress(gateway->Address.lpSockaddr).toIPv4Address();
            if (address != 0 && !gateways.contains(address))
                gateways.append(address);
        }
    }
    return gateways;
}
#else
QList<quint32> readGateways()
{
    QFile routes(QStringLiteral("/proc/net/route"));
    return routes.open(QIODevice::ReadOnly) ? gatewaysOfRouteTable(routes.readAll())
                                            : QList<quint32>();
}
#endif

qint64 steadyMs()
{
    return QDeadlineTimer::current().deadline();
}

} // namespace

PcNetwork readPcNetwork()
{
    PcNetwork network;
    const QList<QNetworkInterface> devices = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface& device : devices) {
        if (device.flags().testFlag(QNetworkInterface::IsUp)
            && !device.flags().testFlag(QNetworkInterface::IsLoopBack))
            addAdapters(device, network.adapters);
    }
    network.gateways = readGateways();
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
