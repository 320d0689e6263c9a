#pragma once

#include <QObject>
#include <QString>

#include <functional>

class Actions;
class ProjectStore;
class QMainWindow;

/// Opening and saving of projects, the recent ones, and the window's title. GUI thread.
class FileCommands final : public QObject
{
    Q_OBJECT

public:
    /// `actions` and `store` outlive this; `window` owns it.
    FileCommands(QMainWindow* window, Actions& actions, ProjectStore& store);

    /// Opens a file; when it cannot be read, `problem` says why and the project stays. A file of
    /// this program's own resources is opened without a name.
    bool open(const QString& path, QString& problem);

    /// Saves to a file, which the project then is of; false with `problem` when that fails.
    bool save(const QString& path, QString& problem);

    QString path() const { return m_path; }

    /// Lets go of changes without asking, when the window closes too.
    void setAskBeforeLoss(bool ask) { m_askBeforeLoss = ask; }

    /// Whether what is unsaved may go; asks the user, who may save first.
    bool confirmLoss();

    /// Sets the texts in the present language.
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
    bool m_askBeforeLoss = true;
};
