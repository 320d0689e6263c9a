#pragma once

#include <QThread>

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>

/// A thread of the host's that delivers events: runs what it is given, in order.
class HostThread final : public QThread
{
public:
    HostThread();

    /// Runs what is still waiting, then ends. The GUI thread's events are processed meanwhile.
    ~HostThread() override;

    /// Queues `work`; the future is ready when it has run.
    std::future<void> post(std::function<void()> work);

    /// Runs `work` there while this thread, the GUI thread, goes on processing events. Fails the test
    /// and returns false when that takes longer than `limitMs`.
    bool run(std::function<void()> work, int limitMs = 30000);

protected:
    void run() override;

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::packaged_task<void()>> m_work;
    bool m_end = false;
};
