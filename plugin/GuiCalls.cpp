#include "plugin/GuiCalls.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QThread>

#include <deque>
#include <utility>

namespace {

/// Hosts answer at once, unless they wait for something.
constexpr std::chrono::milliseconds kUsualQuestion{20};

QEvent::Type pokeType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

} // namespace

/// A call on its way, shared by the queue and by a caller that waits. The flags belong to the
/// room's mutex.
struct CGuiCalls::Ticket
{
    Call call;
    bool started = false;
    bool ended = false;
    bool ran = false;
};

/// What callers wait in. Outlives the object: a caller may still be on its way out.
struct CGuiCalls::Room
{
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Ticket>> queue;
    int running = 0;        // from the queue
    int questions = 0;      // nested ones of the GUI thread
    int questionNumber = 0; // of the outermost one
    bool closed = false;
};

CGuiCalls::CGuiCalls(QObject* parent)
    : QObject(parent)
    , m_room(std::make_shared<Room>())
{
    if (!parent && QCoreApplication::instance())
        moveToThread(QCoreApplication::instance()->thread());
}

CGuiCalls::~CGuiCalls()
{
    close();
    std::deque<std::shared_ptr<Ticket>> dropped;
    {
        const std::lock_guard guard(m_room->mutex);
        dropped.swap(m_room->queue);
    }
    for (const auto& ticket : dropped)
        ticket->call = nullptr;
}

void CGuiCalls::resume()
{
    // Those that found it busy; the others are on their way still.
    for (; m_missed > 0; --m_missed)
        poke();
}

void CGuiCalls::post(Call call)
{
    if (isHere())
        run(std::move(call));
    else
        enqueue(std::move(call));
}

bool CGuiCalls::run(Call call)
{
    if (isHere()) {
        settle();
        if (isBusy() || isQueued()) {
            enqueue(std::move(call));
            return false;
        }
        // The call may destroy this object.
        const QPointer<CGuiCalls> alive(this);
        ++m_direct;
        call();
        if (alive && --m_direct == 0)
            resume();
        return true;
    }
    const auto room = m_room;
    const auto deadline = std::chrono::steady_clock::now() + m_patience;
    const auto ticket = enqueue(std::move(call));
    std::unique_lock guard(room->mutex);
    const auto isOver = [&] { return ticket->ended || room->closed; };
    const auto isAsking = [&] { return !ticket->started && room->questions > 0; };
    while (room->changed.wait_until(guard, deadline, [&] { return isOver() || isAsking(); })
           && !isOver()) {
        const int question = room->questionNumber;
        const auto isNext = [&] { return !isAsking() || room->questionNumber != question; };
        if (!room->changed.wait_for(guard, kUsualQuestion, [&] { return isOver() || isNext(); }))
            break;
    }
    return ticket->ran;
}

bool CGuiCalls::settle()
{
    std::size_t queued = 0;
    {
        const std::lock_guard guard(m_room->mutex);
        queued = m_room->queue.size();
        if (queued == 0 && m_room->running == 0)
            return true;
        if (isHere() && m_room->running > 0)
            return false;
    }
    if (!isHere())
        return run([] {});
    // None of them while another one is in the middle of its work.
    for (; queued > 0 && m_direct == 0 && !isBusy(); --queued)
        runNext();
    return !isQueued();
}

bool CGuiCalls::isQueued() const
{
    const std::lock_guard guard(m_room->mutex);
    return !m_room->queue.empty();
}

void CGuiCalls::close()
{
    {
        const std::lock_guard guard(m_room->mutex);
        m_room->closed = true;
    }
    m_room->changed.notify_all();
}

void CGuiCalls::open()
{
    const std::lock_guard guard(m_room->mutex);
    m_room->closed = false;
}

void CGuiCalls::customEvent(QEvent* event)
{
    if (event->type() == pokeType())
        runNext();
}

/// Runs the first call of the queue, unless another one is in the middle of its work.
void CGuiCalls::runNext()
{
    const auto room = m_room;
    std::shared_ptr<Ticket> ticket;
    {
        const bool busy = isBusy();
        const std::lock_guard guard(room->mutex);
        if (room->queue.empty())
            return;
        if (busy || m_direct > 0 || room->running > 0) {
            ++m_missed;
            return;
        }
        ticket = std::move(room->queue.front());
        room->queue.pop_front();
        ticket->started = true;
        ++room->running;
    }
    // The call may destroy this object.
    const QPointer<CGuiCalls> alive(this);
    ticket->call();
    ticket->call = nullptr;
    {
        const std::lock_guard guard(room->mutex);
        --room->running;
        ticket->ran = true;
        ticket->ended = true;
    }
    room->changed.notify_all();
    if (alive)
        resume();
}

bool CGuiCalls::isHere() const
{
    return thread() == QThread::currentThread();
}

std::shared_ptr<CGuiCalls::Ticket> CGuiCalls::enqueue(Call call)
{
    auto ticket = std::make_shared<Ticket>();
    ticket->call = std::move(call);
    {
        const std::lock_guard guard(m_room->mutex);
        m_room->queue.push_back(ticket);
    }
    poke();
    return ticket;
}

/// Has Qt's event queue run the next call.
void CGuiCalls::poke()
{
    QCoreApplication::postEvent(this, new QEvent(pokeType()));
}

CGuiCalls::CHostQuestion::CHostQuestion(CGuiCalls& calls)
    : m_calls(calls.isHere() ? &calls : nullptr)
{
    if (!m_calls)
        return;
    {
        const std::lock_guard guard(m_calls->m_room->mutex);
        if (m_calls->m_room->questions++ == 0)
            ++m_calls->m_room->questionNumber;
    }
    m_calls->m_room->changed.notify_all();
}

CGuiCalls::CHostQuestion::~CHostQuestion()
{
    if (!m_calls)
        return;
    {
        const std::lock_guard guard(m_calls->m_room->mutex);
        --m_calls->m_room->questions;
    }
    m_calls->m_room->changed.notify_all();
}
