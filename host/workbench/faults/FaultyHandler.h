#pragma once

#include "host/workbench/faults/FaultPlan.h"
#include "sdk/relay/HandlerRelay.h"

#include <QObject>

#include <functional>
#include <memory>

class FaultThread;
class TraceModel;

/// Stands between the panel and the host's handler, and makes the faults of a plan. Adds a line to
/// the log for each.
class FaultyHandler final : public CHandlerRelay
{
public:
    /// What the faults need of the host. Everything outlives the handler but for `gui`, an object
    /// of the GUI thread: after its end, nothing is called there any more.
    struct Host
    {
        FaultPlan& plan;
        TraceModel& trace;
        FaultThread& thread;
        QObject* gui;
        std::function<bool()> isPainting;     ///< GUI thread.
        std::function<void()> announceTree;   ///< Announces the tree again, event 16.
        std::function<void()> replaceHandler; ///< GUI thread.
        std::function<void()> destroyPanel;   ///< GUI thread.
    };

    FaultyHandler(std::shared_ptr<ITargetSelectInterfaceHandler> handler, Host host);

protected:
    Answer call(const Call& call, const Ask& ask) override;
    void event(const Events::Event& event, const Deliver& deliver) override;

private:
    bool isPossible(FaultEffect effect) const;
    void log(const QString& what, const FaultRule& rule) const;
    void onGuiThread(const std::function<void()>& act) const;
    void disturb(FaultEffect effect) const;
    void refuse(const Operations::Operation& operation) const;

    const Host m_host;
};
