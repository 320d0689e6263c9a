#pragma once

#include "tests/system/Screen.h"

#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

/// The workbench as a separate process. Its inspector describes its windows, and its log has the
/// calls of the panel.
class WorkbenchProgram
{
public:
    WorkbenchProgram();
    ~WorkbenchProgram();
    WorkbenchProgram(const WorkbenchProgram&) = delete;
    WorkbenchProgram& operator=(const WorkbenchProgram&) = delete;

    /// Returns the path of a file in a folder that is removed with this object.
    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// Starts the program with a home folder of its own, so that the user's files are not touched.
    void start(const QStringList& arguments);

    /// Repeats a recording without a display. Returns what was
    /// printed if the panel made other requests; empty if it made the same.
    QString replay(const QString& recording) const;

    /// Makes start() use the settings of another program.
    void shareSettings(const WorkbenchProgram& other) { m_settings = other.m_settings; }

    /// Ends the program without warning, as a crash does. It can be started again.
    void kill();

    /// Returns the elements that are visible now.
    Screen look() const;

    /// Returns the lines of the log so far that have the kind "call", "event" or "log". The folder
    /// of the program is replaced by "~", and identities by names: those of nameIdentities(), and
    /// "new 1" or "new group 1" in order of arrival.
    QStringList log(const QString& kind) const;

    /// Makes log() replace the identities of a project file by the names of its groups, processors
    /// and device sets.
    void nameIdentities(const QString& projectFile);

    /// Keeps what there is to see and the log in `name`.png, .json and .txt, for a failure.
    void keepTraces(const QString& name) const;

    /// Waits until the program has ended by itself. Returns the text of its standard error stream.
    QByteArray waitForEnd();

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    int exitCode() const { return m_process.exitCode(); }
    QByteArray complaints() const { return m_complaints; }

private:
    QHash<QString, QString> namesOfNew(const QStringList& lines) const;

    QTemporaryDir m_folder;
    QString m_settings;
    QProcess m_process;
    QByteArray m_complaints;
    QHash<QString, QString> m_names; // by identity, as the log writes it
};
