#pragma once

#include "host/simulator/protocol/LoopbackSockets.h"
#include "host/workbench/network/DeviceReports.h"
#include "host/workbench/project/NetworkSettings.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QUdpSocket>

#include <optional>

/// Whom a detection asks.
struct ProbePlan
{
    QSet<quint32> addresses; ///< Asked one by one; others than those of devices are left out.
    bool broadcasts = false; ///< Whether everyone is asked, too.
};

/// Asks processors for their states by datagram, three times at most, and waits for the answers.
class DeviceProbe final : public QObject
{
    Q_OBJECT

public:
    DeviceProbe(const NetworkSettings& settings, const ProbePlan& plan, QObject* parent = nullptr);

    /// Returns false if no socket can be opened.
    bool start();

    /// Takes no answer any more.
    void stop();

    /// Returns how many datagrams were no answers of processors that were asked.
    int ignored() const { return m_ignored; }

signals:
    /// Emitted once for each processor, for several at a time where they come so.
    void answered(const QList<DeviceReport>& answers);

    /// `done` is less than `total`.
    void proceeded(int done, int total);

    /// Emitted when the time is over, or when nobody is left to answer.
    void finished();

    /// Emitted by stop().
    void stopped();

private:
    void tick();
    void ask();
    void read();
    std::optional<DeviceReport> answerIn(const LoopbackDatagram& datagram) const;
    void proceed();

    const NetworkSettings m_settings;
    const bool m_broadcasts;
    QSet<quint32> m_silent; // asked one by one, without an answer yet
    QSet<quint32> m_answered;
    const int m_asked;
    const quint32 m_token;
    int m_ignored = 0;
    int m_ticks = 0;
    bool m_isStopped = false;
    QUdpSocket m_socket;
    QTimer m_timer;
};
