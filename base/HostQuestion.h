#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

/// While one lives, the GUI thread is inside a question to the host. The host may wait there for
/// any thread of its own, so a thread that waits for the GUI thread must not do so for long.
///
/// May be created on any thread; only those of the GUI thread count. Nested ones are one question.
class CHostQuestion final
{
public:
    CHostQuestion();
    ~CHostQuestion();
    CHostQuestion(const CHostQuestion&) = delete;
    CHostQuestion& operator=(const CHostQuestion&) = delete;

    using Clock = std::chrono::steady_clock;

    /// How long a question takes at most, 20 ms. Hosts answer at once, unless they wait for
    /// something. Any thread.
    static std::chrono::milliseconds usual();
    static void setUsual(std::chrono::milliseconds duration);

    /// What threads wait in for the GUI thread: the condition is notified when a question begins
    /// or ends. Never destroyed.
    struct Watch
    {
        std::mutex mutex;
        std::condition_variable changed;
        int nested = 0;
        Clock::time_point since; // of the outermost question

        /// When the thread that waits is to leave; nothing while there is no question. The mutex
        /// is held.
        std::optional<Clock::time_point> releaseTime() const;
    };
    static Watch& watch();

    /// Returns whether the GUI thread has been inside one question for longer than questions
    /// usually take. Any thread.
    static bool holdsUpGuiThread();

private:
    bool m_counts;
};
