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

/// The network connections of the PC.
struct PcNetwork
{
    QList<PcAdapter> adapters; ///< Without the loopback adapter.
    QList<quint32> gateways;   ///< Of the default routes.
};

/// Returns whether a processor can have the address on some network: it does not start with 0 or
/// 127 and is no multicast, reserved or broadcast address.
bool isHostAddress(quint32 address);

/// Returns 0 if the host accepts the address, else the IPCheckResult. `used` are the addresses that
/// are already in use. Address 0, which also stands for a text that is no address, is
/// IPCHECK_UNREASONABLE; so is the address of a subnet of the PC. IPCHECK_USED is returned only if
/// there is no other reason.
///
/// With `onLoopback`, the processors are simulated ones on this PC, and have addresses there, too.
quint32 checkIpAddress(quint32 address, const PcNetwork& network, const QSet<quint32>& used,
                       bool onLoopback = false);
