#include "host/simulator/protocol/Loopback.h"
#include "host/simulator/protocol/LoopbackSockets.h"
#include "host/simulator/protocol/Message.h"
#include "tests/simulator/SimulatorProgram.h"
#include "tests/support/WarningTrap.h"

#include <QSet>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUdpSocket>

namespace {

constexpr quint32 kFirst = 0x7F000101; // 127.0.1.1

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Collects the answers to probes.
class Prober final
{
public:
    explicit Prober(quint16 port)
        : m_port(port)
    {
        if (!LoopbackSockets::bind(m_socket, Loopback::kPcAddress, 0))
            QTest::qFail("no socket", __FILE__, __LINE__);
    }

    void send(const QByteArray& data, quint32 address)
    {
        if (!LoopbackSockets::send(m_socket, data, address, m_port))
            QTest::qFail("not sent", __FILE__, __LINE__);
    }

    /// Probes until that many have answered. Returns whether that is so.
    bool find(int count, quint32 address)
    {
        m_found.clear();
        send(encode(ProbeMessage{77}), address);
        return QTest::qWaitFor([&] {
            while (const auto datagram = LoopbackSockets::receive(m_socket)) {
                const auto message = decode(datagram->data);
                const auto* state = message ? std::get_if<StateMessage>(&*message) : nullptr;
                if (state && state->token == 77 && datagram->port == m_port)
                    m_found.insert(datagram->sender);
            }
            return m_found.size() >= count;
        });
    }

    QSet<quint32> found() const { return m_found; }

private:
    const quint16 m_port;
    QUdpSocket m_socket;
    QSet<quint32> m_found;
};

/// Returns the next line of a connection.
QByteArray nextLine(QTcpSocket& socket)
{
    if (!QTest::qWaitFor([&] { return socket.canReadLine(); }))
        QTest::qFail("no line came", __FILE__, __LINE__);
    return socket.readLine().trimmed();
}

DeviceState stateIn(const QByteArray& line)
{
    const auto message = decode(line);
    const auto* state = message ? std::get_if<StateMessage>(&*message) : nullptr;
    if (!state)
        QTest::qFail(line.constData(), __FILE__, __LINE__);
    return state ? state->state : DeviceState();
}

} // namespace

/// The program as a user starts it.
class ProcessorSimTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseArguments_data();
    void shouldRefuseArguments();
    void shouldRefuseAnOccupiedPort_data();
    void shouldRefuseAnOccupiedPort();
    void shouldReportAndObeyOverAConnection();
    void shouldObeyCommands();
    void shouldEnd();
#ifndef Q_OS_WIN // In Wine a datagram socket of one address has all, and a second one none.
    void shouldNameAndPairProcessors();
    void shouldAnswerProbes();
    void shouldDieAndComeBack();
    void shouldDieByItself();
    void shouldIgnoreWhatIsNoMessage();
#endif
};

void ProcessorSimTest::shouldRefuseArguments_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* arguments, const char* reason) {
        QTest::newRow(arguments) << QString::fromUtf8(arguments) << QString::fromUtf8(reason);
    };
    row("--count 0", "--count: a whole number from 1 to 255 is expected");
    row("--count 256", "--count: a whole number from 1 to 255 is expected");
    row("--count many", "--count: a whole number from 1 to 255 is expected");
    row("--count 99999999999999999999", "--count: a whole number from 1 to 255 is expected");
    row("--port -1", "--port: a whole number from 0 to 65535 is expected");
    row("--port 65536", "--port: a whole number from 0 to 65535 is expected");
    row("--port 80", "--port: ports below 1024 need privileges");
    row("--base 192.168.0.1", "--base: all addresses have to be within 127.0.0.2");
    row("--base 0.0.0.0", "--base: all addresses have to be within 127.0.0.2");
    row("--base 127.0.0.1", "--base: all addresses have to be within 127.0.0.2");
    row("--base 126.255.255.255 --count 2", "--base: all addresses have to be within 127.0.0.2");
    row("--base 127.255.255.254 --count 2", "--base: all addresses have to be within 127.0.0.2");
    row("--base localhost", "--base: an address such as 127.0.1.1 is expected");
    row("--base 127.1", "--base: an address such as 127.0.1.1 is expected");
    row("--base ::1", "--base: an address such as 127.0.1.1 is expected");
    row("--names A,,B", "--names: names of 1 to 128 characters");
    row("--names A,B --count 1", "--names: there are more names than processors");
    row("--seed -1", "--seed: a whole number from 0 to 4294967295 is expected");
    row("--backup-every 1", "--backup-every: a backup needs a processor before it");
    row("--die-after never", "--die-after: a whole number");
    row("--unknown", "Unknown option 'unknown'");
    row("more", "\"more\" is no option");
}

