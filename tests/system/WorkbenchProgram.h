#pragma once

#include "tests/system/Screen.h"

#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

/// The workbench as a process of its own, seen from outside: its windows by its inspector, what the
/// panel asks of it by its log.
class WorkbenchProgram final
{
public:
    WorkbenchProgram();
    ~WorkbenchProgram();
    WorkbenchProgram(const WorkbenchProgram&) = delete;
    WorkbenchProgram& operator=(const WorkbenchProgram&) = delete;

    /// Its own files, gone with this.
    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// Starts it with its home in an own folder, so that nothing of the user's own is touched.
    void start(const QStringList& arguments);

    /// Everything that can be seen now.
    Screen look() const;

    /// The log so far, a line each of the kinds "call", "event" and "log". Its own folder is "~"
    /// there, and identities are replaced by names: those given by nameIdentities(), and "new 1",
    /// "new group 1" in order of arrival.
    QStringList log(const QString& kind) const;

    /// Has the identities of the groups, processors and device sets of a project file called by
    /// their names.
    void nameIdentities(const QString& projectFile);

    /// Waits until it has ended by itself; what it said on the standard error stream.
    QByteArray waitForEnd();

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    int exitCode() const { return m_process.exitCode(); }
    QByteArray complaints() const { return m_complaints; }

private:
    QHash<QString, QString> namesOfNew(const QStringList& lines) const;

    QTemporaryDir m_folder;
    QProcess m_process;
    QByteArray m_complaints;
    QHash<QString, QString> m_names; // of identities as the log has them
};
