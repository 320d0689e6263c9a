#include "plugin/LeftOutProcessors.h"

void CLeftOutProcessors::add(const LeftOut& leftOut, const CEventOrder::CPlace& place,
                             Weather weather)
{
    m_origins.insert(leftOut.processor, {leftOut.group, place.teller(), weather});
}

bool CLeftOutProcessors::isDue(const QUuid& id, const CEventOrder::CPlace& place) const
{
    const auto found = m_origins.constFind(id);
    return found != m_origins.cend() && found->isDue(place);
}

QList<QUuid> CLeftOutProcessors::takeDue(const QUuid& group, const CEventOrder::CPlace& place)
{
    QList<QUuid> due;
    for (auto origin = m_origins.begin(); origin != m_origins.end();) {
        if (origin->group == group && origin->isDue(place)) {
            due.append(origin.key());
            origin = m_origins.erase(origin);
        } else {
            ++origin;
        }
    }
    return due;
}
