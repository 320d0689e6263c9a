#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

class QThread;

/// What has not happened by then is not going to.
constexpr auto kSoon = std::chrono::seconds(20);

/// A thread of the host's that delivers events: runs what it is given, in order.
///
/// Not a QThread: ThreadSanitizer does not see the end of one.
class HostThread final
{
public:
    HostThread();

    /// Runs what is still waiting, then ends. The GUI thread's events are processed meanwhile.
    ~HostThread();

    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;

    /// Queues `work`; the future is ready when it has run.
    std::future<void> post(std::function<void()> work);

    /// Runs `work` there while this thread, the GUI thread, goes on processing events. Fails the
    /// test and returns false when that takes longer than `limitMs`.
    bool run(std::function<void()> work, int limitMs = 30000);

    /// What QThread::currentThread() is there.
    QThread* qtThread() const { return m_qtThread; }

private:
    void work();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::packaged_task<void()>> m_work;
    bool m_end = false;
    QThread* m_qtThread = nullptr; // Qt's
    std::thread m_thread;
};

/// Waits as a host may, without processing events on this thread. False when `done` is not ready
/// soon.
bool comesBack(const std::future<void>& done);

/// Runs `work` on the GUI thread and waits for it, as a host may from any thread of its own.
void onGuiThread(const std::function<void()>& work);
