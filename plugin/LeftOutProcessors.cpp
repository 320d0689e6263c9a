#include "plugin/LeftOutProcessors.h"

#include <algorithm>

void CLeftOutProcessors::add(const LeftOut& leftOut, const CEventOrder::CPlace& place,
                             Weather weather)
{
    m_origins.insert(leftOut.processor, {leftOut.group, place.teller(), weather, ++m_added});
}

bool CLeftOutProcessors::isDue(const QUuid& id, const CEventOrder::CPlace& place, News news) const
{
    const auto found = m_origins.constFind(id);
    return found != m_origins.cend() && found->isDue(place, news);
}

QList<CLeftOutProcessors::Due>
CLeftOutProcessors::takeDue(const QUuid& group, const CEventOrder::CPlace& place, News news)
{
    QList<Due> due;
    for (auto origin = m_origins.begin(); origin != m_origins.end();) {
        if (origin->group == group && origin->isDue(place, news)) {
            due.append({origin.key(), origin->weather, origin->order});
            origin = m_origins.erase(origin);
        } else {
            ++origin;
        }
    }
    std::sort(due.begin(), due.end(),
              [](const Due& left, const Due& right) { return left.order < right.order; });
    return due;
}
