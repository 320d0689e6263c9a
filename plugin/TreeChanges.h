#pragma once

#include "base/HostAnswer.h"
#include "base/HostQuestion.h"
#include "plugin/EventOrder.h"
#include "plugin/LeftOutProcessors.h"

#include <QHash>
#include <QList>
#include <QUuid>

#include <atomic>

class CGuiCalls;
class CProcessorTreeModel;
class QStandardItem;

/// The changes of the tree that the host's events ask for. Each looks at the tree when it runs, and
/// uses what the host answered before only if the answer still holds: its caller waits, nothing
/// newer has arrived, and the handler is the host's still. Otherwise it asks the host anew.
///
/// Runs on the GUI thread as calls of a CGuiCalls, one at a time. Without a panel nothing changes.
class CTreeChanges final
{
public:
    using Place = CEventOrder::Place;

    /// Both outlive this object, or no call runs any more.
    CTreeChanges(CProcessorTreeModel& model, CGuiCalls& calls);

    CEventOrder& order() { return m_order; }

    /// Returns whether the last fill already showed what the event at `place` tells. Any thread.
    bool wasInFill(const CEventOrder::CPlace& place) const;

    void clear();
    void removeAllGroups();
    void reset(const Place& place);
    void addGroup(const Place& place, const QUuid& id,
                  const CHostAnswer<ProcessorGroupNode>& answer);
    void addProcessor(const Place& place, const QUuid& id, const CHostAnswer<ProcessorNode>& answer,
                      quint32 event);
    void addProcessors(const Place& place, const QList<QUuid>& ids);

    /// When a removal was told.
    struct Told
    {
        CHostQuestion::Clock::time_point when = CHostQuestion::Clock::now();
        bool whileHeldUp = CHostQuestion::holdsUpGuiThread();

        /// Returns whether the GUI thread could not follow.
        bool isLongAgo() const
        {
            return CHostQuestion::Clock::now() > when + CHostQuestion::usual();
        }
    };
    void removeNode(const Place& place, const QUuid& id, const Told& told);
    void removeNodes(const Place& place, const QList<QUuid>& ids, const Told& told);

    void refreshProcessor(const Place& place, const QUuid& id, bool onlyProcessors,
                          const CHostAnswer<ProcessorNode>& answer, quint32 event);

    /// Views learn that the records of `ids` were replaced on another thread.
    void announceRecords(const QList<QUuid>& ids);

    /// Fetches the records of `ids` here.
    void refreshRecords(const Place& place, const QList<QUuid>& ids);

private:
    void logMissing(const Place& place, quint32 event, const QUuid& id) const;
    template <typename Record>
    bool holds(const Place& place, const QUuid& id, const CHostAnswer<Record>& answer) const;

    void addProcessor(const Place& place, const QUuid& id, const CHostAnswer<ProcessorNode>& answer,
                      quint32 event, CLeftOutProcessors::Weather asking);
    void noteIfLeftOut(const Place& place, const LeftOut& leftOut,
                       CLeftOutProcessors::Weather weather);
    void noteLeftOut(const Place& place, CLeftOutProcessors::Weather weather);
    void addLeftOut(const Place& place, const QUuid& group, quint32 event,
                    CLeftOutProcessors::News news);
    void noteUnknown(const Place& place, const QUuid& id, quint32 event);
    void forget(const Place& place, const QUuid& id);
    bool isGroup(const QUuid& id) const;
    int rowOfGroup(const CEventOrder::CPlace& place) const;
    bool isStale(const Place& place, const QUuid& id, const Told& told) const;
    bool dissolve(const Place& place, const QUuid& group);

    CProcessorTreeModel& m_model;
    CGuiCalls& m_calls;
    CEventOrder m_order;
    std::atomic<quint64> m_filledUpTo{0}; // the newest place when the last fill began
    CLeftOutProcessors m_leftOut;
    QHash<QUuid, quint64> m_groupPlaces; // of the groups that came by an event of their own
    quint64 m_lastGroup = 0;             // the last of these places

    // Processors with a row that the host no longer knew when an event about them ran late, with
    // the number of that event. If they stood in a group last, the tree never learned of it.
    QHash<QUuid, quint32> m_unknown;
    quint64 m_groupsRemoved = 0; // the newest place when all groups were removed
};
