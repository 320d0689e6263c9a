#pragma once

#include <QObject>

class Actions;
class ITargetSelectAreaInterface;
class QDockWidget;
class QMainWindow;
class RecordsPanel;
class Session;

/// What the host does to the panel as a whole: the actions of the Layer menu, and the dock that the
/// panel stands in. GUI thread.
class LayerCommands final : public QObject
{
    Q_OBJECT

public:
    /// `window` owns this; the others outlive it.
    LayerCommands(QMainWindow* window, Actions& actions, RecordsPanel& records, Session& session);

    QDockWidget* dock() const { return m_dock; }

    /// Puts the panel into its dock, initialised; without a library the dock says so.
    void openPanel();

    /// Sets the texts in the present language.
    void retranslate();

private:
    void connectActions();
    void closePanel();
    void lockByKey();
    void logTree(bool onlyAccepted);
    void logProcessors();
    void showNotice();
    void updateEnabled();

    QMainWindow* m_window; // owner
    Actions& m_actions;
    RecordsPanel& m_records;
    Session& m_session;
    QDockWidget* m_dock; // of the window
};
