#pragma once

#include "host/workbench/project/Project.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

/// What a recovery file knows of the project in it.
struct RecoveryNote
{
    QString path;     ///< The project's file, empty if it was never saved.
    QByteArray known; ///< What the workbench knew of the content of that file.
    QDateTime saved;
};

/// A copy of a project with unsaved changes, for the case that the program ends without warning.
/// The first line of the file is the note, the others are a project file.
///
/// Each running program has a file of its own, and a lock beside it as long as it runs: a file
/// whose lock is free was left behind by a crash.
class RecoveryFile final
{
    Q_DECLARE_TR_FUNCTIONS(RecoveryFile)

public:
    using Left = std::vector<std::unique_ptr<RecoveryFile>>;

    /// Returns the folder of all recovery files, which is beside the settings.
    static QString folder();

    /// Returns the files that ended programs have left in folder(), the oldest first, locked for
    /// this program.
    static Left findLeft();

    /// A file of this program's own; nothing is written before write().
    RecoveryFile();

    /// Releases the lock and keeps the file.
    ~RecoveryFile();
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    QString path() const { return m_path; }

    /// Replaces the file atomically. Returns false and sets `problem` on failure.
    bool write(const RecoveryNote& note, const Project& project, QString& problem);

    /// Returns the note, as far as it can be read.
    RecoveryNote note() const;

    /// Returns the project. On failure returns nothing and sets `problem`.
    std::optional<Project> read(QString& problem) const;

    /// Keeps a damaged file under another name, where findLeft() leaves it alone. Returns its path.
    QString setAside();

    /// Removes the file, if there is one.
    void remove();

private:
    explicit RecoveryFile(const QString& path);

    QString m_path;
    QLockFile m_lock;
};
