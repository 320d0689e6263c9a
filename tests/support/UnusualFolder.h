#pragma once

#include <QDir>
#include <QString>

/// Makes a folder with Chinese letters below `folder`; with `isLong`, one whose path has more than
/// the 260 characters that many functions of Windows take. Returns its path, or an empty text.
inline QString makeUnusualFolder(const QString& folder, bool isLong)
{
    QString path = folder + QString::fromUtf8("/工程 目录");
    // A file system may take no more than 255 bytes in a name.
    for (int level = 0; isLong && level < 6; ++level)
        path += QLatin1Char('/') + QString(50, QChar(0x5927 + level));
    return QDir().mkpath(path) ? path : QString();
}
