#pragma once

#include <QtGlobal>

/// The network of the simulated processors: IPv4 addresses in host byte order, on the loopback
/// interface of this PC only.
namespace Loopback {

constexpr quint32 kPcAddress = 0x7F000001;        ///< 127.0.0.1, the workbench itself.
constexpr quint32 kBroadcastAddress = 0x7FFFFFFF; ///< 127.255.255.255

constexpr quint16 kDefaultPort = 47800;
constexpr int kLeastPort = 1024; ///< Lower ports need privileges.
constexpr int kMostPort = 65535;
constexpr int kMaxDevices = 255; ///< As many as a project holds.

/// Returns whether the address is in 127.0.0.0/8. Everything that the simulator and the workbench
/// bind, connect to, send to and accept from passes this test.
constexpr bool contains(quint32 address)
{
    return address >> 24U == 127;
}

/// Returns whether a simulated processor can have the address: neither the PC, nor the network, nor
/// its broadcast address. A record with the address of the PC has no address.
constexpr bool isDevice(quint32 address)
{
    return address > kPcAddress && address < kBroadcastAddress;
}

/// Returns whether `count` devices can have the addresses from `first` on.
constexpr bool isDeviceRange(quint32 first, int count)
{
    return count > 0 && count <= kMaxDevices && isDevice(first)
           && isDevice(first + static_cast<quint32>(count) - 1);
}

} // namespace Loopback
