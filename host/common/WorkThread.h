#pragma once

#include "host/common/HostCommonExport.h"

#include <QThread>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

/// A thread that runs posted jobs one after the other, in the order in which they were posted.
///
/// Start it with QThread::start(); jobs posted before that wait. Jobs must not throw. Destroying a
/// thread that still runs asks it to exit and waits for the job in hand.
class HOSTCOMMON_EXPORT CWorkThread : public QThread
{
    Q_OBJECT

public:
    /// A number that says what the job is about, for whoever reads a trace, and the job itself.
    using Event = std::pair<int, std::function<void()>>;

    explicit CWorkThread(QObject* parent = nullptr);
    ~CWorkThread() override;

    /// Posts a job. With `replacePending` a waiting job of the same number is replaced in its place
    /// in the line instead. Any thread. After ThreadExit() jobs are dropped until ActivateThread().
    void AppendEvent(Event event, bool replacePending);

    /// Takes jobs again after ThreadExit(), and starts the thread when it does not run. Any thread
    /// but its own.
    void ActivateThread();

    /// Asks the thread to end after the job in hand; waiting jobs are dropped, with what they hold.
    /// Does not wait: QThread::wait() does. Any thread.
    void ThreadExit();

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
