#pragma once

#include <QFile>

#include <functional>

class CFileLock;

/// Opens `file` to be written from its beginning, and locks it until `lock` ends, which has to
/// outlive the writing. Replaces nothing but an empty file or one that `isOurs` recognizes, which
/// may read `file` from its beginning. Returns the reason if the file is not opened, else an empty
/// text; `notOurs` is the reason if there is another file.
QString openToReplace(QFile& file, CFileLock& lock, QIODevice::OpenMode flags,
                      const std::function<bool(QFile& former)>& isOurs, const QString& notOurs);
