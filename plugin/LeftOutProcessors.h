#pragma once

#include "plugin/EventOrder.h"
#include "processortree/model/TreeFill.h"

#include <QHash>
#include <QList>
#include <QUuid>

#include <thread>

/// Processors of the host's that the tree leaves out, because it does not hold their group.
///
/// Where several threads tell of groups and processors, or an event waited, an answer may name a
/// group whose event is still on its way, or one that is dissolved by now: such a processor is
/// looked at again when the event about its group comes. A host that tells everything in order on
/// one thread left the processor without its group on purpose, unless a fill did not find the group
/// and the host then tells of its end: the two lists of a fill are not asked for at once.
class CLeftOutProcessors final
{
public:
    /// How the answer came that named the group: applied as soon as it was given (Calm), with the
    /// lists of a fill, or late.
    enum class Weather { Calm, Fill, Rough };

    /// What an event does to the row that it names.
    enum class News { Change, End };

    void add(const LeftOut& leftOut, const CEventOrder::CPlace& place, Weather weather);
    void remove(const QUuid& id) { m_origins.remove(id); }
    void clear() { m_origins.clear(); }
    bool contains(const QUuid& id) const { return m_origins.contains(id); }

    /// Returns whether `id` is to be looked at again on an event about it.
    bool isDue(const QUuid& id, const CEventOrder::CPlace& place, News news) const;

    struct Due
    {
        QUuid processor;
        Weather weather;
        quint64 order;
    };

    /// Takes out those that wait for an event about `group`, in the order in which they were added.
    QList<Due> takeDue(const QUuid& group, const CEventOrder::CPlace& place, News news);

private:
    struct Origin
    {
        QUuid group;
        std::thread::id teller;
        Weather weather;
        quint64 order;

        bool isDue(const CEventOrder::CPlace& place, News news) const
        {
            return weather == Weather::Rough || teller != place.teller()
                   || (weather == Weather::Fill && news == News::End);
        }
    };

    QHash<QUuid, Origin> m_origins;
    quint64 m_added = 0;
};
