#include "tests/support/ReferenceTree.h"

#include <algorithm>
#include <utility>

namespace {

using Row = ReferenceTree::Row;
using Rows = std::vector<Row>;

constexpr quint32 kNone = 0x7F000001;

bool goesBefore(const ProcessorNode& old, const ProcessorNode& added)
{
    if (old.ipAddress == kNone)
        return false;
    if (added.ipAddress == kNone)
        return true;
    if (old.reachedByIp && old.ipAddress > 0 && added.ipAddress > 0)
        return !(old.ipAddress > added.ipAddress);
    return old.number < added.number;
}

std::size_t placeAmong(const Rows& rows, const ProcessorNode& added)
{
    if (!added.reachedByIp || rows.empty())
        return rows.size();
    if (rows.size() == 1) {
        const bool first = rows[0].type == NodeProcessor
                           && rows[0].recordAs<ProcessorNode>().ipAddress > added.ipAddress;
        return first ? 0 : 1;
    }
    std::size_t place = rows.size();
    while (place > 0) {
        const Row& above = rows[place - 1];
        if (above.type != NodeProcessor || goesBefore(above.recordAs<ProcessorNode>(), added))
            break;
        --place;
    }
    return place;
}

bool search(const Rows& rows, const QUuid& id, QList<int>& path)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        path.append(static_cast<int>(i));
        if (rows[i].id == id || (rows[i].type == NodeGroup && search(rows[i].children, id, path)))
            return true;
        path.removeLast();
    }
    return false;
}

int countProcessors(const Rows& rows)
{
    int count = 0;
    for (const Row& row : rows) {
        count += row.type == NodeProcessor ? 1 : 0;
        count += row.type == NodeGroup ? countProcessors(row.children) : 0;
    }
    return count;
}

Row groupRow(const ProcessorGroupNode& group)
{
    return {NodeGroup, group.id, group.name, group, {}};
}

Row processorRow(const ProcessorNode& processor)
{
    return {NodeProcessor, processor.id, processor.name, processor, {}};
}

int groupsIn(const Rows& rows)
{
    return static_cast<int>(std::count_if(rows.begin(), rows.end(),
                                          [](const Row& row) { return row.type == NodeGroup; }));
}

void insertAt(Rows& rows, std::size_t place, Row row)
{
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(place), std::move(row));
}

} // namespace

ProcessorGroupNode ReferenceProject::group(const QUuid& id) const
{
    for (const ProcessorGroupNode& known : groups) {
        if (known.id == id)
            return known;
    }
    return {};
}

ProcessorNode ReferenceProject::processor(const QUuid& id) const
{
    for (const ProcessorNode& known : processors) {
        if (known.id == id)
            return known;
    }
    return {};
}

ReferenceTree::ReferenceTree()
{
    setRootCount(0);
}

void ReferenceTree::apply(quint32 event, const QList<QUuid>& ids, const ReferenceProject& project)
{
    const QUuid id = ids.value(0);
    switch (event) {
    case 16:
        reset(project);
        break;
    case 17:
        if (!row(id) && project.group(id).id == id)
            appendGroup(project.group(id));
        break;
    case 18:
        if (!row(id) && project.processor(id).id == id)
            appendProcessor(project.processor(id));
        break;
    case 19: {
        QList<ProcessorNode> missing;
        QList<QUuid> seen;
        for (const QUuid& each : ids) {
            if (!row(each) && !seen.contains(each) && project.processor(each).id == each)
                missing.append(project.processor(each));
            seen.append(each);
        }
        appendProcessors(missing);
        break;
    }
    case 20:
        removeNode(id);
        forget({id}, project);
        break;
    case 21:
        for (const QUuid& each : ids)
            removeNode(each);
        forget(ids, project);
        break;
    case 25:
        if (row(id) && row(id)->type == NodeProcessor && project.processor(id).id == id)
            updateProcessor(id, project.processor(id));
        break;
    case 26:
        if (row(id) && project.processor(id).id == id)
            updateProcessor(id, project.processor(id));
        break;
    default:
        break;
    }
}

