#include "host/workbench/events/Notifier.h"

#include "host/workbench/trace/ThreadEnd.h"
#include "host/workbench/trace/ThreadName.h"
#include "host/workbench/trace/TraceModel.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QMetaObject>

#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds kWaitStep(1);

} // namespace

Notifier::Notifier(TraceModel& trace, QObject* parent)
    : QObject(parent)
    , m_trace(trace)
    , m_thread(QThread::create([this] { run(); }))
{
    m_thread->setObjectName(QStringLiteral("notify"));
    m_thread->start();
}

Notifier::~Notifier()
{
    stop();
}

void Notifier::raise(const HostEvent& event)
{
    if (event.number() < m_raised.size())
        ++m_raised[event.number()];
    if (mustQueue(event))
        return;
    if (QThread::currentThread() == thread()) {
        deliver(event);
        return;
    }
    {
        const std::lock_guard guard(m_mutex);
        ++m_posted;
    }
    QMetaObject::invokeMethod(
        this,
        [this, event] {
            deliver(event);
            const std::lock_guard guard(m_mutex);
            --m_posted;
        },
        Qt::QueuedConnection);
}

void Notifier::raise(const HostEventList& events)
{
    for (const HostEvent& event : events)
        raise(event);
}

quint64 Notifier::answersTo(const HostRequests::Request& request) const
{
    quint64 answers = 0;
    for (quint32 number = 0; number < m_raised.size(); ++number) {
        if (HostRequests::isFollowedBy(request, number))
            answers += m_raised[number];
    }
    return answers;
}

bool Notifier::isIdle()
{
    const std::lock_guard guard(m_mutex);
    return m_queue.empty() && !m_delivering && m_posted == 0;
}

bool Notifier::waitForDeliveries(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    std::unique_lock guard(m_mutex);
    const quint64 given = m_given;
    while (!m_changed.wait_for(guard, kWaitStep, [&] { return m_end || m_done >= given; })) {
        if (deadline.hasExpired())
            return false;
        guard.unlock();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        guard.lock();
    }
    return true;
}

void Notifier::stop()
{
    {
        const std::lock_guard guard(m_mutex);
        m_end = true;
        m_queue.clear();
    }
    m_changed.notify_all();
    waitForEnd(*m_thread);
}

/// Queues `event` if the notifying thread has to deliver it, and returns whether it has. After the
/// delivery is switched to the GUI thread, events still wait for those that are queued.
bool Notifier::mustQueue(const HostEvent& event)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_end)
            return true;
        if (m_delivery == Delivery::GuiThread && m_queue.empty() && !m_delivering)
            return false;
        m_queue.push_back(event);
        ++m_given;
    }
    m_changed.notify_all();
    return true;
}

void Notifier::run()
{
    nameCurrentThread("notify");
    for (;;) {
        std::unique_lock guard(m_mutex);
        m_changed.wait(guard, [this] { return m_end || !m_queue.empty(); });
        if (m_end)
            return;
        const HostEvent event = std::move(m_queue.front());
        m_queue.pop_front();
        m_delivering = true;
        guard.unlock();
        deliver(event);
        {
            const std::lock_guard done(m_mutex);
            ++m_done;
            m_delivering = false;
        }
        m_changed.notify_all();
    }
}

void Notifier::deliver(const HostEvent& event)
{
    CObserver* observer = m_observer;
    m_trace.add(TraceEntry::Kind::Event, event.text());
    QElapsedTimer timer;
    timer.start();
    // Each delivery has a subject of its own: deliveries nest on the GUI thread, and the observer
    // may be replaced during a delivery.
    CSubject subject;
    subject.Attach(observer);
    event.deliver(subject);
    const qint64 nanoseconds = timer.nsecsElapsed();
    const QString end =
        observer ? QStringLiteral("%1 returned") : QStringLiteral("%1 had no observer");
    const qint64 line = m_trace.add(TraceEntry::Kind::Event, end.arg(event.number()));
    if (observer)
        m_trace.setDuration(line, nanoseconds);
}
