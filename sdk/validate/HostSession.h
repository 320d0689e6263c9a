#pragma once

#include "Interface/TargetSelectHostPlugin.h"
#include "sdk/validate/Panel.h"
#include "sdk/validate/WatchedHandler.h"

#include <QList>
#include <QUuid>

#include <memory>
#include <mutex>

/// An event that the host told.
struct ToldEvent
{
    quint32 number = 0;
    QList<QUuid> ids;
    QString wrong; ///< What the handler answered about the identities meanwhile; empty if right.
};

/// The handler of the host plugin behind a panel that shows its project. GUI thread.
class HostSession final
{
public:
    /// Loads the plugin, opens a project, starts the panel and lets it fill its tree. Ends the test
    /// where that fails.
    explicit HostSession(Test& test);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    Test& test() { return m_test; }
    WatchedHandler& handler() { return *m_handler; }
    Panel& panel() { return *m_panel; }
    const std::function<void()>& change() const { return m_project.change; }

    /// The project as the handler lists it.
    /// @{
    QList<ProcessorNode> processors();
    QList<ProcessorGroupNode> groups();
    QString describe();
    /// @}

    /// Returns the first group that has processors, or any; the empty record where there is none.
    ProcessorGroupNode someGroup();

    /// Returns what was told since the last call.
    QList<ToldEvent> takeEvents();

    /// Makes a request with `request`, and judges by HostRequests whether the event that has to
    /// follow does, and comes after the change. `operation` is the name of the request. Ends the
    /// test as one that cannot run where the host refuses as HostRequests allows.
    void make(const char* operation, const std::function<void()>& request);

    /// Handles events until the tree shows what the handler lists, and notes the finding if that
    /// does not happen. With `isReadAnew`, event 16 is told before.
    void expectTree(const QString& after, bool isReadAnew);

    /// Lets the panel go, and builds another one for the same handler.
    void renewPanel();

private:
    /// What the host told. A thread of the host's may still be noting an event when the session
    /// ends.
    struct Heard
    {
        std::mutex mutex;
        QList<ToldEvent> events; // guarded by mutex
        bool any = false;        // guarded by mutex; since the beginning
    };

    static void note(Heard& heard, WatchedHandler& handler, const Events::Event& event);
    void tellReset();

    Test& m_test;
    TargetSelectHostProject m_project;
    std::shared_ptr<WatchedHandler> m_handler;
    std::unique_ptr<Panel> m_panel;
    const std::shared_ptr<Heard> m_heard = std::make_shared<Heard>();
};
