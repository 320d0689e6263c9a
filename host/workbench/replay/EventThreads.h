#pragma once

#include <QString>

#include <functional>
#include <map>
#include <memory>

class QThread;
class QObject;

/// The threads of a host on which it notified, by the names of the recording. GUI thread.
class EventThreads final
{
public:
    EventThreads();

    /// Blocks until the threads have ended. What they have begun is finished; what waits behind it
    /// may be dropped. The GUI thread handles its events meanwhile, except input.
    ~EventThreads();

    EventThreads(const EventThreads&) = delete;
    EventThreads& operator=(const EventThreads&) = delete;

    /// Runs `work` on the thread of this name, after what was given it before.
    void run(const QString& thread, std::function<void()> work);

private:
    struct Lane
    {
        std::unique_ptr<QThread> thread;
        std::unique_ptr<QObject> context; // lives on the thread
    };

    std::map<QString, Lane> m_lanes;
};
