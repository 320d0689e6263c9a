#include "tests/storm/StormProject.h"

#include <QRandomGenerator>
#include <QStringList>

#include <algorithm>

namespace {

constexpr uint kProcessorNumbers = 8;
constexpr int kMostGroups = 4;
constexpr ushort kGroupKind = 1;
constexpr ushort kProcessorKind = 2;

QUuid identity(uint number, int family, ushort kind)
{
    return {number, static_cast<ushort>(family + 1), kind, 1, 2, 3, 4, 5, 6, 7, 8};
}

template <typename Record>
Record recordIn(const std::vector<Record>& records, const QUuid& id)
{
    for (const Record& record : records) {
        if (record.id == id)
            return record;
    }
    return {};
}

template <typename Record>
bool removeFrom(std::vector<Record>& records, const QUuid& id)
{
    const auto end = std::remove_if(records.begin(), records.end(),
                                    [&](const Record& record) { return record.id == id; });
    const bool found = end != records.end();
    records.erase(end, records.end());
    return found;
}

QUuid pick(const QList<QUuid>& ids, quint32 dice)
{
    return ids.isEmpty() ? QUuid() : ids.at(static_cast<int>(dice % uint(ids.size())));
}

} // namespace

ProcessorGroupNode StormProject::State::group(const QUuid& id) const
{
    return recordIn(groups, id);
}

ProcessorNode StormProject::State::processor(const QUuid& id) const
{
    return recordIn(processors, id);
}

StormProject::State StormProject::state() const
{
    const std::lock_guard guard(m_mutex);
    return m_state;
}

ProcessorGroupNode StormProject::group(const QUuid& id) const
{
    const std::lock_guard guard(m_mutex);
    return m_state.group(id);
}

ProcessorNode StormProject::processor(const QUuid& id) const
{
    const std::lock_guard guard(m_mutex);
    return m_state.processor(id);
}

QUuid StormProject::current() const
{
    const std::lock_guard guard(m_mutex);
    return m_state.current;
}

QUuid StormProject::anyGroup(int family, quint32 dice) const
{
    const std::lock_guard guard(m_mutex);
    return pick(groupsOf(family), dice);
}

QUuid StormProject::anyProcessor(int family, quint32 dice) const
{
    const std::lock_guard guard(m_mutex);
    return pick(processorsOf(family), dice);
}

QUuid StormProject::addGroup(int family, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    if (groupsOf(family).size() >= kMostGroups)
        return {};
    ProcessorGroupNode group;
    group.id = identity(++m_lastGroup, family, kGroupKind);
    group.name = QStringLiteral("G%1.%2 n%3").arg(family).arg(m_lastGroup).arg(++m_lastName);
    group.hostAttribute3 = static_cast<qint32>(dice % 1000);
    m_state.groups.push_back(group);
    return group.id;
}

QList<QUuid> StormProject::addProcessors(int family, int count, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    QRandomGenerator random(dice);
    QList<QUuid> added;
    for (uint tries = 0; tries < kProcessorNumbers && added.size() < count; ++tries) {
        const uint number = 1 + (dice + tries) % kProcessorNumbers;
        ProcessorNode processor;
        processor.id = identity(number, family, kProcessorKind);
        if (find(processor.id))
            continue;
        processor.name = QStringLiteral("P%1.%2 n%3").arg(family).arg(number).arg(++m_lastName);
        processor.number = static_cast<qint32>(number) - 1;
        processor.groupId = pickGroup(family, processor.id, random);
        processor.hostAttribute8 = random.bounded(1000);
        processor.hostText24 = QString::number(random.bounded(1000));
        processor.hostFlag13 = true;
        processor.reachedByIp = random.bounded(3) != 0;
        if (processor.reachedByIp) {
            const bool without = random.bounded(5) == 0 && !m_addressless.contains(processor.id);
            if (without)
                m_addressless.insert(processor.id);
            else
                processor.ipAddress = freshAddress();
        }
        m_state.processors.push_back(processor);
        added.append(processor.id);
    }
    return added;
}

QList<QUuid> StormProject::removeProcessors(int family, int count, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    QList<QUuid> removed;
    for (int i = 0; i < count; ++i) {
        const QUuid id = pick(processorsOf(family), dice + static_cast<quint32>(i) * 7);
        if (id.isNull() || m_state.processors.size() < 2)
            break;
        removeFrom(m_state.processors, id);
        removed.append(id);
    }
    return removed;
}

bool StormProject::removeProcessor(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    return removeFrom(m_state.processors, id);
}

QUuid StormProject::dissolveGroup(int family, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    const QUuid group = pick(groupsOf(family), dice);
    dissolve(group);
    return group;
}

bool StormProject::dissolveGroup(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    return dissolve(id);
}

