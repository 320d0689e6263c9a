#pragma once

#include "plugin/EventOrder.h"
#include "plugin/HostAnswer.h"
#include "plugin/LeftOutProcessors.h"

#include <QList>
#include <QUuid>

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

    void clear();
    void reset(const Place& place);
    void addGroup(const Place& place, const QUuid& id,
                  const CHostAnswer<ProcessorGroupNode>& answer);
    void addProcessor(const Place& place, const QUuid& id, const CHostAnswer<ProcessorNode>& answer,
                      quint32 event);
    void addProcessors(const Place& place, const QList<QUuid>& ids);

    /// With `doubtful` the removal was told while the GUI thread could not follow.
    void removeNode(const Place& place, const QUuid& id, bool doubtful);
    void removeNodes(const Place& place, const QList<QUuid>& ids, bool doubtful);

    void refreshProcessor(const Place& place, const QUuid& id, bool onlyProcessors,
                          const CHostAnswer<ProcessorNode>& answer, quint32 event);

    /// Views learn that the records of `ids` were replaced on another thread.
    void announceRecords(const QList<QUuid>& ids);

    /// Fetches the records of `ids` here.
    void refreshRecords(const Place& place, const QList<QUuid>& ids);

private:
    template <typename Record>
    bool holds(const Place& place, const QUuid& id, const CHostAnswer<Record>& answer) const;

    void noteIfLeftOut(const Place& place, const LeftOut& leftOut, bool isFresh);
    void noteLeftOut(const Place& place);
    void addLeftOut(const Place& place, const QUuid& group, quint32 event);
    void forget(const Place& place, const QUuid& id);
    bool isGroup(const QUuid& id) const;
    bool isStale(const Place& place, const QUuid& id, bool doubtful) const;
    bool dissolve(const QUuid& group);

    CProcessorTreeModel& m_model;
    CGuiCalls& m_calls;
    CEventOrder m_order;
    CLeftOutProcessors m_leftOut;
};
