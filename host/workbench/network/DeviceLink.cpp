#include "host/workbench/network/DeviceLink.h"

#include "host/simulator/protocol/LoopbackSockets.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr int kReadAtOnce = 64;

} // namespace

DeviceLink::DeviceLink(quint32 address, const NetworkSettings& settings, QObject* parent)
    : QObject(parent)
    , m_address(address)
    , m_port(static_cast<quint16>(settings.port))
{
    connect(&m_socket, &QTcpSocket::connected, this, [this] {
        m_awaited = 0;
        send(ProbeMessage{});
    });
    connect(&m_socket, &QTcpSocket::readyRead, this, &DeviceLink::read);
    connect(&m_alive, &QTimer::timeout, this, &DeviceLink::tick);
    // What has arrived meanwhile is read first: this program may have been the busy one.
    connect(&m_silence, &QTimer::timeout, this, &DeviceLink::judge, Qt::QueuedConnection);
    m_silence.setSingleShot(true);
    m_silence.setTimerType(Qt::PreciseTimer);
    // The last answer may be older than the question by as much as an interval.
    m_silence.setInterval(settings.deadTimeoutMs - settings.aliveIntervalMs);
    m_alive.setTimerType(Qt::PreciseTimer);
    m_alive.start(settings.aliveIntervalMs);
    open();
}

bool DeviceLink::command(const Message& message)
{
    if (!send(message))
        return false;
    // Messages keep their order on the way, so the answer to this is the first report that has to
    // know of the command.
    m_token = std::max(m_token + 1, 1U);
    m_awaited = m_token;
    return send(ProbeMessage{m_token});
}

bool DeviceLink::send(const Message& message)
{
    if (m_socket.state() != QAbstractSocket::ConnectedState)
        return false;
    if (m_stream.write(message))
        return true;
    m_socket.abort();
    return false;
}

void DeviceLink::open()
{
    LoopbackSockets::connectTo(m_socket, m_address, m_port);
}

void DeviceLink::tick()
{
    if (m_socket.state() == QAbstractSocket::UnconnectedState)
        open();
    else
        send(ProbeMessage{});
    if (!std::exchange(m_isWaiting, true))
        m_silence.start();
}

void DeviceLink::judge()
{
    if (!m_isWaiting)
        return;
    m_awaited = 0;
    emit lost();
}

void DeviceLink::read()
{
    // The last report says all. One that reports without end does not hold up the rest.
    std::optional<DeviceState> state;
    auto found = MessageStream::Found::Whole;
    for (int count = 0; count < kReadAtOnce && found != MessageStream::Found::Nothing; ++count) {
        Message message;
        found = m_stream.next(message);
        const auto* report = std::get_if<StateMessage>(&message);
        if (found == MessageStream::Found::Whole && report
            && (m_awaited == 0 || report->token == m_awaited)) {
            m_awaited = 0;
            state = report->state;
        }
        if (found == MessageStream::Found::Overlong) {
            // Whoever answers there is no processor. The next tick tries again.
            m_socket.abort();
            break;
        }
    }
    if (found == MessageStream::Found::Whole || found == MessageStream::Found::Malformed)
        QMetaObject::invokeMethod(this, &DeviceLink::read, Qt::QueuedConnection);
    if (!state)
        return;
    m_isWaiting = false;
    m_silence.stop();
    emit heard(*state);
}
