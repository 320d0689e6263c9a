#include "plugin/TreeChanges.h"

#include "Interface/HostEvents.h"
#include "base/ContractCheck.h"
#include "base/GuiCalls.h"
#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/NodeType.h"
#include "base/RequestWatch.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <QMetaObject>
#include <QSet>

#include <algorithm>
#include <utility>

using Weather = CLeftOutProcessors::Weather;
using News = CLeftOutProcessors::News;
using ContractCheck::Finding;

CTreeChanges::CTreeChanges(CProcessorTreeModel& model, CGuiCalls& calls)
    : m_model(model)
    , m_calls(calls)
{
}

/// The event had been told when the host was asked for its lists.
bool CTreeChanges::wasInFill(const CEventOrder::CPlace& place) const
{
    return place.number() <= m_filledUpTo;
}

/// Logs that event number `event` is about `id`, for which there is no row.
void CTreeChanges::logMissing(const Place& place, quint32 event, const QUuid& id) const
{
    logDropped(event, id, "the tree has no such row");
    if (ContractCheck::isOn() && !wasInFill(*place) && !m_leftOut.contains(id)
        && !RequestWatch::wasTakenOut(id)) {
        ContractCheck::report(Finding::NotInTree,
                              QStringLiteral("the tree does not hold %1").arg(id.toString()),
                              event);
    }
}

/// Returns whether `answer` may be used as it is.
template <typename Record>
bool CTreeChanges::holds(const Place& place, const QUuid& id,
                         const CHostAnswer<Record>& answer) const
{
    const char* reason = nullptr;
    if (!answer.isGiven())
        reason = "was not asked before";
    else if (!m_calls.isAwaited())
        reason = "comes late";
    else if (m_order.isOvertaken(*place, id))
        reason = "was overtaken";
    else if (!answer.isCurrent())
        reason = "was answered by a handler that is replaced";
    if (reason)
        qCDebug(lcBridge, "the change of %s %s and asks the host now", qPrintable(id.toString()),
                reason);
    return !reason;
}

void CTreeChanges::clear()
{
    Q_ASSERT(isThreadOf(m_model));
    m_leftOut.clear();
    m_groupPlaces.clear();
    m_unknown.clear();
    m_model.clearToRoot();
}

void CTreeChanges::removeAllGroups()
{
    Q_ASSERT(isThreadOf(m_model));
    const HandlerPlace::CPanelWatch panel;
    m_groupsRemoved = m_order.lastNumber();
    m_model.removeAllGroups();
    const ContractCheck::Probe probe;
    const auto unknown = std::exchange(m_unknown, {});
    for (auto row = unknown.begin(); row != unknown.end() && !panel.isOver(); ++row) {
        if (m_model.getItem(row.key()) && askForProcessor(row.key(), row.value()).isUnknown()
            && !panel.isOver())
            m_model.removeNode(row.key());
    }
}

void CTreeChanges::reset(const Place& place)
{
    Q_ASSERT(isThreadOf(m_model));
    if (place->isOver())
        return;
    m_filledUpTo = m_order.lastNumber();
    QMetaObject::invokeMethod(&m_model, "reset", Qt::DirectConnection);
    if (place->isOver())
        return;
    m_leftOut.clear();
    m_groupPlaces.clear();
    m_unknown.clear();
    noteLeftOut(place, Weather::Fill);
}

void CTreeChanges::addGroup(const Place& place, const QUuid& id,
                            const CHostAnswer<ProcessorGroupNode>& answer)
{
    Q_ASSERT(isThreadOf(m_model));
    constexpr quint32 event = HostEvents::GroupAdded::number;
    if (place->isOver() || m_model.getItem(id))
        return;
    const auto group = holds(place, id, answer) ? answer.record() : askForGroup(id, event).record();
    if (!group || place->isOver() || m_model.getItem(id))
        return;
    // An event that the host tells inside a question of this one may have been faster.
    if (place->number() < m_lastGroup) {
        m_model.insertGroup(*group, rowOfGroup(*place));
    } else {
        QMetaObject::invokeMethod(&m_model, "AppendGroup", Qt::DirectConnection,
                                  Q_ARG(ProcessorGroupNode, *group));
    }
    m_groupPlaces.insert(id, place->number());
    m_lastGroup = std::max(m_lastGroup, place->number());
    addLeftOut(place, id, event, News::Change);
}

