#include "host/simulator/protocol/MessageStream.h"

#include <QTcpSocket>

namespace {

// A line with its end has to fit in, or it would never be complete.
constexpr int kReadBuffer = 4 * (kMaxMessageBytes + 1);
constexpr int kMostUnsent = 64 * kMaxMessageBytes;

} // namespace

MessageStream::MessageStream(QTcpSocket& socket)
    : m_socket(socket)
{
    m_socket.setReadBufferSize(kReadBuffer);
}

MessageStream::Found MessageStream::next(Message& message)
{
    if (!m_socket.canReadLine())
        return m_socket.bytesAvailable() > kMaxMessageBytes ? Found::Overlong : Found::Nothing;
    QByteArray line = m_socket.readLine(kReadBuffer);
    line.chop(1);
    if (line.size() > kMaxMessageBytes)
        return Found::Overlong;
    const auto decoded = decode(line);
    if (!decoded)
        return Found::Malformed;
    message = *decoded;
    return Found::Whole;
}

bool MessageStream::write(const Message& message)
{
    if (m_socket.bytesToWrite() > kMostUnsent)
        return false;
    m_socket.write(encode(message) + '\n');
    return true;
}
