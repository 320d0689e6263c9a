#pragma once

#include "sdk/relay/HandlerRelay.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

/// Stands before a handler: each call is noted, so that a crash or a hang in it is put down to it,
/// and a test may do something before a call is handed on, or hear of the events that the host
/// tells. Thread-safe; owned by a std::shared_ptr.
class WatchedHandler final : public CHandlerRelay
{
public:
    /// With `isNoted`, each call is written to the journal.
    WatchedHandler(std::shared_ptr<ITargetSelectInterfaceHandler> handler, bool isNoted);

    void SetObserver(CObserver* observer) override;

    /// Is called with the name of each operation before it is handed on, on the thread that asks.
    /// GUI thread, before the panel is started.
    void setBefore(std::function<void(const char*)> before) { m_before = std::move(before); }

    /// Is called with each event before the panel gets it, on the thread that tells it.
    void setOnEvent(std::function<void(const Events::Event&)> onEvent);

    /// Returns the panel's own observer, which events of a test go to; null before the panel has
    /// set it.
    CObserver* panelObserver() const { return m_panelObserver; }

protected:
    Answer call(const Call& call, const Ask& ask) override;
    void event(const Events::Event& event, const Deliver& deliver) override;

private:
    const bool m_isNoted;
    std::function<void(const char*)> m_before;
    std::atomic<CObserver*> m_panelObserver{nullptr}; // the panel's, lives until the process ends
    std::mutex m_mutex;
    std::function<void(const Events::Event&)> m_onEvent; // guarded by m_mutex
};
