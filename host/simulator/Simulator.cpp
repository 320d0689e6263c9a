#include "host/simulator/Simulator.h"

#include "host/simulator/protocol/Loopback.h"
#include "host/simulator/protocol/LoopbackSockets.h"

#include <QHostAddress>
#include <QRandomGenerator>
#include <QTimer>

namespace {

/// How many free ports are tried where the port is left open.
constexpr int kPortTries = 20;

constexpr int kReadAtOnce = 64;

#ifdef Q_OS_WIN
// There a socket of one address hears broadcasts, too, and nobody may be given their address.
constexpr bool kNeedsBroadcastSocket = false;
#else
constexpr bool kNeedsBroadcastSocket = true;
#endif

constexpr qint32 kOutputs[] = {4, 8, 16, 20};

QString dotted(quint32 address)
{
    return QHostAddress(address).toString();
}

/// The state in which the device of that index begins.
DeviceState firstState(const SimulatorOptions& options, int at, QRandomGenerator& random)
{
    DeviceState state;
    state.name = options.names.value(at, QStringLiteral("Device %1").arg(at + 1));
    state.outputs = kOutputs[random.bounded(4)];
    if (options.backupEvery > 0) {
        const int place = at % options.backupEvery;
        if (place == options.backupEvery - 1)
            state.redundancy = Redundancy::IsBackup;
        else if (place == options.backupEvery - 2 && at + 1 < options.count)
            state.redundancy = Redundancy::HasBackup;
    }
    return state;
}

} // namespace

Simulator::Simulator(const SimulatorOptions& options, QObject* parent)
    : QObject(parent)
    , m_options(options)
{
    QRandomGenerator random(options.seed);
    for (int at = 0; at < options.count; ++at) {
        const quint32 address = options.base + static_cast<quint32>(at);
        m_processors.push_back(
            std::make_unique<SimulatedProcessor>(address, firstState(options, at, random)));
        const SimulatedProcessor* processor = m_processors.back().get();
        connect(processor, &SimulatedProcessor::commanded, this, [this, processor] {
            emit said(QStringLiteral("changed ") + describe(*processor));
        });
    }
}

bool Simulator::start(QString& problem)
{
    bool isStarted = startAll(m_options.port, problem);
    for (int tries = 1; !isStarted && m_options.port == 0 && tries < kPortTries; ++tries)
        isStarted = startAll(0, problem);
    if (isStarted)
        dieLater();
    return isStarted;
}

int Simulator::ignored() const
{
    int count = m_ignored;
    for (const auto& processor : m_processors)
        count += processor->ignored();
    return count;
}

QString Simulator::describe(const SimulatedProcessor& processor)
{
    static constexpr const char* kLives[] = {"dead", "mute", "alive"};
    const DeviceState& state = processor.state();
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
        .arg(dotted(processor.address()), QLatin1String(kLives[static_cast<int>(processor.life())]),
             state.online ? QStringLiteral("online") : QStringLiteral("offline"),
             redundancyName(state.redundancy), QString::number(state.outputs),
             state.lit ? QStringLiteral("lit") : QStringLiteral("dark"), state.name);
}

void Simulator::readBroadcasts()
{
    for (int count = 0; count < kReadAtOnce; ++count) {
        const auto datagram = LoopbackSockets::receive(*m_broadcasts);
        if (!datagram)
            return;
        const auto message = decode(datagram->data);
        const auto* probe = message ? std::get_if<ProbeMessage>(&*message) : nullptr;
        if (!probe) {
            ++m_ignored;
            continue;
        }
        for (const auto& processor : m_processors)
            processor->answer(probe->token, datagram->sender, datagram->port);
    }
}

/// With port 0, the first processor decides the port of all.
bool Simulator::startAll(quint16 port, QString& problem)
{
    m_port = port;
    bool isStarted = true;
    for (const auto& processor : m_processors) {
        isStarted = processor->start(m_port);
        if (!isStarted) {
            problem = QStringLiteral("port %1 of %2 is in use")
                          .arg(m_port)
                          .arg(dotted(processor->address()));
            break;
        }
        m_port = processor->port();
    }
    if (isStarted && !hearBroadcasts()) {
        problem = QStringLiteral("port %1 of %2 is in use")
                      .arg(m_port)
                      .arg(dotted(Loopback::kBroadcastAddress));
        isStarted = false;
    }
    if (!isStarted) {
        for (const auto& processor : m_processors)
            processor->kill();
    }
    return isStarted;
}

/// Several simulators may share a port with addresses of their own, so they share the broadcasts.
bool Simulator::hearBroadcasts()
{
    m_broadcasts = std::make_unique<QUdpSocket>();
    connect(m_broadcasts.get(), &QUdpSocket::readyRead, this, &Simulator::readBroadcasts);
    return LoopbackSockets::bind(*m_broadcasts, Loopback::kBroadcastAddress, m_port, true)
           || !kNeedsBroadcastSocket;
}

void Simulator::dieLater()
{
    if (m_options.dieAfterMs == 0)
        return;
    const int victim = QRandomGenerator(m_options.seed).bounded(m_options.count);
    QTimer::singleShot(m_options.dieAfterMs, Qt::PreciseTimer, this, [this, victim] {
        processor(victim).kill();
        emit said(QStringLiteral("died ") + describe(processor(victim)));
    });
}
