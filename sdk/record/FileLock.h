#pragma once

#include <QString>

/// Keeps a file for one owner among all programs, by a lock of the system that ends with the
/// process at the latest. Others can read the file meanwhile.
class CFileLock final
{
public:
    CFileLock() = default;
    ~CFileLock() { release(); }

    CFileLock(const CFileLock&) = delete;
    CFileLock& operator=(const CFileLock&) = delete;

    /// Locks the file at `path`, which is created if nothing is there. Returns false if somebody
    /// else has locked it. A file that cannot be locked at all counts as free.
    bool take(const QString& path);

    void release();

private:
    static constexpr qintptr kNone = -1;

    qintptr m_file = kNone; // a descriptor; on Windows a handle
};