void CTreeChanges::addProcessor(const Place& place, const QUuid& id,
                                const CHostAnswer<ProcessorNode>& answer, quint32 event)
{
    addProcessor(place, id, answer, event, Weather::Rough);
}

/// `asking` is the weather in which the host is asked here.
void CTreeChanges::addProcessor(const Place& place, const QUuid& id,
                                const CHostAnswer<ProcessorNode>& answer, quint32 event,
                                Weather asking)
{
    Q_ASSERT(isThreadOf(m_model));
    if (place->isOver() || m_model.getItem(id))
        return;
    const bool isFresh = holds(place, id, answer);
    const auto processor = isFresh ? answer.record() : askForProcessor(id, event).record();
    if (!processor || place->isOver() || m_model.getItem(id))
        return;
    QMetaObject::invokeMethod(&m_model, "AppendProcessor", Qt::DirectConnection,
                              Q_ARG(ProcessorNode, *processor));
    noteIfLeftOut(place, {processor->id, processor->groupId}, isFresh ? Weather::Calm : asking);
}

void CTreeChanges::addProcessors(const Place& place, const QList<QUuid>& ids)
{
    Q_ASSERT(isThreadOf(m_model));
    if (place->isOver())
        return;
    QList<QUuid> missing;
    QSet<QUuid> seen;
    for (const QUuid& id : ids) {
        if (!m_model.getItem(id) && !seen.contains(id)) {
            seen.insert(id);
            missing.append(id);
        }
    }
    QMetaObject::invokeMethod(&m_model, "AppendProcessors", Qt::DirectConnection,
                              Q_ARG(QList<QUuid>, missing));
    if (place->isOver())
        return;
    for (const QUuid& id : qAsConst(missing)) {
        if (m_model.getItem(id))
            m_leftOut.remove(id);
    }
    noteLeftOut(place, Weather::Calm);
}

void CTreeChanges::removeNode(const Place& place, const QUuid& id, const Told& told)
{
    Q_ASSERT(isThreadOf(m_model));
    if (place->isOver())
        return;
    if (!m_model.getItem(id))
        logMissing(place, HostEvents::NodeRemoved::number, id);
    if ((isStale(place, id, told) && !dissolve(place, id)) || place->isOver())
        return;
    QMetaObject::invokeMethod(&m_model, "removeNode", Qt::DirectConnection, Q_ARG(QUuid, id));
    forget(place, id);
}

void CTreeChanges::removeNodes(const Place& place, const QList<QUuid>& ids, const Told& told)
{
    Q_ASSERT(isThreadOf(m_model));
    if (place->isOver())
        return;
    QList<QUuid> gone;
    for (const QUuid& id : ids) {
        if (!m_model.getItem(id))
            logMissing(place, HostEvents::NodesRemoved::number, id);
        if (!isStale(place, id, told) || dissolve(place, id))
            gone.append(id);
        if (place->isOver())
            return;
    }
    QMetaObject::invokeMethod(&m_model, "removeNodes", Qt::DirectConnection,
                              Q_ARG(QList<QUuid>, gone));
    for (const QUuid& id : qAsConst(gone))
        forget(place, id);
}

