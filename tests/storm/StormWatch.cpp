#include "tests/storm/StormWatch.h"

#include <functional>

namespace {

using Clock = StormWatch::Clock;

/// Whether the calling thread works for the host or for the panel, since when, and how long it has
/// worked for the host.
struct Side
{
    bool host = false;
    Clock::time_point since = Clock::now();
    Clock::duration hostTime{};
};

Side& side()
{
    thread_local Side side;
    return side;
}

qint64 inMs(Clock::duration duration)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
}

} // namespace

StormWatch::StormWatch()
    : m_guiThread(std::this_thread::get_id())
    , m_start(Clock::now())
{
    side() = Side();
}

void StormWatch::beat()
{
    switchSide(side().host);
}

void StormWatch::note(const QString& text)
{
    const QString line =
        QStringLiteral("%1 ms %2: %3")
            .arg(inMs(Clock::now() - m_start), 5)
            .arg(isGuiThread() ? QStringLiteral("GUI")
                               : QString::number(
                                   std::hash<std::thread::id>()(std::this_thread::get_id()) % 1000),
                 text);
    const std::lock_guard guard(m_mutex);
    m_journal.push_back(line);
}

QStringList StormWatch::journal() const
{
    const std::lock_guard guard(m_mutex);
    return {m_journal.begin(), m_journal.end()};
}

QStringList StormWatch::complaints() const
{
    const std::lock_guard guard(m_mutex);
    return {m_complaints.begin(), m_complaints.end()};
}

void StormWatch::complain(const QString& text)
{
    note(text);
    const std::lock_guard guard(m_mutex);
    m_complaints.push_back(text);
}

/// Ends the time that the calling thread spent on one side.
void StormWatch::switchSide(bool toHost)
{
    Side& mine = side();
    const auto now = Clock::now();
    const auto stretch = now - mine.since;
    if (mine.host)
        mine.hostTime += stretch;
    else if (isGuiThread() && stretch > kLongestGuiStand)
        complain(QStringLiteral("the GUI thread stood for %1 ms").arg(inMs(stretch)));
    mine.host = toHost;
    mine.since = now;
}

StormWatch::HostWork::HostWork(StormWatch& watch)
    : m_watch(watch)
    , m_wasHost(side().host)
{
    m_watch.switchSide(true);
}

StormWatch::HostWork::~HostWork()
{
    m_watch.switchSide(m_wasHost);
}

StormWatch::PanelWork::PanelWork(StormWatch& watch)
    : m_watch(watch)
    , m_wasHost(side().host)
{
    m_watch.switchSide(false);
}

StormWatch::PanelWork::~PanelWork()
{
    m_watch.switchSide(m_wasHost);
}

StormWatch::Telling::Telling(StormWatch& watch, quint32 number)
    : m_work(watch)
    , m_watch(watch)
    , m_number(number)
    , m_begin(Clock::now())
    , m_hostBefore(side().hostTime)
{
}

StormWatch::Telling::~Telling()
{
    const auto own = Clock::now() - m_begin - (side().hostTime - m_hostBefore);
    if (!m_watch.isGuiThread() && own > kLongestTelling)
        m_watch.complain(
            QStringLiteral("a thread stood for %1 ms in event %2").arg(inMs(own)).arg(m_number));
}

StormWatch::GuiWait::GuiWait(StormWatch& watch, const char* what)
    : m_watch(watch)
    , m_what(what)
    , m_begin(Clock::now())
{
}

StormWatch::GuiWait::~GuiWait()
{
    const auto waited = Clock::now() - m_begin;
    if (m_watch.isGuiThread() && waited > kLongestGuiWait)
        m_watch.complain(QStringLiteral("the GUI thread waited in an answer for %1 ms, for %2")
                             .arg(inMs(waited))
                             .arg(QLatin1String(m_what)));
}
