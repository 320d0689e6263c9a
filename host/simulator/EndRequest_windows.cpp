#include "host/simulator/EndRequest.h"

#include <mutex>
#include <utility>

#include <windows.h>

namespace {

class ConsoleEvents;

std::mutex g_mutex;
ConsoleEvents* g_events = nullptr; // the one that lives

/// The system calls it on a thread of its own.
BOOL WINAPI handleConsoleEvent(DWORD event);

class ConsoleEvents final : public QObject
{
public:
    explicit ConsoleEvents(std::function<void()> end)
        : m_end(std::move(end))
    {
        const std::lock_guard guard(g_mutex);
        g_events = this;
        SetConsoleCtrlHandler(handleConsoleEvent, TRUE);
    }

    ~ConsoleEvents() override
    {
        SetConsoleCtrlHandler(handleConsoleEvent, FALSE);
        const std::lock_guard guard(g_mutex);
        g_events = nullptr;
    }

    void end() const { m_end(); }

private:
    const std::function<void()> m_end;
};

BOOL WINAPI handleConsoleEvent(DWORD event)
{
    const std::lock_guard guard(g_mutex);
    if (!g_events || (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT))
        return FALSE;
    QMetaObject::invokeMethod(
        g_events, [events = g_events] { events->end(); }, Qt::QueuedConnection);
    return TRUE;
}

} // namespace

std::unique_ptr<QObject> onEndRequest(std::function<void()> end)
{
    return std::make_unique<ConsoleEvents>(std::move(end));
}