void CTreeChanges::refreshProcessor(const Place& place, const QUuid& id, bool onlyProcessors,
                                    const CHostAnswer<ProcessorNode>& answer, quint32 event)
{
    Q_ASSERT(isThreadOf(m_model));
    if (place->isOver())
        return;
    const auto wantedRow = [&]() -> QStandardItem* {
        QStandardItem* item = m_model.getItem(id);
        return item && (!onlyProcessors || nodeType(*item) == NodeProcessor) ? item : nullptr;
    };
    if (!m_model.getItem(id) && m_leftOut.isDue(id, *place, News::Change)) {
        addProcessor(place, id, {}, event);
        return;
    }
    if (!wantedRow()) {
        logMissing(place, event, id);
        return;
    }
    const bool isFresh = holds(place, id, answer);
    const CHostAnswer<ProcessorNode> now = isFresh ? answer : askForProcessor(id, event);
    const auto& processor = now.record();
    QStandardItem* item = wantedRow();
    if (!item || place->isOver())
        return;
    if (!processor) {
        if (!isFresh && now.isUnknown() && nodeType(*item) == NodeProcessor)
            noteUnknown(place, id, event);
        return;
    }
    m_model.updateProcessor(item, *processor);
    noteIfLeftOut(place, {processor->id, processor->groupId},
                  isFresh ? Weather::Calm : Weather::Rough);
}

/// Notes that the host no longer knows the processor of a row. If all groups went since `place`, it
/// went with them.
void CTreeChanges::noteUnknown(const Place& place, const QUuid& id, quint32 event)
{
    if (place->number() < m_groupsRemoved)
        m_model.removeNode(id);
    else
        m_unknown.insert(id, event);
}

void CTreeChanges::announceRecords(const QList<QUuid>& ids)
{
    Q_ASSERT(isThreadOf(m_model));
    m_model.announceRecords(ids);
}

void CTreeChanges::refreshRecords(const Place& place, const QList<QUuid>& ids)
{
    Q_ASSERT(isThreadOf(m_model));
    constexpr quint32 event = HostEvents::MonitorStateChanged::number;
    for (const QUuid& id : ids) {
        if (place->isOver())
            return;
        const QStandardItem* item = m_model.getItem(id);
        if (!item && m_leftOut.isDue(id, *place, News::Change))
            addProcessor(place, id, {}, event);
        else if (!item)
            logMissing(place, event, id);
        if (!item || nodeType(*item) != NodeProcessor)
            continue;
        const auto processor = askForProcessor(id, event).record();
        if (place->isOver())
            return;
        item = m_model.getItem(id);
        const CRecordHandle handle =
            item ? recordHandle(item->data(NodeDataRole)) : CRecordHandle();
        if (processor && handle.cell()) {
            handle.cell()->replace(*processor, handle.cell()->version());
            m_model.announceRecords({id});
        }
    }
}

/// Keeps an eye on the processor of `leftOut` if it has no row.
void CTreeChanges::noteIfLeftOut(const Place& place, const LeftOut& leftOut, Weather weather)
{
    if (m_model.getItem(leftOut.processor) || leftOut.group.isNull()) {
        m_leftOut.remove(leftOut.processor);
        return;
    }
    qCDebug(lcBridge, "processor %s is left out: group %s is unknown",
            qPrintable(leftOut.processor.toString()), qPrintable(leftOut.group.toString()));
    if (ContractCheck::isOn()) {
        ContractCheck::report(Finding::UnknownGroup,
                              QStringLiteral("%1 names group %2, which was not told; it has no "
                                             "row until the group comes")
                                  .arg(leftOut.processor.toString(), leftOut.group.toString()));
    }
    m_leftOut.add(leftOut, *place, m_order.hasNoOther() ? weather : Weather::Rough);
}

/// Does the same for those that the model left out of a list.
void CTreeChanges::noteLeftOut(const Place& place, Weather weather)
{
    const QList<LeftOut> all = m_model.takeLeftOut();
    for (const LeftOut& leftOut : all)
        noteIfLeftOut(place, leftOut, m_order.isOvertakenAtAll(*place) ? Weather::Rough : weather);
}

