#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

/// Detects threads that are blocked for too long, and keeps a journal of what happened. The limits
/// are wide: threads that wait for each other exceed them, a busy machine does not.
class StormWatch final
{
public:
    using Clock = std::chrono::steady_clock;

    /// GUI thread.
    StormWatch();

    bool isGuiThread() const { return std::this_thread::get_id() == m_guiThread; }

    /// Notes that the GUI thread handles its events. A timer of the GUI thread calls it.
    void beat();

    void note(const QString& text);
    QStringList journal() const;

    /// Returns which threads were blocked for too long, and where.
    QStringList complaints() const;

    /// While an object lives, the calling thread does the host's own work: it answers a question or
    /// waits.
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

    /// While an object lives, the host is inside a call of the panel, which may be nested in an
    /// answer.
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

    /// While an object lives, the calling thread delivers event `number`.
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

    /// While an object lives, the GUI thread waits in an answer for a thread that delivers an
    /// event.
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
    std::vector<QString> m_journal;
    std::vector<QString> m_complaints;
};

/// The longest time that the delivery of an event may take, without the host's own answers.
constexpr std::chrono::milliseconds kLongestTelling{6000};

/// The longest time that the GUI thread may stay in the panel without answering a question or
/// returning to its event loop.
constexpr std::chrono::milliseconds kLongestGuiStand{2000};

/// The longest time that the GUI thread may wait in an answer for a thread that delivers an event.
constexpr std::chrono::milliseconds kLongestGuiWait{4000};
