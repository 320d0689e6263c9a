#include "plugin/GuiCalls.h"

#include "plugin/ThreadAnnotations.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <utility>

namespace {

/// Hosts answer at once, unless they wait for something.
constexpr std::chrono::milliseconds kUsualQuestion{20};

} // namespace

/// What callers wait in. Outlives the object: a caller may still be on its way out.
struct CGuiCalls::Room
{
    std::mutex mutex;
    std::condition_variable changed;
    int pending = 0;
    int questions = 0;      // nested ones of the GUI thread
    int questionNumber = 0; // of the outermost one
    bool closed = false;
};

/// A call on its way, shared by the queue and by a caller that waits. The flags belong to the
/// room's mutex.
struct CGuiCalls::Ticket
{
    Call call;
    bool started = false;
    bool ended = false;
    bool ran = false;
};

/// Carries a ticket through Qt's event queue. However the queue lets go of it, the end is told.
class CGuiCalls::CallEvent final : public QEvent
{
public:
    static Type eventType()
    {
        static const int type = registerEventType();
        return static_cast<Type>(type);
    }

    CallEvent(std::shared_ptr<Room> room, std::shared_ptr<Ticket> ticket)
        : QEvent(eventType())
        , m_room(std::move(room))
        , m_ticket(std::move(ticket))
    {
    }

    CallEvent(const CallEvent&) = delete;
    CallEvent& operator=(const CallEvent&) = delete;

    ~CallEvent() override
    {
        annotateAcquire(this);
        m_ticket->call = nullptr;
        {
            const std::lock_guard guard(m_room->mutex);
            --m_room->pending;
            m_ticket->ended = true;
        }
        m_room->changed.notify_all();
    }

    void run()
    {
        annotateAcquire(this);
        {
            const std::lock_guard guard(m_room->mutex);
            m_ticket->started = true;
        }
        m_ticket->call();
        const std::lock_guard guard(m_room->mutex);
        m_ticket->ran = true;
    }

private:
    std::shared_ptr<Room> m_room;
    std::shared_ptr<Ticket> m_ticket;
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
}

void CGuiCalls::post(Call call)
{
    if (!isHere()) {
        enqueue(std::move(call));
        return;
    }
    settle();
    call();
}

bool CGuiCalls::run(Call call)
{
    if (isHere()) {
        settle();
        call();
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
    {
        const std::lock_guard guard(m_room->mutex);
        if (m_room->pending == 0)
            return true;
    }
    if (!isHere())
        return run([] {});
    if (m_running > 0)
        return false;
    QCoreApplication::sendPostedEvents(this, CallEvent::eventType());
    return true;
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
    if (event->type() != CallEvent::eventType())
        return;
    ++m_running;
    static_cast<CallEvent*>(event)->run();
    --m_running;
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
        ++m_room->pending;
    }
    auto* event = new CallEvent(m_room, ticket);
    annotateRelease(event);
    QCoreApplication::postEvent(this, event);
    return ticket;
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
