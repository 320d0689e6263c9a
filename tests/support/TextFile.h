#pragma once

#include <QByteArray>

/// Returns the bytes of a text file with those lines: Windows ends a line with CR LF.
inline QByteArray asTextFile(QByteArray lines)
{
#ifdef Q_OS_WIN
    lines.replace("\n", "\r\n");
#endif
    return lines;
}
