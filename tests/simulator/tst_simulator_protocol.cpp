#include "host/simulator/protocol/Loopback.h"
#include "host/simulator/protocol/LoopbackSockets.h"
#include "host/simulator/protocol/Message.h"
#include "host/simulator/protocol/MessageStream.h"
#include "tests/support/Seed.h"
#include "tests/support/WarningTrap.h"

#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUdpSocket>

#include <memory>

namespace {

const DeviceState kUnusual{QString::fromUtf8("B\xC3\xBChne \"links\" \xF0\x9F\x8E\xAD"), false,
                           Redundancy::IsBackup, kMaxDeviceOutputs, true};

QByteArray stateWith(const char* field, const char* value)
{
    const QList<QPair<QByteArray, QByteArray>> fields{{"v", "1"},
                                                      {"type", "\"state\""},
                                                      {"token", "7"},
                                                      {"name", "\"Left\""},
                                                      {"online", "true"},
                                                      {"outputs", "8"},
                                                      {"redundancy", "\"none\""},
                                                      {"lit", "false"}};
    QByteArrayList members;
    for (const auto& [name, usual] : fields) {
        if (name != field)
            members.append('"' + name + "\":" + usual);
        else if (value)
            members.append('"' + name + "\":" + value);
    }
    return '{' + members.join(',') + '}';
}

template <typename Kind>
Kind decodedAs(const QByteArray& data)
{
    const auto message = decode(data);
    const auto* kind = message ? std::get_if<Kind>(&*message) : nullptr;
    if (!kind)
        QTest::qFail("another message, or none", __FILE__, __LINE__);
    return kind ? *kind : Kind{};
}

} // namespace

class SimulatorProtocolTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadWhatItWrites();
    void shouldKeepTheLongestMessageWithinItsLimit();
    void shouldRefuse_data();
    void shouldRefuse();
    void shouldSurviveRandomChanges();
    void shouldStayOnLoopback_data();
    void shouldStayOnLoopback();
    void shouldHaveOneHomeForItsSockets();
    void shouldRefuseRangesThatLeaveLoopback();
    void shouldReadLinesOfAConnection();
    void shouldGiveUpALineWithoutAnEnd();
};

void SimulatorProtocolTest::shouldReadWhatItWrites()
{
    QCOMPARE(decodedAs<ProbeMessage>(encode(ProbeMessage{0xFFFFFFFF})).token, 0xFFFFFFFFU);
    const auto state = decodedAs<StateMessage>(encode(StateMessage{7, kUnusual}));
    QCOMPARE(state.token, 7U);
    QVERIFY(state.state == kUnusual);
    QVERIFY(decodedAs<LightMessage>(encode(LightMessage{true})).on);
    QVERIFY(!decodedAs<LightMessage>(encode(LightMessage{false})).on);
    QCOMPARE(decodedAs<RenameMessage>(encode(RenameMessage{kUnusual.name})).name, kUnusual.name);
}

void SimulatorProtocolTest::shouldKeepTheLongestMessageWithinItsLimit()
{
    for (const QChar character : {QChar(0x4E2D), QChar(0x22), QChar(0x5C)}) {
        DeviceState state = kUnusual;
        state.name = QString(kMaxDeviceNameLength, character);
        const QByteArray data = encode(StateMessage{0xFFFFFFFF, state});
        QVERIFY(data.size() <= kMaxMessageBytes);
        QVERIFY(decodedAs<StateMessage>(data).state == state);
    }
}

