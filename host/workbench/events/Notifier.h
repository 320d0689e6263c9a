#pragma once

#include "Interface/HostEvents.h"
#include "Interface/HostRequests.h"
#include "host/workbench/events/HostEvent.h"

#include <QObject>
#include <QThread>

#include <array>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

class TraceModel;

/// Raises host events in the order of the calls to raise(), on its own notifying thread or on the
/// GUI thread. The GUI thread waits for the notifying thread only in waitForDeliveries() and
/// stop().
class Notifier final : public QObject
{
    Q_OBJECT

public:
    enum class Delivery { NotifyingThread, GuiThread };

    /// Adds a line to `trace` when a delivery begins and when it ends. `trace` must outlive this
    /// object.
    explicit Notifier(TraceModel& trace, QObject* parent = nullptr);

    /// Calls stop().
    ~Notifier() override;

    /// Sets the observer of all later deliveries; not owned, may be null. Thread-safe.
    void setObserver(CObserver* observer) { m_observer = observer; }

    /// Sets where later events are raised. GUI thread.
    void setDelivery(Delivery delivery) { m_delivery = delivery; }
    Delivery delivery() const { return m_delivery; }

    /// Raises `event`. With Delivery::NotifyingThread, queues it and returns. With
    /// Delivery::GuiThread, delivers it before returning if this is the GUI thread and no event is
    /// queued for the notifying thread; otherwise queues it. Thread-safe.
    void raise(const HostEvent& event);
    void raise(const HostEventList& events);

    /// Returns the number of events raised so far that answer `request`. Thread-safe.
    quint64 answersTo(const HostRequests::Request& request) const;

    /// Returns whether all events so far have been delivered. Thread-safe.
    bool isIdle();

    /// Waits until the notifying thread has delivered all events so far. Returns false on timeout.
    /// Processes the events of the GUI thread except for user input meanwhile, because a delivery
    /// may need them. GUI thread.
    bool waitForDeliveries(int milliseconds);

    /// Ends the notifying thread after the current delivery. Queued and later events are dropped.
    /// Processes the events of the GUI thread meanwhile, because the delivery may need them.
    void stop();

private:
    void run();
    void deliver(const HostEvent& event);
    bool mustQueue(const HostEvent& event);

    TraceModel& m_trace;
    std::atomic<CObserver*> m_observer{nullptr};
    std::atomic<Delivery> m_delivery{Delivery::NotifyingThread};
    std::array<std::atomic<quint64>, HostEvents::kLastNumber + 1> m_raised{}; // by number
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<HostEvent> m_queue; // guarded by m_mutex
    bool m_delivering = false;     // guarded by m_mutex
    quint64 m_given = 0;           // guarded by m_mutex
    quint64 m_done = 0;            // guarded by m_mutex
    int m_posted = 0;              // guarded by m_mutex
    bool m_end = false;            // guarded by m_mutex
    std::unique_ptr<QThread> m_thread;
};
