#include "sdk/validate/ProcessFigures.h"

#include <vector>

#include <windows.h>

#include <tlhelp32.h>

namespace {

std::vector<HANDLE> allHeaps()
{
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    if (count < heaps.size())
        heaps.resize(count);
    return heaps;
}

/// Returns the bytes in use, or none if the heap cannot be read.
std::optional<qint64> bytesIn(HANDLE heap)
{
    if (!HeapLock(heap))
        return std::nullopt;
    qint64 bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
            bytes += entry.cbData;
    }
    const bool isWhole = GetLastError() == ERROR_NO_MORE_ITEMS;
    HeapUnlock(heap);
    return isWhole ? std::optional(bytes) : std::nullopt;
}

} // namespace

const char* const ProcessFigures::kOpenFiles = "open handles";

std::optional<qint64> ProcessFigures::allocatedBytes()
{
    qint64 bytes = 0;
    for (const HANDLE heap : allHeaps()) {
        const std::optional<qint64> some = bytesIn(heap);
        if (!some)
            return std::nullopt;
        bytes += *some;
    }
    return bytes;
}

int ProcessFigures::threads()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return 0;
    const DWORD process = GetCurrentProcessId();
    int count = 0;
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL isThere = Thread32First(snapshot, &thread); isThere;
         isThere = Thread32Next(snapshot, &thread)) {
        if (thread.th32OwnerProcessID == process)
            ++count;
    }
    CloseHandle(snapshot);
    return count;
}

int ProcessFigures::openFiles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return static_cast<int>(count);
}
