#include "host/workbench/network/DeviceProbe.h"

#include <QRandomGenerator>

#include <algorithm>

namespace {

constexpr int kTicks = 12;
constexpr int kTicksOfARound = 4;

/// How many answers are taken before the rest of the program gets its turn.
constexpr int kDatagramsAtOnce = 64;

QSet<quint32> devicesOf(const QSet<quint32>& addresses)
{
    QSet<quint32> devices;
    for (const quint32 address : addresses) {
        if (Loopback::isDevice(address))
            devices.insert(address);
    }
    return devices;
}

} // namespace

DeviceProbe::DeviceProbe(const NetworkSettings& settings, const ProbePlan& plan, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_broadcasts(plan.broadcasts)
    , m_silent(devicesOf(plan.addresses))
    , m_asked(m_silent.size())
    , m_token(QRandomGenerator::system()->generate() | 1U)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &DeviceProbe::read);
    connect(&m_timer, &QTimer::timeout, this, &DeviceProbe::tick);
    m_timer.setTimerType(Qt::PreciseTimer);
}

bool DeviceProbe::start()
{
    if (!LoopbackSockets::bind(m_socket, Loopback::kPcAddress, 0))
        return false;
    m_timer.start(std::max(m_settings.probeTimeoutMs / kTicks, 1));
    ask();
    if (m_broadcasts)
        emit proceeded(0, kTicks);
    else if (!m_silent.isEmpty())
        emit proceeded(0, m_asked);
    else
        QMetaObject::invokeMethod(this, &DeviceProbe::finished, Qt::QueuedConnection);
    return true;
}

void DeviceProbe::stop()
{
    m_isStopped = true;
    m_timer.stop();
    m_socket.close();
    emit stopped();
}

void DeviceProbe::tick()
{
    if (++m_ticks >= kTicks) {
        m_timer.stop();
        emit finished();
        return;
    }
    // Nothing promises that a datagram arrives.
    if (m_ticks % kTicksOfARound == 0)
        ask();
    if (m_broadcasts)
        emit proceeded(m_ticks, kTicks);
}

void DeviceProbe::ask()
{
    const QByteArray probe = encode(ProbeMessage{m_token});
    const auto port = static_cast<quint16>(m_settings.port);
    QList<quint32> silent = m_silent.values();
    std::sort(silent.begin(), silent.end());
    for (const quint32 address : qAsConst(silent))
        LoopbackSockets::send(m_socket, probe, address, port);
    if (m_broadcasts)
        LoopbackSockets::send(m_socket, probe, Loopback::kBroadcastAddress, port);
}

void DeviceProbe::read()
{
    QList<DeviceReport> answers;
    for (int count = 0; count < kDatagramsAtOnce; ++count) {
        const auto datagram = LoopbackSockets::receive(m_socket);
        if (!datagram)
            break;
        const auto answer = answerIn(*datagram);
        // No project has room for more than that, whoever answers.
        if (!answer || m_answered.size() >= m_asked + Loopback::kMaxDevices) {
            ++m_ignored;
            continue;
        }
        // Whoever is asked twice may answer twice.
        if (m_answered.contains(answer->address))
            continue;
        m_answered.insert(answer->address);
        m_silent.remove(answer->address);
        answers.append(*answer);
    }
    if (answers.isEmpty())
        return;
    // New processors are numbered in this order.
    std::sort(answers.begin(), answers.end(),
              [](const DeviceReport& one, const DeviceReport& other) {
                  return one.address < other.address;
              });
    emit answered(answers);
    // What the answers raise may end the detection.
    if (!m_isStopped)
        proceed();
}

/// Returns the answer in a datagram of a processor that was asked.
std::optional<DeviceReport> DeviceProbe::answerIn(const LoopbackDatagram& datagram) const
{
    const auto message = decode(datagram.data);
    const auto* reply = message ? std::get_if<StateMessage>(&*message) : nullptr;
    const bool isAsked = m_answered.contains(datagram.sender) || m_silent.contains(datagram.sender)
                         || (m_broadcasts && Loopback::isDevice(datagram.sender));
    if (!reply || !isAsked || reply->token != m_token || datagram.port != m_settings.port)
        return std::nullopt;
    return DeviceReport{datagram.sender, reply->state};
}

/// A broadcast does not tell how many will answer; the ticks report for it how the time goes by.
void DeviceProbe::proceed()
{
    if (m_broadcasts)
        return;
    if (!m_silent.isEmpty()) {
        emit proceeded(m_asked - m_silent.size(), m_asked);
        return;
    }
    m_timer.stop();
    emit finished();
}
