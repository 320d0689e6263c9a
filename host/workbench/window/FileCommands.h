#pragma once

#include <QObject>
#include <QString>

#include <functional>

class Actions;
class ProjectStore;
class QMainWindow;

/// Carries out the actions of the File menu: opens and saves projects and lists the recent ones.
/// Keeps the title of the window up to date. GUI thread.
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
    /// that fails.
    bool save(const QString& path, QString& problem);

    QString path() const { return m_path; }

    /// Names the file to which the live log is written: no project is saved there.
    void setTraceFile(const QString& path) { m_traceFile = path; }

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
    bool chooseAndSave();
    void remember(const QString& path);
    void fillRecent();

    QMainWindow* m_window; // owner
    Actions& m_actions;
    ProjectStore& m_store;
    QString m_path;
    QString m_traceFile;
    bool m_askBeforeLoss = true;
};
