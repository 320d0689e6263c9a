#include "plugin/TreeEvents.h"

#include "Interface/HostEvents.h"
#include "base/ContractCheck.h"
#include "base/GuiCalls.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"
#include "plugin/TreeChanges.h"

#include <utility>

namespace {

using Reach = CEventOrder::Reach;

void logPresent(const CTreeChanges& changes, const CEventOrder::Place& place, quint32 event,
                const QUuid& id)
{
    logDropped(event, id, "the tree has it");
    if (ContractCheck::isOn() && !changes.wasInFill(*place)) {
        ContractCheck::report(ContractCheck::Finding::AlreadyInTree,
                              QStringLiteral("%1 is told as new").arg(id.toString()), event);
    }
}

} // namespace

CTreeEvents::CTreeEvents(CProcessorTreeModel& model, std::shared_ptr<CGuiCalls> calls)
    : m_model(model)
    , m_calls(std::move(calls))
    , m_changes(std::make_shared<CTreeChanges>(model, *m_calls))
{
}

CTreeEvents::~CTreeEvents() = default;

void CTreeEvents::end()
{
    m_calls->shutDown();
    m_model.end();
}

void CTreeEvents::noteChange()
{
    m_changes->order().take({}, Reach::WholeTree);
}

void CTreeEvents::changeTree(std::function<void()> change)
{
    const ContractCheck::EventScope scope(std::nullopt);
    const HandlerPlace::CPanelWatch panel;
    m_calls->post([changes = m_changes, change = std::move(change), panel] {
        if (panel.isOver())
            return;
        // Before and after: the host may be told in the middle of it.
        changes->order().take({}, Reach::WholeTree);
        change();
        changes->order().take({}, Reach::WholeTree);
    });
}

void CTreeEvents::clear()
{
    changeTree([changes = m_changes] { changes->clear(); });
}

void CTreeEvents::removeAllGroups()
{
    changeTree([changes = m_changes] { changes->removeAllGroups(); });
}

// What asks nobody beforehand takes its place together with that in the queue: an event that comes
// later finds it there.

void CTreeEvents::reset()
{
    const auto place = std::make_shared<CEventOrder::Place>();
    m_calls->post([changes = m_changes, place] { changes->reset(*place); },
                  [&] { *place = m_changes->order().take({}, Reach::WholeTree); });
}

void CTreeEvents::addProcessors(const QList<QUuid>& ids)
{
    const auto place = m_changes->order().take(ids, Reach::OwnRows);
    m_calls->run([changes = m_changes, place, ids] { changes->addProcessors(place, ids); });
}

void CTreeEvents::removeNode(const QUuid& id)
{
    const CTreeChanges::Told told;
    const Reach reach = reachOfRemoval({id});
    const auto place = std::make_shared<CEventOrder::Place>();
    m_calls->post([changes = m_changes, place, id, told] { changes->removeNode(*place, id, told); },
                  [&] { *place = m_changes->order().take({id}, reach); });
}

void CTreeEvents::removeNodes(const QList<QUuid>& ids)
{
    const CTreeChanges::Told told;
    const Reach reach = reachOfRemoval(ids);
    const auto place = std::make_shared<CEventOrder::Place>();
    m_calls->post(
        [changes = m_changes, place, ids, told] { changes->removeNodes(*place, ids, told); },
        [&] { *place = m_changes->order().take(ids, reach); });
}

/// The removal of a group moves the processors that stand in it.
CEventOrder::Reach CTreeEvents::reachOfRemoval(const QList<QUuid>& ids) const
{
    for (const QUuid& id : ids) {
        const auto row = m_model.find(id);
        if (!row || row->type != NodeProcessor)
            return Reach::WholeTree;
    }
    return Reach::OwnRows;
}

void CTreeEvents::addGroup(const QUuid& id)
{
    const auto place = m_changes->order().take({id}, Reach::WholeTree);
    CHostAnswer<ProcessorGroupNode> answer;
    if (m_calls->settle() && !place->isOver()) {
        if (m_model.find(id)) {
            logPresent(*m_changes, place, HostEvents::GroupAdded::number, id);
            return;
        }
        answer = askForGroup(id, HostEvents::GroupAdded::number, place->panel());
    }
    m_calls->run([changes = m_changes, place, id, answer = std::move(answer)] {
        changes->addGroup(place, id, answer);
    });
}

