#pragma once

#include "host/simulator/protocol/LoopbackSockets.h"
#include "host/simulator/protocol/Message.h"
#include "tests/simulator/SimulatorProgram.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QByteArrayList>
#include <QStatusBar>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUdpSocket>

#include <functional>

constexpr quint32 kFirst = 0x7F000101;    // 127.0.1.1
constexpr quint32 kStranger = 0x7F000201; // 127.0.2.1
constexpr int kShortMs = 500;
constexpr int kLongMs = 10000; ///< No test waits for the end of it.

/// A workbench in front of simulated processors, which start with the test.
struct NetworkUnderTest
{
    explicit NetworkUnderTest(int count, int strategy = 0)
    {
        const QStringList arguments{QStringLiteral("--count"), QString::number(count),
                                    QStringLiteral("--backup-every"), QStringLiteral("2")};
        if (!simulator.start(arguments))
            QTest::qFail(qPrintable(simulator.problem()), __FILE__, __LINE__);
        Project project;
        project.network.enabled = true;
        project.network.port = simulator.port();
        project.network.probeTimeoutMs = kShortMs;
        project.network.aliveIntervalMs = 50;
        project.network.deadTimeoutMs = kLongMs;
        project.answers.detectStrategy = strategy;
        project.answers.detectResult = 7;
        for (int at = 0; at < count; ++at)
            project.ipList.append({kFirst + static_cast<quint32>(at), QString()});
        workbench.store().replace(project);
        workbench.waitForPanel();
    }

    void setNetwork(qint32 NetworkSettings::*field, int milliseconds)
    {
        NetworkSettings settings = project().network;
        settings.*field = milliseconds;
        workbench.store().setNetwork(settings);
    }

    quint32 detect() { return workbench.handler()->DetectAllDevices(); }
    Project project() { return workbench.store().snapshot(); }
    QString message() { return workbench.window.statusBar()->currentMessage(); }

    /// The processor of that address, a default one if there is none.
    ProcessorNode at(quint32 address)
    {
        const Project all = project();
        for (const ProcessorNode& node : all.processors) {
            if (node.ipAddress == address)
                return node;
        }
        return {};
    }

    bool isLit(quint32 address) { return project().litFrontPanels.contains(at(address).id); }

    int onlineCount()
    {
        int count = 0;
        const Project all = project();
        for (const ProcessorNode& node : all.processors)
            count += node.online ? 1 : 0;
        return count;
    }

    /// How many lines of the log begin like this or, in records of the host, end so.
    int logged(const QString& text)
    {
        TraceModel& trace = workbench.session.trace();
        trace.flush();
        int count = 0;
        for (int row = 0; row < trace.rowCount(); ++row)
            count += trace.entry(row).text.startsWith(text) || trace.entry(row).text.endsWith(text);
        return count;
    }

    SimulatorProgram simulator;
    WorkbenchUnderTest workbench;
};

/// Returns the state of a processor that has this name.
inline DeviceState named(const char* name)
{
    DeviceState state;
    state.name = QString::fromUtf8(name);
    return state;
}

/// Somebody on this PC who answers probes as told, and connections, too.
class Stranger final : public QObject
{
public:
    Stranger(quint32 address, quint16 port)
    {
        if (!LoopbackSockets::bind(m_datagrams, address, port)
            || !LoopbackSockets::bind(m_otherPort, address, 0)
            || !LoopbackSockets::listen(m_server, address, port))
            QTest::qFail("the address is in use", __FILE__, __LINE__);
        connect(&m_datagrams, &QUdpSocket::readyRead, this, [this] { answerProbe(); });
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* connection = m_server.nextPendingConnection();
            ++connections;
            m_connection = connection;
            connect(connection, &QTcpSocket::readyRead, this, [this, connection] {
                hear(connection->readAll());
                connection->write(overConnection);
            });
        });
    }

    /// Answers the last probe.
    void answer(const QByteArray& data)
    {
        LoopbackSockets::send(usesOtherPort ? m_otherPort : m_datagrams, data, m_asker,
                              m_askerPort);
    }

    /// Says it over the last connection.
    void say(const Message& message) { m_connection->write(encode(message) + '\n'); }

    std::function<QByteArrayList(quint32 token)> byDatagram;
    std::function<void(const Message&)> onMessage; ///< For what comes over a connection.
    QByteArray overConnection;
    bool usesOtherPort = false;
    int probes = 0;
    int connections = 0;

private:
    void answerProbe()
    {
        while (const auto datagram = LoopbackSockets::receive(m_datagrams)) {
            ++probes;
            const auto message = decode(datagram->data);
            const auto* probe = message ? std::get_if<ProbeMessage>(&*message) : nullptr;
            m_asker = datagram->sender;
            m_askerPort = datagram->port;
            const QByteArrayList answers = probe ? byDatagram(probe->token) : QByteArrayList();
            for (const QByteArray& data : answers)
                answer(data);
        }
    }

    void hear(const QByteArray& data)
    {
        if (!onMessage)
            return;
        m_heard += data;
        for (int end = m_heard.indexOf('\n'); end >= 0; end = m_heard.indexOf('\n')) {
            if (const auto message = decode(m_heard.left(end)))
                onMessage(*message);
            m_heard.remove(0, end + 1);
        }
    }

    QUdpSocket m_datagrams;
    QUdpSocket m_otherPort;
    QTcpServer m_server;
    QTcpSocket* m_connection = nullptr; // the server's
    QByteArray m_heard;
    quint32 m_asker = 0;
    quint16 m_askerPort = 0;
};
