#include "sdk/record/FileLock.h"

#include <QDir>

#include <utility>

#include <windows.h>

bool CFileLock::take(const QString& path)
{
    release();
    const std::wstring name = QDir::toNativeSeparators(path).toStdWString();
    const HANDLE file =
        CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return true;
    // What is locked nobody else can read: a byte that no file has.
    OVERLAPPED place{};
    place.Offset = MAXDWORD - 1;
    place.OffsetHigh = MAXLONG;
    const bool isOthers =
        !LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)
        && GetLastError() == ERROR_LOCK_VIOLATION;
    m_file = reinterpret_cast<qintptr>(file);
    if (isOthers)
        release();
    return !isOthers;
}

void CFileLock::release()
{
    if (m_file != kNone)
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(m_file, kNone)));
}
