#include "plugin/EventOrder.h"

#include <QHash>

#include <mutex>
#include <utility>

struct CEventOrder::State
{
    std::mutex mutex;
    quint64 last = 0;
    quint64 lastForAll = 0;
    struct Last
    {
        quint64 number = 0;
        std::thread::id teller;
    };
    QHash<QUuid, Last> lastAbout; // of the events that arrived while others have a place
    int places = 0;
};

CEventOrder::CPlace::CPlace(std::shared_ptr<State> state, quint64 number)
    : m_state(std::move(state))
    , m_number(number)
    , m_teller(std::this_thread::get_id())
    , m_hasPanel(HandlerPlace::isSet())
{
}

CEventOrder::CPlace::~CPlace()
{
    const std::lock_guard guard(m_state->mutex);
    // Without places nothing is left that could be overtaken.
    if (--m_state->places == 0)
        m_state->lastAbout.clear();
}

bool CEventOrder::CPlace::isOver() const
{
    return !m_hasPanel || m_watch.isOver();
}

CEventOrder::CEventOrder()
    : m_state(std::make_shared<State>())
{
}

CEventOrder::Place CEventOrder::take(const QList<QUuid>& ids, Reach reach)
{
    const std::lock_guard guard(m_state->mutex);
    ++m_state->places;
    ++m_state->last;
    for (const QUuid& id : ids)
        m_state->lastAbout.insert(id, {m_state->last, std::this_thread::get_id()});
    if (reach == Reach::WholeTree)
        m_state->lastForAll = m_state->last;
    return Place(new CPlace(m_state, m_state->last));
}

bool CEventOrder::isOvertaken(const CPlace& place, const QUuid& id) const
{
    const std::lock_guard guard(m_state->mutex);
    return m_state->lastForAll > place.m_number
           || m_state->lastAbout.value(id).number > place.m_number;
}

bool CEventOrder::isContested(const CPlace& place, const QUuid& id) const
{
    const std::lock_guard guard(m_state->mutex);
    const auto last = m_state->lastAbout.value(id);
    return last.number > place.m_number && last.teller != place.m_teller;
}

bool CEventOrder::isOvertakenAtAll(const CPlace& place) const
{
    const std::lock_guard guard(m_state->mutex);
    return m_state->last > place.m_number;
}

quint64 CEventOrder::lastNumber() const
{
    const std::lock_guard guard(m_state->mutex);
    return m_state->last;
}

bool CEventOrder::hasNoOther() const
{
    const std::lock_guard guard(m_state->mutex);
    return m_state->places <= 1;
}
