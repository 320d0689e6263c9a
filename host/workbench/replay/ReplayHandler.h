#pragma once

#include "host/workbench/replay/ReplayProgress.h"
#include "sdk/relay/HandlerRelay.h"

#include <functional>
#include <memory>

/// The host of a recording: answers each call as the recorded host did, and does inside the call
/// what that one did: tells events, calls the panel. Requests are compared with the recorded ones.
/// A question that was never asked gets the default answer.
class ReplayHandler final : public CHandlerRelay
{
public:
    /// `former` is the handler that the host replaces by this one, null for none.
    explicit ReplayHandler(std::shared_ptr<ReplayProgress> progress,
                           std::shared_ptr<ReplayHandler> former = {});

    /// Tells the panel an event, through the handler that it last gave its observer.
    void tell(const Events::Event& event) const;

    /// Repeats a call of the host to the panel. Set before the panel is created, like the
    /// following ones; called on the GUI thread.
    std::function<void(const CTraceEntry& driver)> callPanel;

    /// Handles events inside a call on the GUI thread until the recorded host returned from it.
    std::function<void(const CTraceEntry& call)> goOnInside;

    /// Returns whether the panel is painting.
    std::function<bool()> isPainting;

protected:
    Answer call(const Call& call, const Ask& ask) override;

private:
    void doInside(const CTraceEntry& call);
    void noteUnanswered(const Call& call);

    const std::shared_ptr<ReplayProgress> m_progress;
    const std::shared_ptr<ReplayHandler> m_former;
};
