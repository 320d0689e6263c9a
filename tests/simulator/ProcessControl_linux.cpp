#include "tests/simulator/ProcessControl.h"

#include <csignal>

void ProcessControl::prepare(QProcess& process)
{
    Q_UNUSED(process)
}

void ProcessControl::askToEnd(QProcess& process)
{
    process.terminate();
}

void ProcessControl::pause(const QProcess& process)
{
    ::kill(static_cast<pid_t>(process.processId()), SIGSTOP);
}

void ProcessControl::goOn(const QProcess& process)
{
    ::kill(static_cast<pid_t>(process.processId()), SIGCONT);
}
