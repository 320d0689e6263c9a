#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

/// Watches the file of the project for changes by other programs. Compares the content, so that the
/// host's own writing, or a mere touch, is no change. GUI thread.
class FileWatch final : public QObject
{
    Q_OBJECT

public:
    enum class State { Same, Changed, Missing };

    explicit FileWatch(QObject* parent = nullptr);

    /// Returns what tells the content of a file from another; empty if there is no regular file
    /// that can be read. Of a file that is too long for a project, size and time tell the end.
    static QByteArray fingerprint(const QString& path);
    static QByteArray fingerprintOf(const QByteArray& content);

    /// Watches `path`, whose content is known by `fingerprint`. An empty path ends the watch.
    void watch(const QString& path, const QByteArray& fingerprint);

    QByteArray known() const { return m_known; }

    /// Reads the file and returns how it differs from what is known.
    State state() const;

    /// The same, and emits changed() if the content is not what was told last.
    State tell();

    /// Returns the fingerprint of the content that was told last.
    QByteArray told() const { return m_told; }

    /// Makes known what was told last, whatever the file holds now.
    void acceptTold() { m_known = m_told; }

signals:
    /// Emitted when another program has changed the file, removed it, or restored what is known;
    /// again for each further change.
    void changed(FileWatch::State state);

private:
    void follow();
    State stateOf(const QByteArray& found) const;

    QFileSystemWatcher m_watcher;
    QTimer m_pause; ///< One check for all signals of one change.
    QString m_path;
    QByteArray m_known;
    QByteArray m_told;
};
