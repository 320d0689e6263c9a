#pragma once

#include "host/workbench/replay/ReplayProgress.h"
#include "sdk/relay/HandlerRelay.h"

#include <functional>
#include <memory>

/// The host of a recording: answers each call as the recorded host did, and tells the events that
/// it told inside the call. Requests are compared with the recorded ones.
///
/// A question that was never asked is a difference, unless the panel asks it to paint, which it
/// does more or less often: then it gets the default answer.
class ReplayHandler final : public CHandlerRelay
{
public:
    explicit ReplayHandler(std::shared_ptr<ReplayProgress> progress);

    /// Handles events inside a call on the GUI thread until the recorded host returned from it. Set
    /// before the panel is created, like isPainting; called on the GUI thread.
    std::function<void(const CTraceEntry& call)> goOnInside;

    /// Returns whether the panel is painting.
    std::function<bool()> isPainting;

protected:
    Answer call(const Call& call, const Ask& ask) override;

private:
    void noteUnanswered(const Call& call);

    const std::shared_ptr<ReplayProgress> m_progress;
};
