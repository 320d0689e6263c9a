#include "base/GuiCalls.h"

#include "base/ContractCheck.h"
#include "base/LogCategories.h"
#include "host/common/AppendLog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <deque>
#include <exception>
#include <utility>

namespace {

QEvent::Type pokeType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

/// The mutex of everything here is the one that questions to the host are watched with: a wait
/// depends on both.
std::mutex& mutex()
{
    return CHostQuestion::watch().mutex;
}

/// What the calling thread has waited since its outermost SharedPatience began.
struct Waits
{
    int scopes = 0;
    CHostQuestion::Clock::duration spent{};
};

Waits& waits()
{
    thread_local Waits waits;
    return waits;
}

/// The panel's own changes may have to wait too, which is no affair of the host's.
void reportWait(const QString& reason)
{
    if (ContractCheck::EventScope::isUnderWay())
        ContractCheck::report(ContractCheck::Finding::EventWaited, reason);
}

void reportBusy()
{
    reportWait(QStringLiteral("it is raised on the GUI thread while rows change, while the tree is "
                              "painted, or inside a question that another event asks"));
}

} // namespace

/// A call on its way, shared by the queue and by the caller. The flags belong to the mutex.
struct CGuiCalls::Ticket
{
    Call call;
    bool isHere = false;       // made on the GUI thread
    std::exception_ptr thrown; // to be thrown by whoever made it there, and waits for it
    bool awaited = false;
    bool ended = false;
    bool ran = false;
};

/// The queue. Outlives the object: a caller may still be on its way out.
struct CGuiCalls::Line
{
    std::deque<std::shared_ptr<Ticket>> queue;
    std::shared_ptr<Ticket> running;
    bool closed = false;
    bool shutDown = false;
};

/// The time in which a call runs. Ends well too when the call throws, or destroys the queue.
class CGuiCalls::Turn final
{
public:
    /// Takes the turn; the mutex is held.
    Turn(CGuiCalls& calls, std::shared_ptr<Ticket> ticket)
        : m_calls(&calls)
        , m_line(calls.m_line)
        , m_ticket(std::move(ticket))
    {
        m_line->running = m_ticket;
    }

    ~Turn()
    {
        m_ticket->call = nullptr;
        {
            const std::lock_guard guard(mutex());
            m_line->running = nullptr;
            m_ticket->ran = true;
            m_ticket->ended = true;
        }
        CHostQuestion::watch().changed.notify_all();
        if (m_calls)
            m_calls->resume();
    }

    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    const QPointer<CGuiCalls> m_calls;
    const std::shared_ptr<Line> m_line;
    const std::shared_ptr<Ticket> m_ticket;
};

CGuiCalls::SharedPatience::SharedPatience()
{
    ++waits().scopes;
}

CGuiCalls::SharedPatience::~SharedPatience()
{
    if (--waits().scopes == 0)
        waits().spent = {};
}

CGuiCalls::CGuiCalls(QObject* parent)
    : QObject(parent)
    , m_line(std::make_shared<Line>())
{
    if (!parent && QCoreApplication::instance())
        moveToThread(QCoreApplication::instance()->thread());
}

CGuiCalls::~CGuiCalls()
{
    shutDown();
}

void CGuiCalls::resume()
{
    // Those that were due meanwhile; the events of the others are still on their way.
    for (; m_missed > 0; --m_missed)
        poke();
}

void CGuiCalls::post(Call call, const Call& onQueued)
{
    if (isHere())
        runHere(std::move(call), onQueued);
    else
        enqueue(std::move(call), false, onQueued);
}

bool CGuiCalls::run(Call call)
{
    if (isHere())
        return runHere(std::move(call), {});
    const auto begun = CHostQuestion::Clock::now();
    const auto deadline = begun + m_patience.load() - waits().spent;
    // This object may be gone when the wait is over.
    const auto line = m_line;
    const auto ticket = enqueue(std::move(call), true, {});
    auto& watch = CHostQuestion::watch();
    std::unique_lock guard(watch.mutex);
    while (!ticket->ended && !line->closed) {
        const auto until = std::min(deadline, watch.releaseTime().value_or(deadline));
        if (CHostQuestion::Clock::now() >= until)
            break;
        watch.changed.wait_until(guard, until);
    }
    ticket->awaited = false;
    const bool ran = ticket->ran;
    const bool isClosed = line->closed;
    const bool isHeldUp = watch.releaseTime().has_value();
    guard.unlock();
    if (waits().scopes > 0)
        waits().spent += CHostQuestion::Clock::now() - begun;
    if (!ran) {
        qCDebug(lcBridge, "a thread no longer waits for its change");
        if (!isClosed) {
            reportWait(isHeldUp ? QStringLiteral("the GUI thread has been inside a question for "
                                                 "more than 20 ms")
                                : QStringLiteral("the GUI thread handles no events for too long"));
        }
    }
    return ran;
}

