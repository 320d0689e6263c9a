#pragma once

#include "host/workbench/events/HostEvent.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

class TraceModel;

/// Raises host events in the order in which they are given: on a notifying thread of its own, or on
/// the GUI thread. Only waitForDeliveries() makes the GUI thread wait for the notifying thread.
class Notifier final : public QObject
{
    Q_OBJECT

public:
    enum class Delivery { NotifyingThread, GuiThread };

    /// `trace` gets a line when a delivery begins and one when it ends; it has to outlive this.
    explicit Notifier(TraceModel& trace, QObject* parent = nullptr);

    /// stop()
    ~Notifier() override;

    /// The observer of the deliveries that begin from here on; not owned, may be null. Any thread.
    void setObserver(CObserver* observer) { m_observer = observer; }

    /// Where events given from here on are raised. GUI thread.
    void setDelivery(Delivery delivery) { m_delivery = delivery; }
    Delivery delivery() const { return m_delivery; }

    /// Raises `event`. On the notifying thread: when the earlier ones are through; returns at once.
    /// On the GUI thread: before it returns, when called there and nothing waits for the notifying
    /// thread; else later, in its turn. Any thread.
    void raise(const HostEvent& event);
    void raise(const HostEventList& events);

    /// Whether everything given so far has been delivered. Any thread.
    bool isIdle();

    /// Waits until everything given to the notifying thread so far has been delivered; false when
    /// `milliseconds` were not enough. Processes the GUI thread's events meanwhile, but no input,
    /// because a delivery may need them. GUI thread.
    bool waitForDeliveries(int milliseconds);

    /// Ends the notifying thread after the delivery in hand; what waits is dropped, and so is what
    /// comes later. Processes the GUI thread's events meanwhile, because a delivery may need them.
    void stop();

private:
    void run();
    void deliver(const HostEvent& event);
    bool mustQueue(const HostEvent& event);

    TraceModel& m_trace;
    std::atomic<CObserver*> m_observer{nullptr};
    std::atomic<Delivery> m_delivery{Delivery::NotifyingThread};
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