void SimulatorProtocolTest::shouldRefuse_data()
{
    QTest::addColumn<QByteArray>("data");
    QVERIFY(decode(stateWith("", nullptr)));
    const auto row = [](const char* name, const QByteArray& data) { QTest::newRow(name) << data; };
    row("nothing", {});
    row("no JSON", "hello");
    row("list", "[]");
    row("number", "1");
    row("deep nesting", QByteArray(1000, '['));
    row("two objects", R"({"v":1,"type":"probe","token":1}{})");
    row("invalid UTF-8", stateWith("name", "\"\xFF\xFE\""));
    row("other type", R"({"v":1,"type":"reset","token":1})");
    row("no type", R"({"v":1,"token":1})");
    row("no version", R"({"type":"probe","token":1})");
    row("newer version", R"({"v":2,"type":"probe","token":1})");
    row("version as a text", R"({"v":"1","type":"probe","token":1})");
    row("field too many", R"({"v":1,"type":"probe","token":1,"more":0})");
    row("negative token", R"({"v":1,"type":"probe","token":-1})");
    row("large token", R"({"v":1,"type":"probe","token":4294967296})");
    row("huge token", R"({"v":1,"type":"probe","token":1e300})");
    row("part of a token", R"({"v":1,"type":"probe","token":1.5})");
    row("light as a number", R"({"v":1,"type":"light","on":1})");
    row("rename to nothing", R"({"v":1,"type":"rename","name":""})");
    for (const char* field :
         {"v", "type", "token", "name", "online", "outputs", "redundancy", "lit"})
        QTest::addRow("state without %s", field) << stateWith(field, nullptr);
    for (const char* field : {"name", "online", "outputs", "redundancy", "lit"})
        QTest::addRow("state with null as %s", field) << stateWith(field, "null");
    row("no outputs", stateWith("outputs", "0"));
    row("many outputs", stateWith("outputs", "256"));
    row("unknown redundancy", stateWith("redundancy", "\"both\""));
    row("blank name", stateWith("name", "\" \""));
    row("line break in a name", stateWith("name", "\"a\\nb\""));
    row("line separator in a name", stateWith("name", "\"a\\u2028b\""));
    row("half a character", stateWith("name", "\"a\\ud800\""));
    row("long name", stateWith("name", '"' + QByteArray(kMaxDeviceNameLength + 1, 'x') + '"'));
    row("long message", stateWith("name", "\"x\"") + QByteArray(kMaxMessageBytes, ' '));
}

void SimulatorProtocolTest::shouldRefuse()
{
    QFETCH(QByteArray, data);
    QVERIFY(!decode(data));
}

void SimulatorProtocolTest::shouldSurviveRandomChanges()
{
    QRandomGenerator random(firstSeed());
    const QByteArray whole = encode(StateMessage{7, kUnusual});
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray data = whole;
        for (int change = random.bounded(1, 4); change > 0; --change) {
            const int at = random.bounded(data.size());
            switch (random.bounded(3)) {
            case 0:
                data[at] = static_cast<char>(random.bounded(256));
                break;
            case 1:
                data.truncate(at);
                break;
            default:
                data.insert(at, data.mid(random.bounded(data.size()), random.bounded(40)));
            }
            if (data.isEmpty())
                break;
        }
        const auto message = decode(data);
        if (!message) {
            ++refused;
            continue;
        }
        // What is taken is within the limits, so it can be said again.
        QVERIFY2(decode(encode(*message)), data.constData());
    }
    QVERIFY(refused > 10000);
}

void SimulatorProtocolTest::shouldStayOnLoopback_data()
{
    QTest::addColumn<quint32>("address");
    QTest::addColumn<bool>("isLoopback");
    QTest::addColumn<bool>("isDevice");
    QTest::newRow("everywhere") << 0x00000000U << false << false;
    QTest::newRow("before") << 0x7EFFFFFFU << false << false;
    QTest::newRow("network") << 0x7F000000U << true << false;
    QTest::newRow("PC") << 0x7F000001U << true << false;
    QTest::newRow("first device") << 0x7F000002U << true << true;
    QTest::newRow("last device") << 0x7FFFFFFEU << true << true;
    QTest::newRow("broadcast") << 0x7FFFFFFFU << true << false;
    QTest::newRow("behind") << 0x80000000U << false << false;
    QTest::newRow("private network") << 0xC0A80001U << false << false;
    QTest::newRow("multicast") << 0xE0000001U << false << false;
    QTest::newRow("broadcast of all") << 0xFFFFFFFFU << false << false;
}

void SimulatorProtocolTest::shouldStayOnLoopback()
{
    QFETCH(quint32, address);
    QFETCH(bool, isLoopback);
    QFETCH(bool, isDevice);
    QCOMPARE(Loopback::contains(address), isLoopback);
    QCOMPARE(Loopback::isDevice(address), isDevice);
    if (isLoopback)
        return;
    QUdpSocket sender;
    QVERIFY(LoopbackSockets::bind(sender, Loopback::kPcAddress, 0));
    QVERIFY(!LoopbackSockets::send(sender, "x", address, 9));
    QUdpSocket datagrams;
    QVERIFY(!LoopbackSockets::bind(datagrams, address, 0));
    QCOMPARE(datagrams.state(), QAbstractSocket::UnconnectedState);
    QTcpServer server;
    QVERIFY(!LoopbackSockets::listen(server, address, 0));
    QVERIFY(!server.isListening());
    QTcpSocket socket;
    QVERIFY(!LoopbackSockets::connectTo(socket, address, 9));
    QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
}

