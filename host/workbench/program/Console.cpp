#include "host/workbench/program/Console.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <cstdio>
#include <windows.h>

void attachToConsole()
{
    const auto isOpen = [](DWORD number) {
        return GetFileType(GetStdHandle(number)) != FILE_TYPE_UNKNOWN;
    };
    const bool hasOutput = isOpen(STD_OUTPUT_HANDLE);
    const bool hasErrors = isOpen(STD_ERROR_HANDLE);
    if ((hasOutput && hasErrors) || !AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    // A failure leaves the stream closed, as it was.
    if (!hasOutput)
        static_cast<void>(std::freopen("CONOUT$", "w", stdout));
    if (!hasErrors)
        static_cast<void>(std::freopen("CONOUT$", "w", stderr));
}
#else
void attachToConsole()
{
}
#endif
