#pragma once

#include "host/simulator/protocol/Message.h"

#include <QByteArray>

#include <optional>

class QTcpSocket;

/// Reads and writes the messages of a connection, one a line.
class MessageStream final
{
public:
    /// What next() finds: a message, a line that is none, or a line that has no end in sight.
    enum class Found { Nothing, Whole, Malformed, Overlong };

    /// Has the socket take no more from the network than is read of it. `socket` must outlive this
    /// object.
    explicit MessageStream(QTcpSocket& socket);

    /// Takes the next line. After Overlong the connection cannot be read any further.
    Found next(Message& message);

    /// Returns false if the other end reads so little that the connection is of no use.
    bool write(const Message& message);

private:
    QTcpSocket& m_socket;
};
