#include "host/workbench/window/SameFile.h"

#include <QFileInfo>

namespace {

#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity kCase = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity kCase = Qt::CaseSensitive;
#endif

bool isSamePath(const QString& one, const QString& other)
{
    return one.compare(other, kCase) == 0;
}

} // namespace

bool isSameFile(const QString& one, const QString& other)
{
    if (one.isEmpty() || other.isEmpty())
        return false;
    const QFileInfo first(one);
    const QFileInfo second(other);
    return isSamePath(first.absoluteFilePath(), second.absoluteFilePath())
           || (first.exists() && isSamePath(first.canonicalFilePath(), second.canonicalFilePath()));
}
