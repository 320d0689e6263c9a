#include "host/workbench/store/ProjectDiff.h"

#include "host/workbench/events/EventNumber.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/RecordDifference.h"

#include <QHash>

#include <algorithm>

namespace {

using GroupList = QList<ProcessorGroupNode>;

/// What happened to the processors between two projects.
struct ProcessorChanges
{
    QList<QUuid> removed;
    QList<QUuid> added; ///< Those that moved are removed and added.
    QList<QUuid> warned;
    HostEventList changes;
};

HostEventList eventsFor(const Project& project, quint32 one, quint32 several,
                        const QList<QUuid>& ids)
{
    if (!project.answers.eventsOneByOne && !ids.isEmpty())
        return {HostEvent::forIds(one, several, ids)};
    HostEventList events;
    for (const QUuid& id : ids)
        events.emplace_back(one, id);
    return events;
}

void append(HostEventList& events, const HostEventList& more)
{
    events.insert(events.end(), more.begin(), more.end());
}

/// Returns the groups of `all` that are in `other`, too.
GroupList common(const GroupList& all, const Project& other)
{
    GroupList groups;
    std::copy_if(all.begin(), all.end(), std::back_inserter(groups),
                 [&](const ProcessorGroupNode& group) { return other.hasGroup(group.id); });
    return groups;
}

/// Returns whether the groups that both projects have are the same in the same order, and new ones
/// stand at the end: other changes of groups have no event of their own.
bool areGroupChangesTold(const Project& before, const Project& after)
{
    const GroupList kept = common(before.groups, after);
    if (kept.size() > after.groups.size())
        return false;
    return std::equal(kept.begin(), kept.end(), after.groups.begin(),
                      [](const ProcessorGroupNode& one, const ProcessorGroupNode& other) {
                          return one.id == other.id && differentFields(one, other).isEmpty();
                      });
}

/// Sorts a change of a record that stays in its place to the event that tells of it.
void sortChange(const ProcessorNode& before, const ProcessorNode& after, ProcessorChanges& changes)
{
    QStringList fields = differentFields(before, after);
    if (fields.isEmpty())
        return;
    if (fields == QStringList(QStringLiteral("hostFlag17")))
        changes.warned.append(after.id);
    else if (fields.contains(QStringLiteral("name")))
        changes.changes.emplace_back(
            EventNumber::ProjectProcessorChanged,
            HostEvent::ChangedProcessor(after.id, SPrjProcessor{after.id, after.name}));
    else
        changes.changes.emplace_back(EventNumber::ProcessorChanged, after.id);
}

ProcessorChanges processorChanges(const Project& before, const Project& after)
{
    QHash<QUuid, const ProcessorNode*> known;
    for (const ProcessorNode& node : before.processors)
        known.insert(node.id, &node);
    ProcessorChanges changes;
    for (const ProcessorNode& node : after.processors) {
        const ProcessorNode* was = known.take(node.id);
        if (was && was->groupId == node.groupId) {
            sortChange(*was, node, changes);
            continue;
        }
        changes.added.append(node.id);
        if (was)
            changes.removed.append(node.id);
    }
    for (const ProcessorNode& node : before.processors) {
        if (known.contains(node.id))
            changes.removed.append(node.id);
    }
    return changes;
}

HostEventList treeEvents()
{
    return {HostEvent(EventNumber::TreeReset), HostEvent(EventNumber::CurrentProcessorChanged)};
}

HostEventList recordEvents(const Project& before, const Project& after)
{
    const ProcessorChanges changes = processorChanges(before, after);
    if (changes.removed.contains(before.currentProcessor))
        return treeEvents();
    HostEventList events = removedEvents(after, changes.removed);
    for (const ProcessorGroupNode& group : before.groups) {
        if (!after.hasGroup(group.id))
            events.emplace_back(EventNumber::NodeRemoved, group.id);
    }
    for (const ProcessorGroupNode& group : after.groups) {
        if (!before.hasGroup(group.id))
            events.emplace_back(EventNumber::GroupAdded, group.id);
    }
    append(events, addedEvents(after, changes.added));
    append(events, changes.changes);
    if (!changes.warned.isEmpty())
        events.emplace_back(EventNumber::MonitorStateChanged, changes.warned);
    if (before.currentProcessor != after.currentProcessor
        || changes.added.contains(after.currentProcessor))
        events.emplace_back(EventNumber::CurrentProcessorChanged);
    return events;
}

bool areDeviceSetsSame(const Project& one, const Project& other)
{
    return one.currentDeviceSet == other.currentDeviceSet
           && std::equal(one.deviceSets.begin(), one.deviceSets.end(), other.deviceSets.begin(),
                         other.deviceSets.end(), [](const DeviceSet& left, const DeviceSet& right) {
                             return differentFields(left, right).isEmpty();
                         });
}

} // namespace

HostEvent deviceSetsEvent(const Project& project)
{
    QList<SDeviceSetInfo> infos;
    for (const DeviceSet& set : project.deviceSets)
        infos.append(set.info);
    return HostEvent(EventNumber::CurrentDeviceSetChanged,
                     HostEvent::DeviceSets(project.currentDeviceSet, infos));
}

HostEventList addedEvents(const Project& project, const QList<QUuid>& ids)
{
    return eventsFor(project, EventNumber::ProcessorAdded, EventNumber::ProcessorsAdded, ids);
}

HostEventList removedEvents(const Project& project, const QList<QUuid>& ids)
{
    return eventsFor(project, EventNumber::NodeRemoved, EventNumber::NodesRemoved, ids);
}

bool areSettingsSame(const Project& one, const Project& other)
{
    return areDeviceSetsSame(one, other) && one.faults == other.faults
           && one.network == other.network && differentFields(one.answers, other.answers).isEmpty();
}

HostEventList eventsBetween(const Project& before, const Project& after)
{
    HostEventList events =
        areGroupChangesTold(before, after) ? recordEvents(before, after) : treeEvents();
    if (!areDeviceSetsSame(before, after))
        events.push_back(deviceSetsEvent(after));
    const HandlerAnswers& was = before.answers;
    const HandlerAnswers& is = after.answers;
    if (was.detectStrategy != is.detectStrategy)
        events.emplace_back(EventNumber::DetectStrategyChanged, is.detectStrategy);
    if (was.lanUsbMode != is.lanUsbMode || was.lanUsbAddresses != is.lanUsbAddresses)
        events.emplace_back(EventNumber::LanUsbProcessorIp);
    return events;
}
