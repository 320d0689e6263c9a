#include "host/workbench/window/FileWatch.h"

#include "host/workbench/project/ProjectJson.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

constexpr int kPauseMs = 200;

/// Returns the folder of `path`, or the nearest one above it that exists.
QString existingFolder(const QString& path)
{
    QString folder = QFileInfo(path).absolutePath();
    while (!QFileInfo(folder).isDir() && folder != QFileInfo(folder).absolutePath())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

} // namespace

FileWatch::FileWatch(QObject* parent)
    : QObject(parent)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    connect(&m_pause, &QTimer::timeout, this, &FileWatch::tell);
    const auto look = [this] {
        if (!m_pause.isActive())
            m_pause.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, look);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this,
            [this, look](const QString& at) {
                const QFileInfo file(m_path);
                // Other folders tell only whether that of the file has come or gone.
                if (at == file.absolutePath() || file.isFile() == m_told.isEmpty())
                    look();
            });
}

QByteArray FileWatch::fingerprint(const QString& path)
{
    QFile file(path);
    // Opening a pipe could block.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray content = file.read(kMaxProjectFileSize + 1);
    QByteArray told = fingerprintOf(content);
    if (content.size() > kMaxProjectFileSize) {
        const QFileInfo info(file);
        told += QByteArray::number(info.size()) + '@'
                + QByteArray::number(info.lastModified().toMSecsSinceEpoch());
    }
    return told;
}

QByteArray FileWatch::fingerprintOf(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

void FileWatch::watch(const QString& path, const QByteArray& fingerprint)
{
    m_path = path;
    m_known = m_told = fingerprint;
    follow();
}

FileWatch::State FileWatch::state() const
{
    return m_path.isEmpty() ? State::Same : stateOf(fingerprint(m_path));
}

FileWatch::State FileWatch::tell()
{
    if (m_path.isEmpty())
        return State::Same;
    follow();
    const QByteArray found = fingerprint(m_path);
    const State state = stateOf(found);
    if (std::exchange(m_told, found) != found)
        emit changed(state);
    return state;
}

/// Watches file and folder anew: the watch of a file ends when another one takes its place.
void FileWatch::follow()
{
    const QStringList former = m_watcher.files() + m_watcher.directories();
    if (!former.isEmpty())
        m_watcher.removePaths(former);
    if (m_path.isEmpty())
        return;
    const QString folder = existingFolder(m_path);
    m_watcher.addPath(folder);
    // A folder does not tell that it is renamed, the one above it does.
    const QString above = QFileInfo(folder).absolutePath();
    if (above != folder)
        m_watcher.addPath(above);
    if (QFileInfo(m_path).isFile())
        m_watcher.addPath(m_path);
}

FileWatch::State FileWatch::stateOf(const QByteArray& found) const
{
    if (found == m_known)
        return State::Same;
    return found.isEmpty() ? State::Missing : State::Changed;
}
