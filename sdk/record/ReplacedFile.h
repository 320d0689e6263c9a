#pragma once

#include <QFile>

#include <functional>

class CFileLock;

/// Opens `file` to be written from its beginning, and locks it with `lock`, which has to outlive
/// the writing. Replaces an empty file and one that `isOurs` recognizes, no other: `isOurs` gets
/// the file that is there, open at its beginning. Returns why the file is not opened, `notOurs` if
/// it is another one; empty if it is open.
QString openToReplace(QFile& file, CFileLock& lock, QIODevice::OpenMode flags,
                      const std::function<bool(QFile& former)>& isOurs, const QString& notOurs);
