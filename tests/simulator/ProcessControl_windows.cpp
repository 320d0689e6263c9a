#include "tests/simulator/ProcessControl.h"

#include <windows.h>

#include <tlhelp32.h>

namespace {

void forEachThread(const QProcess& process, DWORD(WINAPI* function)(HANDLE))
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL isThere = Thread32First(snapshot, &entry); isThere;
         isThere = Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID != static_cast<DWORD>(process.processId()))
            continue;
        const HANDLE thread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, entry.th32ThreadID);
        function(thread);
        CloseHandle(thread);
    }
    CloseHandle(snapshot);
}

/// Ctrl+C in the console that this program shares for a moment is for the other one.
BOOL WINAPI ignore(DWORD event)
{
    return event == CTRL_C_EVENT;
}

} // namespace

/// With a console of its own, which nobody sees, nobody else hears what is typed there.
void ProcessControl::prepare(QProcess& process)
{
    process.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments* arguments) { arguments->flags |= CREATE_NO_WINDOW; });
}

void ProcessControl::askToEnd(QProcess& process)
{
    FreeConsole();
    AttachConsole(static_cast<DWORD>(process.processId()));
    SetConsoleCtrlHandler(ignore, TRUE);
    if (!GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0))
        qFatal("there is no console: error %lu", GetLastError());
    FreeConsole();
}

void ProcessControl::pause(const QProcess& process)
{
    forEachThread(process, SuspendThread);
}

void ProcessControl::goOn(const QProcess& process)
{
    forEachThread(process, ResumeThread);
}
