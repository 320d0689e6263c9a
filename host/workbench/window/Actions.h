#pragma once

#include <QAction>
#include <QHash>
#include <QObject>

class QMainWindow;
class QMenu;

/// Names an action of the menus.
enum class ActionId {
    NewProject,
    OpenProject,
    OpenSample,
    SaveProject,
    SaveProjectAs,
    Quit,
    Undo,
    Redo,
    AddProcessor,
    AddProcessors,
    AddGroup,
    Remove,
    Rename,
    MoveToGroup,
    GoOnline,
    GoOffline,
    ChangeAddress,
    ToggleBackup,
    ToggleHasBackup,
    ToggleProtected,
    ToggleMonitorWarning,
    MakeCurrent,
    DeviceSets,
    DetectStrategy,
    LanUsb,
    Network,
    HandlerAnswers,
    RaiseEvent,
    AnnounceProject,
    GuiThreadEvents,
    SetReadOnly,
    SelectInPanel,
    RemoveAllGroups,
    LogTree,
    LogAcceptedTree,
    LogProcessors,
    DetectDevices,
    LockOperations,
    ApplyLock,
    LockByKey,
    RepaintWarnings,
    LanUsbWarning,
    Reconnect,
    ContractChecks,
    ClosePanel,
    OpenPanel,
    FocusPanel,
    FocusRecords,
    FocusLog,
    ShowFaults,
    ClearLog,
    English,
    Chinese,
};

/// Creates the actions, the menus and the tool bar of the main window.
class Actions final : public QObject
{
    Q_OBJECT

public:
    /// Adds everything to `window`, which takes ownership.
    explicit Actions(QMainWindow* window);

    QAction* operator[](ActionId id) const { return m_actions.value(id); }
    QMenu* recentMenu() const { return m_recent; }

    /// Sets all texts in the current language.
    void retranslate();

private:
    QAction* build(QMainWindow* window, QMenu* menu, ActionId id);

    QHash<ActionId, QAction*> m_actions; // owned by the window
    QHash<QMenu*, const char*> m_menus;
    QMenu* m_recent = nullptr; // owned by the window
};

inline uint qHash(ActionId id, uint seed = 0)
{
    return ::qHash(static_cast<int>(id), seed);
}
