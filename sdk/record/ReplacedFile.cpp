#include "sdk/record/ReplacedFile.h"

#include "sdk/record/FileLock.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

struct ReplacedFileMessages
{
    Q_DECLARE_TR_FUNCTIONS(ReplacedFile)
};

} // namespace

QString openToReplace(QFile& file, CFileLock& lock, QIODevice::OpenMode flags,
                      const std::function<bool(QFile& former)>& isOurs, const QString& notOurs)
{
    const QFileInfo existing(file);
    // Opening a pipe could block. A link to nothing would make a file elsewhere.
    if ((existing.exists() || existing.isSymLink()) && !existing.isFile())
        return ReplacedFileMessages::tr("it is not a regular file");
    if (!lock.take(file.fileName()))
        return ReplacedFileMessages::tr("it is being written already");
    QString reason;
    QFile former(file.fileName());
    if (former.size() > 0 && !(former.open(QIODevice::ReadOnly) && isOurs(former)))
        reason = notOurs;
    else if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | flags))
        reason = file.errorString();
    if (!reason.isEmpty())
        lock.release();
    return reason;
}
