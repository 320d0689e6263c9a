#include "tests/support/WorkbenchRun.h"

#include <QLocalSocket>

namespace {

constexpr int kAnswerMs = 10000;

} // namespace

QString workbenchProgram()
{
    return QStringLiteral(WORKBENCH_PROGRAM);
}

QStringList withPanel(const QStringList& arguments)
{
    return QStringList{QStringLiteral("--library"), panelLibrary()} + arguments;
}

QString panelLibrary()
{
    return QStringLiteral(WORKBENCH_PANEL_LIBRARY);
}

QString sampleProject()
{
    return QStringLiteral(WORKBENCH_PROJECTS "/sample.json");
}

ProgramRun runWorkbench(const QStringList& arguments, const QByteArray& input)
{
    return runProgram(workbenchProgram(), withPanel(arguments), input);
}

#ifdef Q_OS_UNIX
ProgramRun runWorkbenchOnAFullDisk(const QStringList& arguments)
{
    return runProgram(QStringLiteral("/bin/sh"),
                      QStringList{QStringLiteral("-c"),
                                  QStringLiteral("trap '' XFSZ; ulimit -f 1; exec \"$@\""),
                                  QStringLiteral("sh"), workbenchProgram()}
                          + withPanel(arguments));
}
#endif

QByteArray inspectWorkbench(const QString& name)
{
    QLocalSocket socket;
    socket.connectToServer(name, QIODevice::ReadOnly);
    if (!socket.waitForConnected(kAnswerMs))
        return {};
    QByteArray told;
    while (socket.state() == QLocalSocket::ConnectedState && socket.waitForReadyRead(kAnswerMs))
        told += socket.readAll();
    return told + socket.readAll();
}
