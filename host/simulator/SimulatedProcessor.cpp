#include "host/simulator/SimulatedProcessor.h"

#include "host/simulator/protocol/LoopbackSockets.h"
#include "host/simulator/protocol/MessageStream.h"

#include <QTcpSocket>

#include <utility>

namespace {

constexpr int kMaxConnections = 8;

/// How many messages are read before other sockets get their turn.
constexpr int kMessagesReadAtOnce = 64;

} // namespace

SimulatedProcessor::SimulatedProcessor(quint32 address, DeviceState state, QObject* parent)
    : QObject(parent)
    , m_address(address)
    , m_state(std::move(state))
{
}

SimulatedProcessor::~SimulatedProcessor()
{
    kill();
}

bool SimulatedProcessor::start(quint16 port)
{
    kill();
    auto server = std::make_unique<QTcpServer>();
    auto datagrams = std::make_unique<QUdpSocket>();
    if (!LoopbackSockets::listen(*server, m_address, port)
        || !LoopbackSockets::bind(*datagrams, m_address, server->serverPort()))
        return false;
    m_server = std::move(server);
    m_datagrams = std::move(datagrams);
    connect(m_server.get(), &QTcpServer::newConnection, this,
            &SimulatedProcessor::acceptConnections);
    connect(m_datagrams.get(), &QUdpSocket::readyRead, this, &SimulatedProcessor::readDatagrams);
    return true;
}

void SimulatedProcessor::kill()
{
    m_mute = false;
    const QList<QTcpSocket*> connections = m_connections.keys();
    m_connections.clear();
    for (QTcpSocket* connection : connections) {
        connection->disconnect(this);
        connection->abort();
        // One of them may be asking for it.
        connection->setParent(nullptr);
        connection->deleteLater();
    }
    m_datagrams.reset();
    m_server.reset();
}

void SimulatedProcessor::setMute(bool mute)
{
    m_mute = mute && m_server;
}

void SimulatedProcessor::setState(const DeviceState& state)
{
    if (std::exchange(m_state, state) == state)
        return;
    if (life() != Life::Alive)
        return;
    for (const auto& stream : qAsConst(m_connections))
        report(0, *stream);
}

void SimulatedProcessor::answer(quint32 token, quint32 receiver, quint16 port)
{
    if (life() == Life::Alive)
        LoopbackSockets::send(*m_datagrams, encode(StateMessage{token, m_state}), receiver, port);
}

SimulatedProcessor::Life SimulatedProcessor::life() const
{
    if (!m_server)
        return Life::Dead;
    return m_mute ? Life::Mute : Life::Alive;
}

void SimulatedProcessor::readDatagrams()
{
    for (int count = 0; count < kMessagesReadAtOnce; ++count) {
        const auto datagram = LoopbackSockets::receive(*m_datagrams);
        if (!datagram)
            return;
        const auto message = decode(datagram->data);
        const auto* probe = message ? std::get_if<ProbeMessage>(&*message) : nullptr;
        if (probe)
            answer(probe->token, datagram->sender, datagram->port);
        else
            ++m_ignored;
    }
}

void SimulatedProcessor::acceptConnections()
{
    while (QTcpSocket* connection = m_server->nextPendingConnection()) {
        if (m_connections.size() >= kMaxConnections
            || !LoopbackSockets::isFromLoopback(*connection)) {
            connection->abort();
            connection->deleteLater();
            continue;
        }
        m_connections.insert(connection, std::make_shared<MessageStream>(*connection));
        connect(connection, &QTcpSocket::readyRead, this,
                [this, connection] { readConnection(connection); });
        connect(connection, &QTcpSocket::disconnected, this, [this, connection] {
            m_connections.remove(connection);
            connection->deleteLater();
        });
    }
}

void SimulatedProcessor::readConnection(QTcpSocket* connection)
{
    for (int count = 0; count < kMessagesReadAtOnce; ++count) {
        // What a message demands may end the connection.
        const auto stream = m_connections.value(connection);
        if (!stream)
            return;
        Message message;
        switch (stream->next(message)) {
        case MessageStream::Found::Nothing:
            return;
        case MessageStream::Found::Overlong:
            ++m_ignored;
            connection->abort();
            return;
        case MessageStream::Found::Malformed:
            ++m_ignored;
            break;
        case MessageStream::Found::Whole:
            obey(message, *stream);
            break;
        }
    }
    QMetaObject::invokeMethod(
        connection, [this, connection] { readConnection(connection); }, Qt::QueuedConnection);
}

void SimulatedProcessor::obey(const Message& message, MessageStream& asking)
{
    if (life() != Life::Alive)
        return;
    DeviceState state = m_state;
    if (const auto* probe = std::get_if<ProbeMessage>(&message)) {
        report(probe->token, asking);
        return;
    }
    if (const auto* light = std::get_if<LightMessage>(&message)) {
        state.lit = light->on;
    } else if (const auto* rename = std::get_if<RenameMessage>(&message)) {
        state.name = rename->name;
    } else {
        ++m_ignored;
        return;
    }
    if (state == m_state)
        return;
    setState(state);
    emit commanded();
}

void SimulatedProcessor::report(quint32 token, MessageStream& stream) const
{
    stream.write(StateMessage{token, m_state});
}