void SimulatorProtocolTest::shouldHaveOneHomeForItsSockets()
{
    const QRegularExpression opening(
        QStringLiteral("(\\.|->)(bind|listen|connectToHost|writeDatagram|readDatagram|"
                       "joinMulticastGroup|setSocketDescriptor)\\("));
    QStringList homes;
    const QStringList folders = QStringLiteral(NETWORK_SOURCES).split(QLatin1Char(':'));
    for (const QString& folder : folders) {
        QDirIterator files(folder, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            if (opening.match(QString::fromUtf8(file.readAll())).hasMatch())
                homes.append(files.fileName());
        }
    }
    QCOMPARE(homes, QStringList(QStringLiteral("LoopbackSockets.cpp")));
}

void SimulatorProtocolTest::shouldRefuseRangesThatLeaveLoopback()
{
    QVERIFY(Loopback::isDeviceRange(0x7F000002, 1));
    QVERIFY(Loopback::isDeviceRange(0x7F000101, Loopback::kMaxDevices));
    QVERIFY(Loopback::isDeviceRange(0x7FFFFFFE, 1));
    QVERIFY(!Loopback::isDeviceRange(0x7FFFFFFE, 2));
    QVERIFY(!Loopback::isDeviceRange(0x7F000001, 1));
    QVERIFY(!Loopback::isDeviceRange(0xFFFFFFFF, 255));
    QVERIFY(!Loopback::isDeviceRange(0x7F000101, 0));
    QVERIFY(!Loopback::isDeviceRange(0x7F000101, -1));
    QVERIFY(!Loopback::isDeviceRange(0x7F000101, Loopback::kMaxDevices + 1));
}

namespace {

/// Two ends of a connection.
struct Connection
{
    Connection()
    {
        if (!LoopbackSockets::listen(server, Loopback::kPcAddress, 0)
            || !LoopbackSockets::connectTo(sender, Loopback::kPcAddress, server.serverPort())
            || !server.waitForNewConnection(30000))
            QTest::qFail("no connection", __FILE__, __LINE__);
        receiver.reset(server.nextPendingConnection());
        stream = std::make_unique<MessageStream>(*receiver);
    }

    MessageStream::Found next(Message& message)
    {
        auto found = MessageStream::Found::Nothing;
        const auto read = [&] {
            found = stream->next(message);
            return found != MessageStream::Found::Nothing;
        };
        if (!QTest::qWaitFor(read))
            QTest::qFail("nothing came", __FILE__, __LINE__);
        return found;
    }

    QTcpServer server;
    QTcpSocket sender;
    std::unique_ptr<QTcpSocket> receiver;
    std::unique_ptr<MessageStream> stream;
};

} // namespace

void SimulatorProtocolTest::shouldReadLinesOfAConnection()
{
    Connection connection;
    const QByteArray probe = encode(ProbeMessage{5});
    const QByteArray longest = probe + QByteArray(kMaxMessageBytes - probe.size(), ' ');
    connection.sender.write(probe + "\n\nnonsense\n" + longest + '\n' + longest.left(20));
    Message message;
    QCOMPARE(connection.next(message), MessageStream::Found::Whole);
    QCOMPARE(std::get<ProbeMessage>(message).token, 5U);
    QCOMPARE(connection.next(message), MessageStream::Found::Malformed);
    QCOMPARE(connection.next(message), MessageStream::Found::Malformed);
    QCOMPARE(connection.next(message), MessageStream::Found::Whole);
    QCOMPARE(connection.stream->next(message), MessageStream::Found::Nothing);
    connection.sender.write(longest.mid(20) + '\n');
    QCOMPARE(connection.next(message), MessageStream::Found::Whole);
}

void SimulatorProtocolTest::shouldGiveUpALineWithoutAnEnd()
{
    for (const bool hasEnd : {false, true}) {
        Connection connection;
        connection.sender.write(QByteArray(kMaxMessageBytes + 1, 'x') + (hasEnd ? "\n" : ""));
        Message message;
        QCOMPARE(connection.next(message), MessageStream::Found::Overlong);
    }
}

TSA_GUILESS_TEST_MAIN(SimulatorProtocolTest)

#include "tst_simulator_protocol.moc"