void ProcessorSimTest::shouldRefuseArguments()
{
    QFETCH(QString, arguments);
    QFETCH(QString, reason);
    SimulatorProgram simulator;
    QVERIFY(!simulator.start(arguments.split(QLatin1Char(' '))));
    QCOMPARE(simulator.exitCode(), 1);
    QVERIFY2(simulator.problem().contains(reason), qPrintable(simulator.problem()));
}

void ProcessorSimTest::shouldRefuseAnOccupiedPort_data()
{
    QTest::addColumn<bool>("isDatagram");
    QTest::newRow("connections") << false;
    QTest::newRow("datagrams") << true;
}

void ProcessorSimTest::shouldRefuseAnOccupiedPort()
{
    QFETCH(bool, isDatagram);
    QTcpServer server;
    QUdpSocket socket;
    QVERIFY(isDatagram ? LoopbackSockets::bind(socket, kFirst, 0)
                       : LoopbackSockets::listen(server, kFirst, 0));
    const int port = isDatagram ? socket.localPort() : server.serverPort();
    SimulatorProgram simulator;
    QVERIFY(!simulator.start({QStringLiteral("--count"), QStringLiteral("1"),
                              QStringLiteral("--port"), QString::number(port)}));
    QCOMPARE(simulator.exitCode(), 1);
    QCOMPARE(simulator.problem().trimmed(),
             QStringLiteral("processor-sim: port %1 of 127.0.1.1 is in use").arg(port));
}

void ProcessorSimTest::shouldReportAndObeyOverAConnection()
{
    SimulatorProgram simulator;
    QVERIFY(simulator.start(words("--count 1 --names Right")));
    QTcpSocket socket;
    QVERIFY(LoopbackSockets::connectTo(socket, kFirst, simulator.port()));
    socket.write(encode(ProbeMessage{9}) + '\n');
    DeviceState state = stateIn(nextLine(socket));
    QCOMPARE(state.name, QStringLiteral("Right"));
    QVERIFY(state.online && !state.lit && state.redundancy == Redundancy::None);

    socket.write(encode(LightMessage{true}) + '\n');
    QVERIFY(stateIn(nextLine(socket)).lit);
    QVERIFY(simulator.waitForLine(QStringLiteral("changed 127.0.1.1 "))
                .endsWith(QStringLiteral(" lit Right")));
    socket.write(encode(RenameMessage{QStringLiteral("Stage")}) + '\n');
    QCOMPARE(stateIn(nextLine(socket)).name, QStringLiteral("Stage"));

    // What is switched at the device is reported, too.
    QVERIFY(simulator.command(QStringLiteral("light 1 off")).startsWith(QStringLiteral("ok ")));
    QVERIFY(!stateIn(nextLine(socket)).lit);
}

void ProcessorSimTest::shouldObeyCommands()
{
    SimulatorProgram simulator;
    QVERIFY(simulator.start(words("--count 1 --seed 3")));
    const auto says = [&](const char* command, const char* answer) {
        const QString said = simulator.command(QString::fromUtf8(command));
        return said.startsWith(QString::fromUtf8(answer));
    };
    QVERIFY(says("outputs 1 20", "ok 127.0.1.1 alive online none 20 dark Device 1"));
    QVERIFY(
        says("name 127.0.1.1 Front of house", "ok 127.0.1.1 alive online none 20 dark Front of"));
    QVERIFY(says("online 1 off", "ok 127.0.1.1 alive offline none 20 dark"));
    QVERIFY(says("redundancy 1 hasBackup", "ok 127.0.1.1 alive offline hasBackup 20 dark"));
    QVERIFY(says("light 1 on", "ok 127.0.1.1 alive offline hasBackup 20 lit"));
    QVERIFY(says("light 1 bright", "error \"light 1 bright\" cannot be done"));
    QVERIFY(says("outputs 1 0", "error"));
    QVERIFY(says("outputs 1 256", "error"));
    QVERIFY(says("redundancy 1 twice", "error"));
    QVERIFY(says("name 1", "error"));
    QVERIFY(says("kill 2", "error there is no processor \"2\""));
    QVERIFY(says("kill 0", "error"));
    QVERIFY(says("kill 127.0.1.2", "error"));
    QVERIFY(says("explode 1", "error \"explode\" is no command"));
    QVERIFY(says("list", "ok 1"));
    QVERIFY(says("help", "ok"));
    QVERIFY(says(QByteArray(5000, 'x').constData(), "error"));
    QVERIFY(says("list", "ok 1"));
}

void ProcessorSimTest::shouldEnd()
{
    SimulatorProgram byInput;
    QVERIFY(byInput.start(words("--count 1")));
    QCOMPARE(byInput.endInput(), 0);
    SimulatorProgram inputOpen;
    QVERIFY(inputOpen.start(words("--count 1")));
    QCOMPARE(inputOpen.terminate(), 0);
    SimulatorProgram bySignal;
    QVERIFY(bySignal.start(words("--count 1 --no-input")));
    QCOMPARE(bySignal.terminate(), 0);
    // The ports are free again.
    SimulatorProgram next;
    QVERIFY2(next.start({QStringLiteral("--count"), QStringLiteral("1"), QStringLiteral("--port"),
                         QString::number(bySignal.port())}),
             qPrintable(next.problem()));
}

