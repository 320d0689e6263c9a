#include "sdk/record/FileLock.h"

#include <QFile>

#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

bool CFileLock::take(const QString& path)
{
    release();
    constexpr mode_t kMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    const int file =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, kMode);
    if (file < 0)
        return true;
    const bool isOthers = flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    m_file = file;
    if (isOthers)
        release();
    return !isOthers;
}

void CFileLock::release()
{
    if (m_file != kNone)
        ::close(static_cast<int>(std::exchange(m_file, kNone)));
}