/// Adds the processors that were left out for want of `group`, or of what became of it.
void CTreeChanges::addLeftOut(const Place& place, const QUuid& group, quint32 event, News news)
{
    const auto due = m_leftOut.takeDue(group, *place, news);
    for (const CLeftOutProcessors::Due& leftOut : due)
        addProcessor(place, leftOut.processor, {}, event, leftOut.weather);
    // A fill counts those that it left out.
    if (!due.isEmpty())
        m_model.updateRootText();
}

/// Notes that the host has told of the end of `id`.
void CTreeChanges::forget(const Place& place, const QUuid& id)
{
    const bool wasCounted = m_leftOut.isDue(id, *place, News::End);
    m_leftOut.remove(id);
    m_groupPlaces.remove(id);
    m_unknown.remove(id);
    if (wasCounted)
        m_model.updateRootText();
    addLeftOut(place, id, HostEvents::NodeRemoved::number, News::End);
}

/// The row of a group told at `place`: above those that were told later.
int CTreeChanges::rowOfGroup(const CEventOrder::CPlace& place) const
{
    int row = m_model.groupCount();
    for (auto other = m_groupPlaces.cbegin(); other != m_groupPlaces.cend(); ++other) {
        if (other.value() > place.number() && isGroup(other.key()))
            row = std::min(row, m_model.getItem(other.key())->row());
    }
    return row;
}

bool CTreeChanges::isGroup(const QUuid& id) const
{
    const QStandardItem* item = m_model.getItem(id);
    return item && nodeType(*item) == NodeGroup;
}

/// Returns whether the removal of `id`, told at `told`, would dissolve a group that the host may
/// have again by now, or whose processors it has put elsewhere. Dissolving tells the host where
/// they stand.
bool CTreeChanges::isStale(const Place& place, const QUuid& id, const Told& told) const
{
    if (!isGroup(id))
        return false;
    // The host may have told more on another thread, or inside a question that was asked before.
    if (m_calls.isAwaited())
        return m_order.isOvertaken(*place, id);
    if (told.whileHeldUp || m_order.isContested(*place, id))
        return true;
    if (!told.isLongAgo())
        return false;
    const QList<QUuid> members = m_model.getChildProcessor(m_model.getItem(id)->index());
    return m_order.isOvertaken(*place, id)
           || std::any_of(members.begin(), members.end(),
                          [&](const QUuid& member) { return m_order.isOvertaken(*place, member); });
}

/// Brings the processors of `group` to where the host has them now. Returns whether the host has
/// the group no more, so that its row can go.
bool CTreeChanges::dissolve(const Place& place, const QUuid& group)
{
    constexpr quint32 event = HostEvents::NodeRemoved::number;
    qCDebug(lcBridge, "the removal of group %s comes late and asks where its processors are",
            qPrintable(group.toString()));
    const ContractCheck::Probe probe;
    const QStandardItem* item = m_model.getItem(group);
    const QList<QUuid> members = m_model.getChildProcessor(item ? item->index() : QModelIndex());
    const auto record = askForGroup(group, event).record();
    for (const QUuid& member : members) {
        if (place->isOver())
            return false;
        const auto answer = askForProcessor(member, event);
        const auto& processor = answer.record();
        if (place->isOver())
            return false;
        item = m_model.getItem(member);
        if (!item || (processor ? processor->groupId == group : !answer.isUnknown()))
            continue;
        if (!processor || (!processor->groupId.isNull() && !isGroup(processor->groupId))) {
            // The host has it no more, or in a group that the tree has yet to hear of.
            m_model.removeNode(member);
            if (processor)
                noteIfLeftOut(place, {member, processor->groupId}, Weather::Rough);
        } else if (record || !processor->groupId.isNull()) {
            m_model.moveProcessors({item->index()}, processor->groupId);
        }
    }
    if (record && isGroup(group) && !place->isOver())
        m_model.updateGroup(m_model.getItem(group), *record);
    return !record;
}
