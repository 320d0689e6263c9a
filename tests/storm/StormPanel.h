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

/// The panel in a window of the host's, and the user in front of it. GUI thread; every operation
/// may be called from within another one, by an event loop that an answer runs.
class StormPanel final
{
public:
    explicit StormPanel(StormHost& host);
    ~StormPanel();
    StormPanel(const StormPanel&) = delete;
    StormPanel& operator=(const StormPanel&) = delete;

    /// Builds the panel, unless there is one, and has it filled.
    void build();
    bool exists() const { return m_widget != nullptr; }

    /// Does what a step says, from StormStep::FirstGuiStep on; nothing where that is impossible.
    void perform(const StormStep& step);

    /// To be called now and then: answers dialogs that have been open for a while, and builds a
    /// panel that has been gone for a while.
    void tick();

    /// Closes dialogs and menus. Returns whether none is left.
    bool closeWindows();

    /// What the panel shows; null without one.
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
    void removeAllGroups();

    StormHost& m_host;
    QWidget m_window;
    QPointer<QWidget> m_widget;
    ITargetSelectAreaInterface* m_layer = nullptr; // as long as the widget lives
    std::vector<std::shared_ptr<StormHandler>> m_kept;
    std::weak_ptr<StormHandler> m_handler;
    QPointer<QWidget> m_openWindow;
    int m_ticksOpen = 0;
    int m_ticksGone = 0;
    bool m_building = false;
};