#ifndef Q_OS_WIN
void ProcessorSimTest::shouldNameAndPairProcessors()
{
    SimulatorProgram simulator;
    QVERIFY(simulator.start(words("--count 2 --names Left,Right --backup-every 2")));
    QTcpSocket socket;
    QVERIFY(LoopbackSockets::connectTo(socket, kFirst + 1, simulator.port()));
    socket.write(encode(ProbeMessage{9}) + '\n');
    const DeviceState state = stateIn(nextLine(socket));
    QCOMPARE(state.name, QStringLiteral("Right"));
    QVERIFY(state.online && !state.lit && state.redundancy == Redundancy::IsBackup);
}

void ProcessorSimTest::shouldAnswerProbes()
{
    SimulatorProgram simulator;
    QVERIFY2(simulator.start(words("--count 50")), qPrintable(simulator.problem()));
    Prober prober(simulator.port());
    QVERIFY(prober.find(1, kFirst + 49));
    QCOMPARE(prober.found(), QSet<quint32>{kFirst + 49});
    QVERIFY(prober.find(50, Loopback::kBroadcastAddress));
    for (quint32 at = 0; at < 50; ++at)
        QVERIFY(prober.found().contains(kFirst + at));
}

void ProcessorSimTest::shouldDieAndComeBack()
{
    SimulatorProgram simulator;
    QVERIFY(simulator.start(words("--count 3")));
    QTcpSocket socket;
    QVERIFY(LoopbackSockets::connectTo(socket, kFirst + 1, simulator.port()));
    socket.write(encode(ProbeMessage{}) + '\n');
    nextLine(socket);
    QVERIFY(simulator.command(QStringLiteral("kill 127.0.1.2")).contains(QStringLiteral(" dead ")));
    QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QVERIFY(simulator.command(QStringLiteral("mute 3")).contains(QStringLiteral(" mute ")));
    Prober prober(simulator.port());
    QVERIFY(prober.find(1, Loopback::kBroadcastAddress));
    QCOMPARE(prober.found(), QSet<quint32>{kFirst});

    // Its port is taken meanwhile, and free again.
    {
        QTcpServer other;
        QVERIFY(LoopbackSockets::listen(other, kFirst + 1, simulator.port()));
        QVERIFY(simulator.command(QStringLiteral("start 2")).startsWith(QStringLiteral("error")));
    }
    QVERIFY(simulator.command(QStringLiteral("start 2")).contains(QStringLiteral(" alive ")));
    QVERIFY(simulator.command(QStringLiteral("start 3")).contains(QStringLiteral(" alive ")));
    QVERIFY(prober.find(3, Loopback::kBroadcastAddress));
}

void ProcessorSimTest::shouldDieByItself()
{
    SimulatorProgram simulator;
    QVERIFY(simulator.start(words("--count 3 --seed 5 --die-after 1")));
    const QString died = simulator.waitForLine(QStringLiteral("died "));
    QVERIFY2(died.contains(QStringLiteral(" dead ")), qPrintable(died));
    // The seed decides.
    SimulatorProgram again;
    QVERIFY(again.start(words("--count 3 --seed 5 --die-after 1")));
    QCOMPARE(again.waitForLine(QStringLiteral("died ")), died);
}

void ProcessorSimTest::shouldIgnoreWhatIsNoMessage()
{
    SimulatorProgram simulator;
    QVERIFY(simulator.start(words("--count 2")));
    Prober prober(simulator.port());
    const QByteArrayList bad{"hello", QByteArray(60000, 'x'), encode(StateMessage{77, {}}),
                             encode(LightMessage{true})};
    for (const QByteArray& data : bad) {
        prober.send(data, kFirst);
        prober.send(data, Loopback::kBroadcastAddress);
    }
    QTcpSocket endless;
    QVERIFY(LoopbackSockets::connectTo(endless, kFirst, simulator.port()));
    endless.write(QByteArray(100000, 'x'));
    QTRY_COMPARE(endless.state(), QAbstractSocket::UnconnectedState);
    QTcpSocket wrong;
    QVERIFY(LoopbackSockets::connectTo(wrong, kFirst, simulator.port()));
    wrong.write("{}\n" + encode(ProbeMessage{1}) + '\n');
    QVERIFY(!stateIn(nextLine(wrong)).lit);
    QTRY_COMPARE(simulator.command(QStringLiteral("ignored")), QStringLiteral("ok 10"));
    QVERIFY(prober.find(2, Loopback::kBroadcastAddress));
}
#endif

TSA_GUILESS_TEST_MAIN(ProcessorSimTest)

#include "tst_processor_sim.moc"
