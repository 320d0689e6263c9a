#include "host/workbench/addresses/IpCheck.h"

#include "Interface/IPStatusCodes.h"
#include "host/simulator/protocol/Loopback.h"

#include <algorithm>

namespace {

constexpr quint32 kEverywhere = 0xFFFFFFFF;

/// Returns the code of a special address of the adapter's subnet, or 0.
quint32 checkInSubnet(quint32 address, const PcAdapter& adapter)
{
    // Subnets of one or two addresses have neither a broadcast address nor one of their own.
    if (adapter.prefixLength < 1 || adapter.prefixLength > 30)
        return 0;
    const quint32 hostPart = kEverywhere >> static_cast<unsigned>(adapter.prefixLength);
    if (address == (adapter.address | hostPart))
        return IPCHECK_BROADCAST;
    return address == (adapter.address & ~hostPart) ? quint32{IPCHECK_UNREASONABLE} : 0;
}

} // namespace

bool isHostAddress(quint32 address)
{
    const quint32 first = address >> 24U;
    return first != 0 && first != 127 && first < 224;
}

quint32 checkIpAddress(quint32 address, const PcNetwork& network, const QSet<quint32>& used,
                       bool onLoopback)
{
    if (onLoopback && Loopback::isDevice(address))
        return used.contains(address) ? quint32{IPCHECK_USED} : 0;
    if (address == 0)
        return IPCHECK_UNREASONABLE;
    if (address >> 24U == 0)
        return IPCHECK_STARTS_WITH_ZERO;
    if (address == kEverywhere)
        return IPCHECK_BROADCAST;
    if (!isHostAddress(address))
        return IPCHECK_UNREASONABLE;
    const QList<PcAdapter>& adapters = network.adapters;
    if (std::any_of(adapters.begin(), adapters.end(),
                    [=](const PcAdapter& adapter) { return adapter.address == address; }))
        return IPCHECK_SAME_AS_PC;
    if (network.gateways.contains(address))
        return IPCHECK_GATEWAY;
    for (const PcAdapter& adapter : adapters) {
        if (const quint32 code = checkInSubnet(address, adapter))
            return code;
    }
    return used.contains(address) ? quint32{IPCHECK_USED} : 0;
}
