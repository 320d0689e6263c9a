#include "host/common/WorkThread.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace {

std::atomic<int> s_pending{0};

} // namespace

CWorkThread::CWorkThread(QObject* parent)
    : QThread(parent)
{
}

CWorkThread::~CWorkThread()
{
    ThreadExit();
    wait();
}

void CWorkThread::AppendEvent(Event event, bool replacePending)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_exit)
            return;
        const auto same = std::find_if(m_events.begin(), m_events.end(), [&](const Event& waiting) {
            return waiting.first == event.first;
        });
        if (replacePending && same != m_events.end()) {
            std::swap(*same, event); // destroyed after the lock is released
        } else {
            ++s_pending;
            m_events.push_back(std::move(event));
        }
    }
    m_changed.notify_one();
}

void CWorkThread::ActivateThread()
{
    // start() has no effect on a thread that is about to finish.
    bool leaving = false;
    {
        const std::lock_guard guard(m_mutex);
        m_exit = false;
        leaving = std::exchange(m_leaving, false);
    }
    if (leaving)
        wait();
    start();
}

void CWorkThread::ThreadExit()
{
    std::deque<Event> dropped;
    {
        const std::lock_guard guard(m_mutex);
        m_exit = true;
        dropped.swap(m_events);
        s_pending -= static_cast<int>(dropped.size());
    }
    m_changed.notify_all();
}

int CWorkThread::PendingJobs()
{
    return s_pending;
}

void CWorkThread::run()
{
    Event event;
    while (takeNext(event)) {
        if (event.second)
            event.second();
        event.second = nullptr;
        --s_pending;
    }
}

bool CWorkThread::takeNext(Event& event)
{
    std::unique_lock guard(m_mutex);
    m_changed.wait(guard, [this] { return m_exit || !m_events.empty(); });
    if (m_exit) {
        m_leaving = true;
        return false;
    }
    event = std::move(m_events.front());
    m_events.pop_front();
    return true;
}
