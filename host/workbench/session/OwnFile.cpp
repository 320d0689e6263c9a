#include "host/workbench/session/OwnFile.h"

#include <QFileInfo>
#include <QString>

bool isFree(const QString& path, const std::function<bool()>& isOurs)
{
    const QFileInfo existing(path);
    if (!existing.exists() && !existing.isSymLink())
        return true;
    return existing.isFile() && (existing.size() == 0 || isOurs());
}
