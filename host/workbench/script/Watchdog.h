#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// Notices when a thread that should call alive() all the time does not: a script that is run by a
/// timer cannot time out while its thread is stuck.
class Watchdog final
{
public:
    /// Calls `stuck` once, on a thread of its own, when alive() has not been called for `limit`.
    Watchdog(std::chrono::milliseconds limit, std::function<void()> stuck);

    /// Ends the watch. Does not wait for the watched thread.
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// Thread-safe.
    void alive() { ++m_beats; }

private:
    void watch(const std::function<void()>& stuck);

    std::atomic<unsigned> m_beats{0};
    const std::chrono::milliseconds m_limit;
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_end = false; // guarded by m_mutex
    std::thread m_thread;
};