void ReferenceTree::reset(const ReferenceProject& project)
{
    m_root.children.clear();
    m_leftOut.clear();
    // One row at most for each identity, and none for the root's.
    QList<QUuid> taken{QUuid()};
    QList<QUuid> parents{QUuid()};
    for (const ProcessorGroupNode& group : project.groups) {
        if (taken.contains(group.id))
            continue;
        appendGroup(group);
        taken.append(group.id);
        parents.append(group.id);
    }
    for (const ProcessorNode& processor : project.processors) {
        if (!parents.contains(processor.groupId)) {
            dropLeftOut(processor.id);
            m_leftOut.append({processor.id, processor.groupId});
            continue;
        }
        if (taken.contains(processor.id))
            continue;
        place(processor);
        taken.append(processor.id);
    }
    for (const ProcessorNode& processor : project.processors) {
        if (row(processor.id))
            dropLeftOut(processor.id);
    }
    setRootCount(project.processors.size());
}

void ReferenceTree::dropLeftOut(const QUuid& processor)
{
    const auto isIt = [&](const auto& each) { return each.first == processor; };
    m_leftOut.erase(std::remove_if(m_leftOut.begin(), m_leftOut.end(), isIt), m_leftOut.end());
}

void ReferenceTree::forget(const QList<QUuid>& ids, const ReferenceProject& project)
{
    for (const QUuid& id : ids) {
        const auto waiting = m_leftOut;
        m_leftOut.clear();
        bool wasLeftOut = false;
        for (const auto& [processor, group] : waiting) {
            if (processor != id && group != id) {
                m_leftOut.append({processor, group});
                continue;
            }
            if (row(processor))
                continue;
            wasLeftOut = true;
            if (processor == id || project.processor(processor).id != processor)
                continue;
            appendProcessor(project.processor(processor));
            if (!row(processor))
                m_leftOut.append({processor, project.processor(processor).groupId});
        }
        if (wasLeftOut)
            updateRootText();
    }
}

void ReferenceTree::appendGroup(const ProcessorGroupNode& group)
{
    const int groups = groupsIn(m_root.children);
    insertAt(m_root.children, static_cast<std::size_t>(groups), groupRow(group));
}

void ReferenceTree::appendProcessor(const ProcessorNode& processor)
{
    // What is told of it by itself counts from here on.
    dropLeftOut(processor.id);
    if (place(processor))
        updateRootText();
}

void ReferenceTree::appendProcessors(const QList<ProcessorNode>& processors)
{
    for (const ProcessorNode& processor : processors)
        appendProcessor(processor);
}

void ReferenceTree::removeNode(const QUuid& id)
{
    QList<int> path = find(id);
    const Row* found = at(path);
    if (!found || path.isEmpty())
        return;
    const bool isGroup = found->type == NodeGroup;
    // Groups stand above what leaves them, so the path stays true.
    for (int child = static_cast<int>(found->children.size()) - 1; isGroup && child >= 0; --child)
        moveOne(path + QList<int>{child}, {});
    const int last = path.takeLast();
    Rows& siblings = at(path)->children;
    siblings.erase(siblings.begin() + last);
    if (!isGroup)
        updateRootText();
}

void ReferenceTree::updateProcessor(const QUuid& id, const ProcessorNode& processor)
{
    // The root, which a null identity names, is no processor to be changed into.
    Row* found = at(find(id));
    if (!found || found == &m_root)
        return;
    const auto known = found->recordAs<ProcessorNode>();
    if (found->type == NodeProcessor && processor.reachedByIp
        && processor.ipAddress != known.ipAddress) {
        removeNode(known.id);
        appendProcessor(processor);
        return;
    }
    found->text = processor.name;
    found->record = processor;
}

void ReferenceTree::removeAllGroups()
{
    Rows left;
    for (const Row& child : m_root.children) {
        if (child.type != NodeGroup)
            left.push_back(child);
    }
    m_root.children = left;
    updateRootText();
}

