#pragma once

#include "host/workbench/addresses/IpCheck.h"

#include <QByteArray>

#include <functional>
#include <optional>

/// The adapters of this PC that are up, and its default gateways as far as the system tells.
PcNetwork readPcNetwork();

/// The gateways of the default routes in the text of /proc/net/route.
QList<quint32> gatewaysOfRouteTable(const QByteArray& text);

/// Remembers what the PC is connected to: a run of checks asks for thousands of addresses. One
/// thread at a time.
class PcNetworkCache final
{
public:
    using Reader = std::function<PcNetwork()>;
    using Clock = std::function<qint64()>; ///< Milliseconds that only grow.

    static constexpr qint64 kMaxAgeMs = 1000;

    explicit PcNetworkCache(Reader read, Clock clock = {});

    /// Reads anew what is older than kMaxAgeMs.
    const PcNetwork& current();

    /// The next one who asks gets what is read then.
    void forget() { m_network.reset(); }

private:
    Reader m_read;
    Clock m_clock;
    std::optional<PcNetwork> m_network;
    qint64 m_readAt = 0;
};
