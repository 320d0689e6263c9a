#include "host/workbench/project/Project.h"

#include "host/workbench/project/ProjectRanges.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

constexpr qint32 kLastNumber = std::numeric_limits<qint32>::max();

template <typename List>
auto findById(List& list, const QUuid& id)
{
    return std::find_if(list.begin(), list.end(), [&](const auto& node) { return node.id == id; });
}

bool isNameAllowed(const QString& name)
{
    return name.size() <= ProjectRanges::kMaxNameLength;
}

} // namespace

const ProcessorNode* Project::processor(const QUuid& id) const
{
    const auto found = findById(processors, id);
    return found == processors.end() ? nullptr : &*found;
}

ProcessorNode* Project::processor(const QUuid& id)
{
    const auto found = findById(processors, id);
    return found == processors.end() ? nullptr : &*found;
}

const ProcessorGroupNode* Project::findGroup(const QUuid& id) const
{
    const auto found = findById(groups, id);
    return found == groups.end() ? nullptr : &*found;
}

ProcessorGroupNode Project::group(const QUuid& id) const
{
    const auto found = findById(groups, id);
    if (found == groups.end())
        return {};
    ProcessorGroupNode group = *found;
    std::copy_if(processors.begin(), processors.end(), std::back_inserter(group.processors),
                 [&](const ProcessorNode& node) { return node.groupId == id; });
    return group;
}

QList<ProcessorGroupNode> Project::allGroups() const
{
    QList<ProcessorGroupNode> all = groups;
    QHash<QUuid, ProcessorGroupNode*> places;
    for (ProcessorGroupNode& group : all)
        places.insert(group.id, &group);
    for (const ProcessorNode& node : processors) {
        if (ProcessorGroupNode* group = places.value(node.groupId))
            group->processors.append(node);
    }
    return all;
}

QList<QUuid> Project::addProcessors(const QUuid& groupId, int count)
{
    QList<QUuid> added;
    for (int left = std::min(count, roomForProcessors()); left > 0; --left)
        added.append(appendProcessor(groupId).id);
    return added;
}

QList<QUuid> Project::addProcessors(const QUuid& groupId, const QList<quint32>& addresses)
{
    QList<QUuid> added;
    for (const quint32 address : addresses) {
        if (roomForProcessors() <= 0)
            break;
        ProcessorNode& node = appendProcessor(groupId);
        node.ipAddress = address;
        node.reachedByIp = true;
        added.append(node.id);
    }
    return added;
}

bool Project::canAddGroup(const QString& name) const
{
    return groups.size() < ProjectRanges::kMaxGroups && isNameAllowed(name);
}

QUuid Project::addGroup(const ProcessorGroupNode& group)
{
    if (!canAddGroup(group.name))
        return {};
    ProcessorGroupNode added = group;
    added.processors.clear();
    if (added.id.isNull() || hasGroup(added.id) || processor(added.id))
        added.id = QUuid::createUuid();
    groups.append(added);
    return added.id;
}

QList<QUuid> Project::removeProcessors(const QList<QUuid>& ids)
{
    QList<QUuid> removed;
    for (const QUuid& id : ids) {
        const auto found = findById(processors, id);
        if (found == processors.end())
            continue;
        processors.erase(found);
        litFrontPanels.remove(id);
        removed.append(id);
    }
    if (removed.contains(currentProcessor))
        currentProcessor = processors.isEmpty() ? QUuid() : processors.first().id;
    return removed;
}

bool Project::ungroup(const QUuid& id)
{
    const auto found = findById(groups, id);
    if (found == groups.end())
        return false;
    groups.erase(found);
    litFrontPanels.remove(id);
    for (ProcessorNode& node : processors) {
        if (node.groupId == id)
            node.groupId = QUuid();
    }
    return true;
}

bool Project::renameProcessor(const QUuid& id, const QString& name)
{
    ProcessorNode* node = processor(id);
    if (!node || !isNameAllowed(name))
        return false;
    node->name = name;
    return true;
}

bool Project::renameGroup(const QUuid& id, const QString& name)
{
    const auto found = findById(groups, id);
    if (found == groups.end() || !isNameAllowed(name))
        return false;
    found->name = name;
    return true;
}

QList<QUuid> Project::regroup(const QList<QUuid>& ids, const QUuid& groupId)
{
    QList<QUuid> moved;
    if (!groupId.isNull() && !hasGroup(groupId))
        return moved;
    for (const QUuid& id : ids) {
        ProcessorNode* node = processor(id);
        if (!node || node->groupId == groupId)
            continue;
        node->groupId = groupId;
        moved.append(id);
    }
    return moved;
}

ProcessorNode& Project::appendProcessor(const QUuid& groupId)
{
    qint32 number = 0;
    for (const ProcessorNode& known : qAsConst(processors))
        number = std::max(number, std::min(known.number, kLastNumber - 1) + 1);
    ProcessorNode node;
    node.id = QUuid::createUuid();
    node.number = number;
    node.name = QStringLiteral("Processor %1").arg(qint64{number} + 1);
    node.groupId = hasGroup(groupId) ? groupId : QUuid();
    node.hostAttribute11 =
        answers.fixedOutputCount > 0 ? answers.fixedOutputCount : answers.newProcessorOutputs;
    processors.append(node);
    return processors.last();
}