QUuid StormProject::changeRecord(int family, bool name, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    ProcessorNode* processor = find(pick(processorsOf(family), dice));
    if (!processor)
        return {};
    if (name)
        processor->name = QStringLiteral("%1 n%2").arg(stormLabel(processor->id)).arg(++m_lastName);
    processor->online = !processor->online;
    processor->hostAttribute8 = ++m_lastName;
    processor->hostFlag17 = dice % 2 == 0;
    processor->hostText14 = QString::number(dice % 100);
    return processor->id;
}

QUuid StormProject::changeAddress(int family, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    QRandomGenerator random(dice);
    QList<QUuid> reached;
    for (const ProcessorNode& processor : m_state.processors) {
        if (processor.reachedByIp && stormFamily(processor.id) == family)
            reached.append(processor.id);
    }
    ProcessorNode* processor = find(pick(reached, dice));
    if (!processor)
        return {};
    processor->groupId = pickGroup(family, processor->id, random);
    if (random.bounded(6) == 0 && !m_addressless.contains(processor->id)) {
        m_addressless.insert(processor->id);
        processor->ipAddress = kNoProcessorAddress;
    } else {
        processor->ipAddress = freshAddress();
    }
    return processor->id;
}

QUuid StormProject::chooseCurrent(int family, quint32 dice)
{
    const std::lock_guard guard(m_mutex);
    m_state.current = pick(processorsOf(family), dice);
    return m_state.current;
}

void StormProject::removeAllGroups()
{
    const std::lock_guard guard(m_mutex);
    for (const ProcessorGroupNode& group : m_state.groups) {
        auto& processors = m_state.processors;
        const auto isMember = [&](const auto& one) { return one.groupId == group.id; };
        processors.erase(std::remove_if(processors.begin(), processors.end(), isMember),
                         processors.end());
    }
    m_state.groups.clear();
}

bool StormProject::renameProcessor(const QUuid& id, const QString& name)
{
    const std::lock_guard guard(m_mutex);
    ProcessorNode* processor = find(id);
    if (processor)
        processor->name = name;
    return processor != nullptr;
}

bool StormProject::renameGroup(const QUuid& id, const QString& name)
{
    const std::lock_guard guard(m_mutex);
    for (ProcessorGroupNode& group : m_state.groups) {
        if (group.id == id) {
            group.name = name;
            return true;
        }
    }
    return false;
}

void StormProject::storeMembership(const QUuid& group, const QList<QUuid>& processors)
{
    const std::lock_guard guard(m_mutex);
    if (!group.isNull() && m_state.group(group).id.isNull())
        return;
    for (const QUuid& id : processors) {
        if (ProcessorNode* processor = find(id))
            processor->groupId = group;
    }
}

bool StormProject::dissolve(const QUuid& group)
{
    if (!removeFrom(m_state.groups, group))
        return false;
    for (ProcessorNode& processor : m_state.processors) {
        if (processor.groupId == group) {
            processor.groupId = QUuid();
            m_freed.insert(processor.id);
        }
    }
    return true;
}

ProcessorNode* StormProject::find(const QUuid& id)
{
    for (ProcessorNode& processor : m_state.processors) {
        if (processor.id == id)
            return &processor;
    }
    return nullptr;
}

QList<QUuid> StormProject::groupsOf(int family) const
{
    QList<QUuid> ids;
    for (const ProcessorGroupNode& group : m_state.groups) {
        if (stormFamily(group.id) == family)
            ids.append(group.id);
    }
    return ids;
}

QList<QUuid> StormProject::processorsOf(int family) const
{
    QList<QUuid> ids;
    for (const ProcessorNode& processor : m_state.processors) {
        if (stormFamily(processor.id) == family)
            ids.append(processor.id);
    }
    return ids;
}

QUuid StormProject::pickGroup(int family, const QUuid& processor, QRandomGenerator& random) const
{
    const QUuid group = pick(groupsOf(family), random.generate());
    return random.bounded(3) == 0 || m_freed.contains(processor) ? QUuid() : group;
}

/// Returns an address that no processor has had. The addresses are not ordered.
quint32 StormProject::freshAddress()
{
    constexpr quint32 oddStride = 0x9E3779;
    return 0x0A000000 | ((++m_lastAddress * oddStride) & 0x00FFFFFF);
}

int stormFamily(const QUuid& id)
{
    return id.data2 - 1;
}

QString stormLabel(const QUuid& id)
{
    if (id.isNull())
        return QStringLiteral("nobody");
    const bool isGroup = id.data3 == kGroupKind;
    return QStringLiteral("%1%2.%3")
        .arg(isGroup ? QStringLiteral("G") : QStringLiteral("P"))
        .arg(stormFamily(id))
        .arg(id.data1);
}

QString stormLabels(const QList<QUuid>& ids)
{
    QStringList labels;
    for (const QUuid& id : ids)
        labels.append(stormLabel(id));
    return labels.join(QLatin1Char(' '));
}
