#pragma once

#include "plugin/EventOrder.h"
#include "processortree/TreeFill.h"

#include <QHash>
#include <QList>
#include <QUuid>

#include <thread>

/// Processors of the host's that the tree leaves out, because it does not hold their group.
///
/// Where several threads tell of groups and processors, or an event waited, an answer may name a
/// group whose event is still on its way, or one that is dissolved by now: such a processor is
/// looked at again when the event about its group comes. A host that tells everything in order on
/// one thread left the processor without its group on purpose.
class CLeftOutProcessors final
{
public:
    /// Whether the answer that named the group was applied as soon as it was given.
    enum class Weather { Calm, Rough };

    void add(const LeftOut& leftOut, const CEventOrder::CPlace& place, Weather weather);
    void remove(const QUuid& id) { m_origins.remove(id); }
    void clear() { m_origins.clear(); }

    /// Returns whether `id` is to be looked at again on an event about it.
    bool isDue(const QUuid& id, const CEventOrder::CPlace& place) const;

    /// Takes out those that wait for an event about `group`.
    QList<QUuid> takeDue(const QUuid& group, const CEventOrder::CPlace& place);

private:
    struct Origin
    {
        QUuid group;
        std::thread::id teller;
        Weather weather;

        bool isDue(const CEventOrder::CPlace& place) const
        {
            return weather == Weather::Rough || teller != place.teller();
        }
    };

    QHash<QUuid, Origin> m_origins;
};
