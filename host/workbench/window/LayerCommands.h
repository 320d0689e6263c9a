#pragma once

#include <QObject>

class Actions;
class ITargetSelectAreaInterface;
class QDockWidget;
class QMainWindow;
class RecordsPanel;
class Session;

/// Carries out the actions of the Layer menu, and owns the dock that contains the panel. GUI
/// thread.
class LayerCommands final : public QObject
{
    Q_OBJECT

public:
    /// `window` is the parent; the other arguments must outlive this object.
    LayerCommands(QMainWindow* window, Actions& actions, RecordsPanel& records, Session& session);

    QDockWidget* dock() const { return m_dock; }

    /// Creates and initialises the panel and puts it into the dock. Without a library the dock
    /// shows a notice instead.
    void openPanel();

    /// Sets the texts in the current language.
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
