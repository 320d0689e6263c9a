#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <mutex>
#include <thread>

/// Looks at who stands still, and keeps a journal of what happened. The bounds are wide: they are
/// passed by threads that wait for each other, not by a machine that is busy.
class StormWatch final
{
public:
    using Clock = std::chrono::steady_clock;

    /// Made on the GUI thread.
    StormWatch();

    bool isGuiThread() const { return std::this_thread::get_id() == m_guiThread; }

    /// Called by a timer of the GUI thread.
    void beat();

    void note(const QString& text);
    QStringList journal() const;

    /// What stood still for too long.
    QStringList complaints() const;

    /// The calling thread does the host's own work while one lives: answers a question, waits.
    class HostWork final
    {
    public:
        explicit HostWork(StormWatch& watch);
        ~HostWork();
        HostWork(const HostWork&) = delete;
        HostWork& operator=(const HostWork&) = delete;

    private:
        StormWatch& m_watch;
        bool m_wasHost;
    };

    /// The host calls the panel, inside an answer even.
    class PanelWork final
    {
    public:
        explicit PanelWork(StormWatch& watch);
        ~PanelWork();
        PanelWork(const PanelWork&) = delete;
        PanelWork& operator=(const PanelWork&) = delete;

    private:
        StormWatch& m_watch;
        bool m_wasHost;
    };

    /// The calling thread delivers event `number`.
    class Telling final
    {
    public:
        Telling(StormWatch& watch, quint32 number);
        ~Telling();
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;

    private:
        PanelWork m_work;
        StormWatch& m_watch;
        quint32 m_number;
        Clock::time_point m_begin;
        Clock::duration m_hostBefore;
    };

    /// The GUI thread waits in an answer for a thread that delivers an event.
    class GuiWait final
    {
    public:
        GuiWait(StormWatch& watch, const char* what);
        ~GuiWait();
        GuiWait(const GuiWait&) = delete;
        GuiWait& operator=(const GuiWait&) = delete;

    private:
        StormWatch& m_watch;
        const char* m_what;
        Clock::time_point m_begin;
    };

private:
    void switchSide(bool toHost);
    void complain(const QString& text);

    const std::thread::id m_guiThread;
    const Clock::time_point m_start;
    mutable std::mutex m_mutex;
    QStringList m_journal;
    QStringList m_complaints;
};

/// How long a thread that delivers an event may stay in it, its own answers aside.
constexpr std::chrono::milliseconds kLongestTelling{6000};

/// How long the GUI thread may stay in the panel without an answer or a look at its event loop.
constexpr std::chrono::milliseconds kLongestGuiStand{2000};

/// How long the GUI thread may wait in an answer for what an event of another thread holds up.
constexpr std::chrono::milliseconds kLongestGuiWait{4000};
