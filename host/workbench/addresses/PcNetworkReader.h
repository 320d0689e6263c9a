#pragma once

#include "host/workbench/addresses/IpCheck.h"

#include <QByteArray>

#include <functional>
#include <optional>

/// Returns the active adapters of this PC and its default gateways.
PcNetwork readPcNetwork();

/// Returns the gateways of the default routes in the text of /proc/net/route.
QList<quint32> gatewaysOfRouteTable(const QByteArray& text);

/// Caches the network of the PC, because the panel may check thousands of addresses in a row. Not
/// thread-safe.
class PcNetworkCache final
{
public:
    using Reader = std::function<PcNetwork()>;
    using Clock = std::function<qint64()>; ///< Returns milliseconds of a monotonic clock.

    static constexpr qint64 kMaxAgeMs = 1000;

    explicit PcNetworkCache(Reader read, Clock clock = {});

    /// Returns the network; reads it again if the cached one is older than kMaxAgeMs.
    const PcNetwork& current();

    /// Drops the cached network.
    void forget() { m_network.reset(); }

private:
    Reader m_read;
    Clock m_clock;
    std::optional<PcNetwork> m_network;
    qint64 m_readAt = 0;
};
