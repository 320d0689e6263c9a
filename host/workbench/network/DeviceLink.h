#pragma once

#include "host/simulator/protocol/Message.h"
#include "host/simulator/protocol/MessageStream.h"
#include "host/workbench/project/NetworkSettings.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

/// The connection to one processor. Asks it again and again whether it is alive, and connects anew
/// when the connection ends.
class DeviceLink final : public QObject
{
    Q_OBJECT

public:
    /// Connects at once.
    DeviceLink(quint32 address, const NetworkSettings& settings, QObject* parent = nullptr);

    /// Sends what changes the processor. What it reported before it has done so is not heard: that
    /// would undo the change here for a moment. Returns false if there is no connection.
    bool command(const Message& message);

signals:
    /// Emitted for the last one of the reports that have arrived.
    void heard(const DeviceState& state);

    /// Emitted when nothing has been heard for the time-out; again only after another report.
    void lost();

private:
    bool send(const Message& message);
    void open();
    void tick();
    void judge();
    void read();

    const quint32 m_address;
    const quint16 m_port;
    QTcpSocket m_socket;
    MessageStream m_stream{m_socket};
    QTimer m_alive;
    QTimer m_silence;         // runs from the first question without an answer
    bool m_isWaiting = false; // for an answer
    quint32 m_token = 0;      // of the last command
    quint32 m_awaited = 0;    // token of the report that comes after the command; 0 for any report
};
