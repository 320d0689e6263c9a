#pragma once

#include <QObject>
#include <QThread>

#include <functional>

/// A thread of the host that delivers events which come late, or on a thread that the panel has not
/// seen before.
class FaultThread final
{
public:
    FaultThread();

    /// Calls stop().
    ~FaultThread();

    FaultThread(const FaultThread&) = delete;
    FaultThread& operator=(const FaultThread&) = delete;

    /// Calls `act` on this thread after so many milliseconds. Thread-safe.
    void callLater(int milliseconds, const std::function<void()>& act);

    /// Ends the thread after the current call; later calls are dropped. Processes the events of the
    /// GUI thread meanwhile, because the call may need them. GUI thread.
    void stop();

private:
    QThread m_thread;
    QObject m_there; // lives on m_thread
};
