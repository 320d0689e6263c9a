#pragma once

#include "tests/support/HostThread.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

/// Counts what has happened, on whatever thread, for others that wait for it.
class Latch final
{
public:
    void arrive()
    {
        {
            const std::lock_guard guard(m_mutex);
            ++m_count;
        }
        m_changed.notify_all();
    }

    /// Waits, without processing events, until it has happened `count` times. Returns false when
    /// that takes longer than `limit`.
    bool wait(int count = 1, std::chrono::milliseconds limit = kSoon)
    {
        std::unique_lock guard(m_mutex);
        return m_changed.wait_for(guard, limit, [&] { return m_count >= count; });
    }

    int count() const
    {
        const std::lock_guard guard(m_mutex);
        return m_count;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};
