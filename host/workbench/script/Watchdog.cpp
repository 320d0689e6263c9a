#include "host/workbench/script/Watchdog.h"

#include <utility>

Watchdog::Watchdog(std::chrono::milliseconds limit, std::function<void()> stuck)
    : m_limit(limit)
    , m_thread([this, stuck = std::move(stuck)] { watch(stuck); })
{
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard guard(m_mutex);
        m_end = true;
    }
    m_ended.notify_all();
    m_thread.join();
}

void Watchdog::watch(const std::function<void()>& stuck)
{
    std::unique_lock guard(m_mutex);
    for (unsigned seen = m_beats;; seen = m_beats) {
        if (m_ended.wait_for(guard, m_limit, [this] { return m_end; }))
            return;
        if (m_beats != seen)
            continue;
        guard.unlock();
        stuck();
        return;
    }
}
