#pragma once

#include "host/common/HostCommonExport.h"

#include <QThread>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

/// A thread that runs posted jobs in the order in which they were posted.
///
/// Start it with QThread::start(); jobs that are posted earlier wait. Jobs must not throw. The
/// destructor stops a running thread and waits for its current job.
class HOSTCOMMON_EXPORT CWorkThread : public QThread
{
    Q_OBJECT

public:
    /// A number that identifies the purpose of the job in traces, and the job.
    using Event = std::pair<int, std::function<void()>>;

    explicit CWorkThread(QObject* parent = nullptr);
    ~CWorkThread() override;

    /// Posts a job. With `replacePending`, a waiting job of the same number is replaced and keeps
    /// its position. After ThreadExit(), jobs are dropped until ActivateThread(). Thread-safe.
    void AppendEvent(Event event, bool replacePending);

    /// Accepts jobs again after ThreadExit() and starts the thread if it does not run. Any thread
    /// except this one.
    void ActivateThread();

    /// Drops the waiting jobs and makes the thread finish after its current job. Does not block;
    /// use QThread::wait() for that. Thread-safe.
    void ThreadExit();

    /// Returns how many jobs of all threads wait or run. Thread-safe.
    static int PendingJobs();

protected:
    void run() override;

private:
    bool takeNext(Event& event);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Event> m_events;
    bool m_exit = false;
    bool m_leaving = false; // run() is about to return
};
