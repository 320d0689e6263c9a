#pragma once

#include <QList>
#include <QSet>
#include <QtGlobal>

/// One IPv4 address of a network adapter, in host byte order, and the length of its subnet's
/// prefix.
struct PcAdapter
{
    quint32 address = 0;
    int prefixLength = 0;
};

/// What the PC is connected to.
struct PcNetwork
{
    QList<PcAdapter> adapters; ///< Without the loopback adapter.
    QList<quint32> gateways;   ///< Of the default routes.
};

/// Whether a processor can have the address, on whatever network: it is none of those that start
/// with 0 or 127, no multicast, reserved or broadcast address.
bool isHostAddress(quint32 address);

/// The IPCheckResult for an address that the host does not take, 0 for one that it does. `used` are
/// the addresses that are taken. Address 0 stands for a text that is no address, too, and is
/// IPCHECK_UNREASONABLE; so is an address that names a subnet of the PC. When there are several
/// reasons, IPCHECK_USED comes last: it is the only one that a user can cure here.
quint32 checkIpAddress(quint32 address, const PcNetwork& network, const QSet<quint32>& used);
