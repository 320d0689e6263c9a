#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

/// A recursive lock of the host. Threads get it in the order of their calls of lock(), and each
/// wait has a limit.
class HostLock final
{
public:
    /// Waits for at most `patience`; does not wait if it is zero. Returns whether the lock is
    /// taken.
    bool lock(std::chrono::milliseconds patience)
    {
        const auto me = std::this_thread::get_id();
        std::unique_lock guard(m_mutex);
        if (m_depth > 0 && m_owner == me) {
            ++m_depth;
            return true;
        }
        if (patience.count() == 0 && (m_depth > 0 || !m_waiting.empty()))
            return false;
        const int ticket = ++m_lastTicket;
        m_waiting.push_back(ticket);
        const bool taken = m_changed.wait_for(
            guard, patience, [&] { return m_depth == 0 && m_waiting.front() == ticket; });
        for (auto it = m_waiting.begin(); it != m_waiting.end(); ++it) {
            if (*it == ticket) {
                m_waiting.erase(it);
                break;
            }
        }
        if (taken) {
            m_owner = me;
            m_depth = 1;
        }
        m_changed.notify_all();
        return taken;
    }

    void unlock()
    {
        const std::lock_guard guard(m_mutex);
        --m_depth;
        m_changed.notify_all();
    }

    /// Holds a lock if lock() got it in time.
    class Holder final
    {
    public:
        Holder(HostLock& lock, std::chrono::milliseconds patience)
            : m_lock(lock)
            , m_taken(lock.lock(patience))
        {
        }
        ~Holder()
        {
            if (m_taken)
                m_lock.unlock();
        }
        Holder(const Holder&) = delete;
        Holder& operator=(const Holder&) = delete;
        explicit operator bool() const { return m_taken; }

    private:
        HostLock& m_lock;
        bool m_taken;
    };

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<int> m_waiting; // tickets of the waiting threads
    std::thread::id m_owner;
    int m_depth = 0;
    int m_lastTicket = 0;
};
