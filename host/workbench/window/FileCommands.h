#pragma once

#include "host/workbench/window/FileWatch.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class Actions;
class ChangedFileBar;
class Project;
class ProjectStore;
class QMainWindow;

/// Carries out the actions of the File menu: opens and saves projects and lists the recent ones.
/// Keeps the title of the window up to date, and tells of changes of the file by other programs.
/// GUI thread.
class FileCommands final : public QObject
{
    Q_OBJECT

public:
    /// `window` is the parent; `actions` and `store` must outlive this object.
    FileCommands(QMainWindow* window, Actions& actions, ProjectStore& store);

    /// Returns the path of the project that is part of the program.
    static QString sampleProject();

    /// Opens a file. Returns false and sets `problem` if it cannot be read; the project is then
    /// unchanged. A file from the resources of the program is opened as a project without a name.
    bool open(const QString& path, QString& problem);

    /// Saves to a file, which becomes the file of the project. Returns false and sets `problem` if
    /// that fails, or if another program has changed the file of the project.
    bool save(const QString& path, QString& problem);

    QString path() const { return m_path; }

    /// Returns what is known of the content of that file, see FileWatch::fingerprint().
    QByteArray knownContent() const { return m_watch.known(); }

    /// Opens a project with unsaved changes, whose file is at `path` and had the `known` content.
    void openRecovered(const Project& project, const QString& path, const QByteArray& known);

    /// Returns the bar that tells of changes by other programs, for the window to place it.
    ChangedFileBar* bar() const { return m_bar; }

    /// Names a file that the workbench writes besides, such as the live log: no project is saved
    /// there, and nothing exported.
    void addInUse(const QString& path) { m_inUse.append(path); }

    /// Returns why nothing may be exported to the file, empty if it may.
    QString exportRefusal(const QString& path) const;

    /// Sets whether the user is asked before unsaved changes are discarded.
    void setAskBeforeLoss(bool ask) { m_askBeforeLoss = ask; }

    /// Returns whether unsaved changes may be discarded. Asks the user, who can save them first.
    bool confirmLoss();

    /// Sets the texts in the current language.
    void retranslate();

private:
    void openAsked(const QString& path);
    void chooseAndOpen();
    bool saveAsked();
    void endEditing();
    bool confirmReload();
    bool isInUse(const QString& path) const;
    bool write(const QString& path, QString& problem);
    bool mayOverwrite();
    bool reload();
    void compare();
    void keep();
    bool chooseAndSave();
    void remember(const QString& path);
    void fillRecent();

    QMainWindow* m_window; // owner
    Actions& m_actions;
    ProjectStore& m_store;
    ChangedFileBar* m_bar; // the window's
    FileWatch m_watch;
    QString m_path;
    QStringList m_inUse; ///< What the workbench writes besides: trace, recording.
    bool m_askBeforeLoss = true;
};
