#pragma once

#include "host/simulator/protocol/Message.h"

#include <QHash>
#include <QObject>
#include <QTcpServer>
#include <QUdpSocket>

#include <memory>
#include <optional>

class MessageStream;

/// One simulated processor: answers probes at its address, by datagram and over connections, and
/// obeys what a connection demands.
class SimulatedProcessor final : public QObject
{
    Q_OBJECT

public:
    /// Mute ones keep their sockets and say nothing, as a device that hangs; dead ones have none.
    enum class Life { Dead, Mute, Alive };

    SimulatedProcessor(quint32 address, DeviceState state, QObject* parent = nullptr);
    ~SimulatedProcessor() override;

    /// Opens the sockets; port 0 takes any free one. Returns false if another program has the port.
    bool start(quint16 port);

    /// Closes the sockets.
    void kill();

    void setMute(bool mute);

    /// Changes the state at the device, and reports it over all connections.
    void setState(const DeviceState& state);

    /// Sends the state to a workbench that asked for it.
    void answer(quint32 token, quint32 receiver, quint16 port);

    quint32 address() const { return m_address; }
    quint16 port() const { return m_server ? m_server->serverPort() : 0; }
    Life life() const;
    const DeviceState& state() const { return m_state; }

    /// Returns how many datagrams and lines were no messages to a device.
    int ignored() const { return m_ignored; }

signals:
    /// Emitted when a workbench has changed the state.
    void commanded();

private:
    void readDatagrams();
    void acceptConnections();
    void readConnection(QTcpSocket* connection);
    void obey(const Message& message, MessageStream& asking);
    void report(quint32 token, MessageStream& stream) const;

    const quint32 m_address;
    DeviceState m_state;
    bool m_mute = false;
    int m_ignored = 0;
    std::unique_ptr<QUdpSocket> m_datagrams;
    std::unique_ptr<QTcpServer> m_server;
    QHash<QTcpSocket*, std::shared_ptr<MessageStream>> m_connections; // children of m_server
};
