#include "host/workbench/program/AnswerEnd.h"

#include <QLocalSocket>
#ifdef Q_OS_WIN
#include <QThread>

#include <windows.h>
#endif

namespace {

#ifdef Q_OS_WIN
/// What is in a pipe when Qt disconnects it is lost. So another thread waits until the client has
/// read all, or is gone.
void disconnectWhenRead(QLocalSocket& socket)
{
    HANDLE pipe = nullptr;
    const HANDLE process = GetCurrentProcess();
    if (!DuplicateHandle(process, reinterpret_cast<HANDLE>(socket.socketDescriptor()), process,
                         &pipe, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
        socket.disconnectFromServer();
        return;
    }
    QThread* waiting = QThread::create([pipe] {
        FlushFileBuffers(pipe);
        CloseHandle(pipe);
    });
    QObject::connect(waiting, &QThread::finished, &socket, &QLocalSocket::disconnectFromServer);
    QObject::connect(waiting, &QThread::finished, waiting, &QObject::deleteLater);
    waiting->start();
}
#else
void disconnectWhenRead(QLocalSocket& socket)
{
    socket.disconnectFromServer();
}
#endif

} // namespace

/// Qt must not be asked to disconnect before all is written: on Windows it would then do so in the
/// middle of its own work with the pipe, and go on with what it has deleted.
void closeWhenRead(QLocalSocket& socket)
{
    if (socket.bytesToWrite() == 0) {
        disconnectWhenRead(socket);
        return;
    }
    QObject::connect(
        &socket, &QLocalSocket::bytesWritten, &socket,
        [&socket] {
            if (socket.state() != QLocalSocket::ConnectedState || socket.bytesToWrite() > 0)
                return;
            QObject::disconnect(&socket, &QLocalSocket::bytesWritten, &socket, nullptr);
            disconnectWhenRead(socket);
        },
        Qt::QueuedConnection);
}
