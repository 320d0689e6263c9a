#pragma once

#include "plugin/EventOrder.h"
#include "plugin/ModelAccess.h"

#include <QList>
#include <QUuid>

#include <functional>
#include <memory>

class CGuiCalls;
class CProcessorTreeModel;
class CTreeChanges;

/// The host's events about the tree, on the threads that tell them: takes their place in the order,
/// asks the host where that can be done at once, and has the change made on the GUI thread.
///
/// Thread-safe. Shared with every thread that is inside an event, so that the bridge may be
/// destroyed meanwhile; after end() events change nothing.
class CTreeEvents final
{
public:
    CTreeEvents(CProcessorTreeModel& model, std::shared_ptr<CGuiCalls> calls);
    ~CTreeEvents();
    CTreeEvents(const CTreeEvents&) = delete;
    CTreeEvents& operator=(const CTreeEvents&) = delete;

    /// Lets go of the model. GUI thread.
    void end();

    CModelAccess& model() { return m_model; }
    CGuiCalls& calls() { return *m_calls; }

    void reset();
    void addGroup(const QUuid& id);
    void addProcessor(const QUuid& id);
    void addProcessors(const QList<QUuid>& ids);
    void removeNode(const QUuid& id);
    void removeNodes(const QList<QUuid>& ids);
    void refreshProcessor(const QUuid& id);
    void refreshNode(const QUuid& id);

    /// The place of a monitor state event, taken when it arrives; the rest runs on the work thread.
    CEventOrder::Place monitorStatesPlace(const QList<QUuid>& ids);
    void updateMonitorStates(const CEventOrder::Place& place, const QList<QUuid>& ids);

    /// Changes the tree without an event of the host's, behind what is queued: what the host
    /// answered before counts as overtaken. GUI thread.
    void changeTree(std::function<void()> change);

    /// Makes void what the host answered so far: the tree or the project changed without an event.
    void noteChange();

    /// The tree back to its root alone, behind what is queued. GUI thread.
    void clear();

    /// Removes all groups with their processors, behind what is queued. GUI thread.
    void removeAllGroups();

private:
    enum class Rewriting { Done, NotHere };

    CEventOrder::Reach reachOfRemoval(const QList<QUuid>& ids) const;
    void refresh(const QUuid& id, bool onlyProcessors, quint32 event);
    Rewriting rewriteRecord(const CEventOrder::CPlace& place, const QUuid& id);

    CModelAccess m_model;
    const std::shared_ptr<CGuiCalls> m_calls;
    const std::shared_ptr<CTreeChanges> m_changes;
};
