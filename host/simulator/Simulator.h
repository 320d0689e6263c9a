#pragma once

#include "host/simulator/SimulatedProcessor.h"
#include "host/simulator/SimulatorOptions.h"

#include <QObject>
#include <QStringList>
#include <QUdpSocket>

#include <memory>
#include <vector>

/// All simulated processors, and the socket at which they hear broadcasts.
class Simulator final : public QObject
{
    Q_OBJECT

public:
    explicit Simulator(const SimulatorOptions& options, QObject* parent = nullptr);

    /// Opens all sockets. Returns false on failure, with the reason in `problem`.
    bool start(QString& problem);

    quint16 port() const { return m_port; }
    int count() const { return static_cast<int>(m_processors.size()); }
    SimulatedProcessor& processor(int at) { return *m_processors.at(static_cast<std::size_t>(at)); }

    /// Returns how many datagrams and lines were no messages, and were ignored.
    int ignored() const;

    /// Returns address, life and state on one line: "127.0.1.1 alive online none 8 dark Stage
    /// left".
    static QString describe(const SimulatedProcessor& processor);

signals:
    /// Emitted for what is to be printed: a state that a workbench has changed, a death by
    /// --die-after.
    void said(const QString& line);

private:
    void readBroadcasts();
    bool startAll(quint16 port, QString& problem);
    bool hearBroadcasts();
    void dieLater();

    const SimulatorOptions m_options;
    quint16 m_port = 0;
    int m_ignored = 0;
    std::unique_ptr<QUdpSocket> m_broadcasts;
    std::vector<std::unique_ptr<SimulatedProcessor>> m_processors;
};
