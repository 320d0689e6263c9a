#include "host/workbench/window/SameFile.h"

#include <QFileInfo>

bool isSameFile(const QString& one, const QString& other)
{
    if (one.isEmpty() || other.isEmpty())
        return false;
    const QFileInfo first(one);
    const QFileInfo second(other);
    return first.absoluteFilePath() == second.absoluteFilePath()
           || (first.exists() && first.canonicalFilePath() == second.canonicalFilePath());
}