bool CGuiCalls::settle()
{
    std::size_t queued = 0;
    {
        const std::lock_guard guard(mutex());
        queued = m_line->queue.size();
        if (isHere() && m_line->running)
            return false;
        if (queued == 0 && !m_line->running && !isHere())
            return true;
    }
    if (!isHere())
        return run([] {});
    const QPointer<CGuiCalls> alive(this);
    for (; alive && queued > 0 && !isBusy(); --queued)
        runNext();
    return alive && isFree();
}

bool CGuiCalls::isAwaited() const
{
    Q_ASSERT(isHere());
    const std::lock_guard guard(mutex());
    return m_line->running && m_line->running->awaited;
}

/// Returns whether a call made now on the GUI thread may run at once.
bool CGuiCalls::isFree() const
{
    if (isBusy())
        return false;
    const std::lock_guard guard(mutex());
    return !m_line->running && m_line->queue.empty() && !m_line->shutDown;
}

void CGuiCalls::close()
{
    {
        const std::lock_guard guard(mutex());
        m_line->closed = true;
    }
    CHostQuestion::watch().changed.notify_all();
}

void CGuiCalls::open()
{
    const std::lock_guard guard(mutex());
    m_line->closed = m_line->shutDown;
}

void CGuiCalls::shutDown()
{
    std::deque<std::shared_ptr<Ticket>> dropped;
    {
        const std::lock_guard guard(mutex());
        m_line->shutDown = true;
        dropped.swap(m_line->queue);
    }
    for (const auto& ticket : dropped)
        ticket->call = nullptr;
    close();
}

void CGuiCalls::customEvent(QEvent* event)
{
    if (event->type() == pokeType())
        runNext();
}

/// Queues the call first: what is raised while earlier calls run comes behind it. Returns whether
/// it has run.
bool CGuiCalls::runHere(Call call, const Call& onQueued)
{
    Q_ASSERT(isHere());
    const QPointer<CGuiCalls> alive(this);
    const auto ticket = enqueue(std::move(call), true, onQueued);
    settle();
    {
        const std::lock_guard guard(mutex());
        ticket->awaited = false;
    }
    if (ticket->thrown)
        std::rethrow_exception(ticket->thrown);
    if (!ticket->ended)
        reportBusy();
    // The caller is entitled to find done what was raised by the call itself.
    else if (alive)
        settle();
    return ticket->ran;
}

/// Runs the first call of the queue, unless another one is in the middle of its work.
void CGuiCalls::runNext()
{
    Q_ASSERT(isHere());
    const bool busy = isBusy();
    std::unique_lock guard(mutex());
    if (m_line->queue.empty())
        return;
    if (busy || m_line->running) {
        ++m_missed;
        return;
    }
    const auto ticket = std::move(m_line->queue.front());
    m_line->queue.pop_front();
    const Turn turn(*this, ticket);
    guard.unlock();
    try {
        ticket->call();
    } catch (...) {
        // Whoever runs the queue may be in the middle of something else.
        if (ticket->isHere && isAwaited())
            ticket->thrown = std::current_exception();
        else
            AppendLog(__func__, __FILE__, __LINE__, "The handler threw an exception on an event.");
    }
}

bool CGuiCalls::isHere() const
{
    return thread() == QThread::currentThread();
}

std::shared_ptr<CGuiCalls::Ticket> CGuiCalls::enqueue(Call call, bool awaited, const Call& onQueued)
{
    auto ticket = std::make_shared<Ticket>();
    ticket->call = std::move(call);
    ticket->isHere = isHere();
    ticket->awaited = awaited;
    {
        const std::lock_guard guard(mutex());
        if (m_line->shutDown) {
            ticket->ended = true;
            return ticket;
        }
        if (onQueued)
            onQueued();
        m_line->queue.push_back(ticket);
    }
    poke();
    return ticket;
}

/// Makes Qt's event queue run the next call.
void CGuiCalls::poke()
{
    QCoreApplication::postEvent(this, new QEvent(pokeType()));
}