void ReferenceTree::rename(const QUuid& id, const QString& text)
{
    Row* found = at(find(id));
    if (!found)
        return;
    found->text = text;
    if (found->type == NodeProcessor) {
        auto record = found->recordAs<ProcessorNode>();
        record.name = text;
        found->record = record;
    } else if (found->type == NodeGroup && found->recordAs<ProcessorGroupNode>().name != text) {
        auto record = found->recordAs<ProcessorGroupNode>();
        record.name = text;
        found->record = record;
    }
}

void ReferenceTree::writeRecord(const QUuid& id, const ProcessorNode& processor)
{
    if (Row* found = at(find(id)))
        found->record = processor;
}

void ReferenceTree::writeId(const QUuid& id, const QUuid& other)
{
    if (Row* found = at(find(id)))
        found->id = other;
}

QList<QUuid> ReferenceTree::moveProcessors(const QList<QUuid>& ids, const QUuid& target)
{
    QList<QUuid> moved;
    for (const QUuid& id : ids) {
        const Row* found = row(id);
        if (found && found->type == NodeProcessor && row(target) && moveOne(find(id), find(target)))
            moved.append(id);
    }
    return moved;
}

int ReferenceTree::processorCount() const
{
    return countProcessors(m_root.children);
}

QList<int> ReferenceTree::find(const QUuid& id) const
{
    QList<int> path;
    if (m_root.id == id || search(m_root.children, id, path))
        return path;
    return {-1};
}

const ReferenceTree::Row* ReferenceTree::row(const QUuid& id) const
{
    const Row* found = &m_root;
    for (const int step : find(id)) {
        if (step < 0)
            return nullptr;
        found = &found->children[static_cast<std::size_t>(step)];
    }
    return found;
}

ReferenceTree::Row* ReferenceTree::at(const QList<int>& path)
{
    Row* found = &m_root;
    for (const int step : path) {
        if (step < 0)
            return nullptr;
        found = &found->children[static_cast<std::size_t>(step)];
    }
    return found;
}

/// The first group of that identity, whatever else has it too.
ReferenceTree::Row* ReferenceTree::parentFor(const QUuid& groupId)
{
    if (groupId.isNull())
        return &m_root;
    for (Row& child : m_root.children) {
        if (child.type == NodeGroup && child.id == groupId)
            return &child;
    }
    return nullptr;
}

bool ReferenceTree::place(const ProcessorNode& processor)
{
    Row* parent = parentFor(processor.groupId);
    if (!parent)
        return false;
    insertAt(parent->children, placeAmong(parent->children, processor), processorRow(processor));
    return true;
}

bool ReferenceTree::moveOne(const QList<int>& path, const QList<int>& targetPath)
{
    const QList<int> sourcePath = path.mid(0, path.size() - 1);
    if (sourcePath == targetPath)
        return false;
    Rows& from = at(sourcePath)->children;
    Row moving = from[static_cast<std::size_t>(path.last())];
    auto record = moving.recordAs<ProcessorNode>();
    Row* target = at(targetPath);
    const std::size_t destination = placeAmong(target->children, record);
    record.groupId = target->type == NodeGroup ? target->id : QUuid();
    moving.record = record;
    memberships.append({moving.id, record.groupId});

    for (Row* group : {at(sourcePath), target}) {
        if (group->type != NodeGroup)
            continue;
        auto changed = group->recordAs<ProcessorGroupNode>();
        QList<ProcessorNode> members;
        for (const ProcessorNode& member : qAsConst(changed.processors)) {
            if (member.id != record.id)
                members.append(member);
        }
        if (group == target)
            members.insert(qMin(static_cast<int>(destination), members.size()), record);
        changed.processors = members;
        group->record = changed;
    }

    insertAt(target->children, destination, moving);
    // Processors stand below the groups of the root, so the path to the source is still true.
    Rows& left = at(sourcePath)->children;
    left.erase(left.begin() + path.last());
    return true;
}

void ReferenceTree::updateRootText()
{
    setRootCount(processorCount());
}

void ReferenceTree::setRootCount(int count)
{
    m_root.text = QStringLiteral("All processors(%1)").arg(count);
}
