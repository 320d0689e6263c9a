#pragma once

#include "host/workbench/script/CallLog.h"
#include "host/workbench/script/ScriptParser.h"
#include "host/workbench/script/StepRegistry.h"
#include "host/workbench/script/UserInput.h"

#include <QHash>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTemporaryDir>
#include <QUuid>
#include <QVariant>

#include <functional>

class MainWindow;
class QWidget;
class Session;

/// What the steps of a script work with: the window, mouse and keyboard, the log, and what is kept
/// from step to step. GUI thread.
class ScriptRun final : public QObject
{
    Q_OBJECT

public:
    /// `pictures` is the folder for pictures; without one, none are taken. `window` must outlive
    /// this object.
    ScriptRun(MainWindow& window, const QString& pictures, QObject* parent = nullptr);

    MainWindow& window() { return m_window; }
    Session& session();
    UserInput& input() { return m_input; }
    CallLog& log() { return m_log; }

    /// Forgets what an earlier script left behind in here.
    void begin(const Script& script);

    /// Brings the workbench to where a program begins: an empty project, English texts, a fresh
    /// panel.
    void startOver();

    /// Prepares for the next step.
    void nextStep();

    /// How far the current step is; 0 when it begins.
    int phase = 0;

    /// What the current step keeps for itself.
    QVariant memory;

    /// The time-out of steps that have none of their own.
    double timeout = kTimeoutSeconds;

    /// The position in the log up to which "expect call" has come.
    int callMark = 0;

    /// The position in the log before which its lines are forgotten.
    int forgotten = 0;

    /// Calls `action` from the event loop. The step goes on as soon as it is called, whether it
    /// returns or runs an event loop of its own.
    void act(const std::function<void()>& action);
    bool hasActed() const { return m_hasActed; }

    /// A step that calls `action` and is done then. The usual body of a step.
    Progress once(const std::function<void()>& action);

    /// A step that sends input by `send` and is done when it has arrived.
    Progress inputOnce(const std::function<void()>& send);

    /// Returns whether `place` of `target` has been on the screen where it is for a while: a window
    /// that is new is laid out, and moved by the window manager. The step is to ask again.
    bool isSettled(const QWidget& target, const QPoint& place);

    /// Returns the absolute path of a file that a script names: relative to the script, or in the
    /// folder of this run if it begins with "{temp}/".
    QString filePath(const QString& name) const;

    /// Replaces "{temp}" in a text by the folder of this run.
    QString withFolder(const QString& text) const;

    /// Returns the identity of the processor or group of that name, also of one that has gone
    /// since; of an identity written out, itself. Null if there is none.
    QUuid identity(const QString& name);

    bool takesPictures() const { return !m_pictures.isEmpty(); }

    /// Saves a picture of the window with the open dialog in front of it. Returns why that failed,
    /// empty if it did not.
    QString takePicture(const QString& name);

    /// Takes a picture outside of a step, and keeps the reason of a failure for the end.
    void takePictureAside(const QString& name);
    QStringList lostPictures() const { return m_lostPictures; }
    int pictureCount() const { return m_pictureCount; }
    QString pictureFolder() const { return m_pictures; }

    static constexpr double kTimeoutSeconds = 10;

private:
    void learnNames();

    MainWindow& m_window;
    QString m_pictures;
    QString m_folder;
    UserInput m_input;
    CallLog m_log;
    QTemporaryDir m_temp;
    QHash<QString, QUuid> m_names;
    QPointer<const QWidget> m_target; // not owned
    QPoint m_targetPlace;
    int m_settledTicks = 0;
    bool m_hasActed = false;
    int m_pictureCount = 0;
    QStringList m_lostPictures;
};
