#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

class QTcpServer;
class QTcpSocket;
class QUdpSocket;

/// One datagram of a device or of the workbench.
struct LoopbackDatagram
{
    QByteArray data; ///< Empty for one that is too long.
    quint32 sender = 0;
    quint16 port = 0;
};

/// The only functions that open sockets for the simulated network. Each refuses an address outside
/// 127.0.0.0/8, and returns false then and when the system refuses.
namespace LoopbackSockets {

/// Binds to `address`; port 0 takes any free one. With `isShared`, several programs receive there.
bool bind(QUdpSocket& socket, quint32 address, quint16 port, bool isShared = false);

bool listen(QTcpServer& server, quint32 address, quint16 port);

/// Starts to connect. The socket reports the outcome.
bool connectTo(QTcpSocket& socket, quint32 address, quint16 port);

bool send(QUdpSocket& socket, const QByteArray& data, quint32 address, quint16 port);

/// Returns the next datagram, or nothing if there is none. One from outside comes without its data.
std::optional<LoopbackDatagram> receive(QUdpSocket& socket);

/// Returns whether the other end of a connection is on this PC.
bool isFromLoopback(const QTcpSocket& socket);

} // namespace LoopbackSockets