void CTreeEvents::addProcessor(const QUuid& id)
{
    constexpr quint32 event = HostEvents::ProcessorAdded::number;
    const auto place = m_changes->order().take({id}, Reach::OwnRows);
    CHostAnswer<ProcessorNode> answer;
    if (m_calls->settle() && !place->isOver()) {
        if (m_model.find(id)) {
            logPresent(*m_changes, place, event, id);
            return;
        }
        answer = askForProcessor(id, event, place->panel());
    }
    m_calls->run([changes = m_changes, place, id, answer = std::move(answer)] {
        changes->addProcessor(place, id, answer, event);
    });
}

void CTreeEvents::refreshProcessor(const QUuid& id)
{
    refresh(id, true, HostEvents::ProcessorChanged::number);
}

void CTreeEvents::refreshNode(const QUuid& id)
{
    refresh(id, false, HostEvents::ProjectProcessorChanged::number);
}

void CTreeEvents::refresh(const QUuid& id, bool onlyProcessors, quint32 event)
{
    const auto place = m_changes->order().take({id}, Reach::OwnRows);
    CHostAnswer<ProcessorNode> answer;
    if (m_calls->settle() && !place->isOver()) {
        const auto row = m_model.find(id);
        if (row && onlyProcessors && row->type != NodeProcessor) {
            logDropped(event, id, "it is no processor");
            return;
        }
        if (row)
            answer = askForProcessor(id, event, place->panel());
    }
    m_calls->run([changes = m_changes, place, id, onlyProcessors, answer = std::move(answer),
                  event] { changes->refreshProcessor(place, id, onlyProcessors, answer, event); });
}

CEventOrder::Place CTreeEvents::monitorStatesPlace(const QList<QUuid>& ids)
{
    return m_changes->order().take(ids, Reach::OwnRows);
}

void CTreeEvents::updateMonitorStates(const CEventOrder::Place& place, const QList<QUuid>& ids)
{
    const std::weak_ptr<IAbstractControlInterface> source = HandlerPlace::current();
    QList<QUuid> rewritten;
    QList<QUuid> left;
    const bool settled = m_calls->settle() && !place->isOver();
    for (const QUuid& id : ids) {
        if (settled && rewriteRecord(*place, id) == Rewriting::Done)
            rewritten.append(id);
        else
            left.append(id);
    }
    // The rows' content changed without a signal; filters on it learn of it here.
    m_calls->post([changes = m_changes, place, source, rewritten, left] {
        const bool isCurrent = CHostAnswer<ProcessorNode>(source, {}).isCurrent();
        changes->refreshRecords(place, isCurrent ? left : rewritten + left);
        changes->announceRecords(rewritten);
    });
}

/// Replaces the record of a processor's row by the host's, here on the work thread. A row or record
/// that changed while the host answered may hold a later answer already, so the host is asked
/// again; not for ever, as it may be the very question that makes it change the record.
CTreeEvents::Rewriting CTreeEvents::rewriteRecord(const CEventOrder::CPlace& place, const QUuid& id)
{
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const auto row = m_model.find(id);
        const CRecordCell* cell = row ? row->record.cell() : nullptr;
        if (!cell)
            return Rewriting::NotHere;
        if (row->type != NodeProcessor)
            return Rewriting::Done;
        const quint32 version = cell->version();
        const auto answer =
            askForProcessor(id, HostEvents::MonitorStateChanged::number, place.panel());
        if (place.isOver())
            return Rewriting::Done;
        // Another group: the row is about to move, or the host has not been told of its move yet.
        if (!answer.isGiven()
            || (answer.record() && answer.record()->groupId != cell->load().groupId))
            return Rewriting::NotHere;
        if (!answer.record() || m_model.replaceRecord(id, cell, version, *answer.record()))
            return Rewriting::Done;
    }
    return Rewriting::NotHere;
}
