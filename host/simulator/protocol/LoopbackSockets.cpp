#include "host/simulator/protocol/LoopbackSockets.h"

#include "host/simulator/protocol/Loopback.h"
#include "host/simulator/protocol/Message.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

bool LoopbackSockets::bind(QUdpSocket& socket, quint32 address, quint16 port, bool isShared)
{
    if (!Loopback::contains(address))
        return false;
    // A proxy of the application would carry the datagrams elsewhere.
    socket.setProxy(QNetworkProxy::NoProxy);
    return socket.bind(QHostAddress(address), port,
                       isShared ? QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint
                                : QAbstractSocket::BindMode(QAbstractSocket::DontShareAddress));
}

bool LoopbackSockets::listen(QTcpServer& server, quint32 address, quint16 port)
{
    if (!Loopback::contains(address))
        return false;
    server.setProxy(QNetworkProxy::NoProxy);
    return server.listen(QHostAddress(address), port);
}

bool LoopbackSockets::connectTo(QTcpSocket& socket, quint32 address, quint16 port)
{
    if (!Loopback::contains(address))
        return false;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(QHostAddress(address), port);
    return true;
}

bool LoopbackSockets::send(QUdpSocket& socket, const QByteArray& data, quint32 address,
                           quint16 port)
{
    return Loopback::contains(address)
           && socket.writeDatagram(data, QHostAddress(address), port) == data.size();
}

std::optional<LoopbackDatagram> LoopbackSockets::receive(QUdpSocket& socket)
{
    if (!socket.hasPendingDatagrams())
        return std::nullopt;
    // One byte more than is allowed shows that the datagram is too long.
    QByteArray data(kMaxMessageBytes + 1, '\0');
    QHostAddress sender;
    LoopbackDatagram datagram;
    const qint64 size = socket.readDatagram(data.data(), data.size(), &sender, &datagram.port);
    datagram.sender = sender.toIPv4Address();
    if (size > 0 && size <= kMaxMessageBytes && Loopback::contains(datagram.sender))
        datagram.data = data.left(static_cast<int>(size));
    return datagram;
}

bool LoopbackSockets::isFromLoopback(const QTcpSocket& socket)
{
    return Loopback::contains(socket.peerAddress().toIPv4Address());
}
