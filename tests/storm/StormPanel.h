#pragma once

#include "tests/storm/StormPlan.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

class ITargetSelectAreaInterface;
class QAbstractItemModel;
class QModelIndex;
class QTreeView;
class StormHandler;
class StormHost;

/// The panel in a window of the host, and its user. GUI thread. All operations are re-entrant,
/// because an answer may run an event loop.
class StormPanel final
{
public:
    explicit StormPanel(StormHost& host);
    ~StormPanel();
    StormPanel(const StormPanel&) = delete;
    StormPanel& operator=(const StormPanel&) = delete;

    /// Builds the panel unless there is one, and raises the event that fills it.
    void build();
    bool exists() const { return m_widget != nullptr; }

    /// Performs a step from StormStep::FirstGuiStep on. Does nothing if it is not possible now.
    void perform(const StormStep& step);

    /// Answers dialogs that have been open for a while, and replaces a panel that was destroyed a
    /// while ago. Called periodically.
    void tick();

    /// Closes dialogs and menus. Returns whether all are closed.
    bool closeWindows();

    /// Returns the model that the panel shows, or null without a panel.
    QAbstractItemModel* model() const;

private:
    QTreeView* tree() const;
    bool isFree() const;
    void destroy();
    void swapHandler(quint32 dice);
    void openDialog();
    void select(quint32 dice);
    void renameByModel(quint32 dice);
    void renameByEditor(quint32 dice);
    void moveByKeys(quint32 dice);
    void clickRow(const QPersistentModelIndex& row,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void pressInTree(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void removeAllGroups();

    StormHost& m_host;
    QWidget m_window;
    QPointer<QWidget> m_widget;
    ITargetSelectAreaInterface* m_layer = nullptr; // valid while the widget exists
    std::vector<std::shared_ptr<StormHandler>> m_kept;
    std::weak_ptr<StormHandler> m_handler;
    QPointer<QWidget> m_openWindow;
    int m_ticksOpen = 0;
    int m_ticksGone = 0;
    bool m_building = false;
};
