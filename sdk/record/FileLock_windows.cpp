#include "sdk/record/FileLock.h"

#include <QDir>
#include <QFileInfo>

#include <string>
#include <utility>

#include <windows.h>

namespace {

/// Returns the form in which the system takes paths of any length.
std::wstring longPath(const QString& path)
{
    const QString native = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    if (native.startsWith(QLatin1String("\\\\?\\")))
        return native.toStdWString();
    const bool isOnServer = native.startsWith(QLatin1String("\\\\"));
    return (isOnServer ? QStringLiteral("\\\\?\\UNC\\") + native.mid(2)
                       : QStringLiteral("\\\\?\\") + native)
        .toStdWString();
}

} // namespace

bool CFileLock::take(const QString& path)
{
    release();
    const std::wstring name = longPath(path);
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
