#include "sdk/validate/Project.h"

#include <QStringList>

#include <algorithm>

namespace {

QString addressText(quint32 address)
{
    QStringList parts;
    for (const int shift : {24, 16, 8, 0})
        parts.append(QString::number((address >> shift) & 0xFF));
    return parts.join(QLatin1Char('.'));
}

QString describe(const ProcessorNode& processor)
{
    QString text = processor.name.left(40);
    if (processor.online)
        text += QLatin1Char('*');
    if (processor.ipAddress != kNoProcessorAddress)
        text += QLatin1Char('@') + addressText(processor.ipAddress);
    return text;
}

QString describeList(const QList<ProcessorNode>& processors, bool isSorted)
{
    QStringList texts;
    for (const ProcessorNode& processor : processors)
        texts.append(describe(processor));
    if (isSorted)
        texts.sort();
    return texts.join(QLatin1Char(','));
}

template <typename Record>
Record find(const std::vector<Record>& records, const QUuid& id)
{
    for (const Record& record : records) {
        if (record.id == id)
            return record;
    }
    return Record();
}

template <typename Record>
void removeFrom(std::vector<Record>& records, const QUuid& id)
{
    records.erase(std::remove_if(records.begin(), records.end(),
                                 [&](const Record& record) { return record.id == id; }),
                  records.end());
}

} // namespace

QUuid identity(uint number)
{
    return {number, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

ProcessorNode processor(uint number, uint group)
{
    ProcessorNode node;
    node.id = identity(number);
    node.name = QStringLiteral("P%1").arg(number);
    node.number = static_cast<int>(number) - 1;
    if (group != 0)
        node.groupId = identity(group);
    return node;
}

ProcessorGroupNode group(uint number)
{
    ProcessorGroupNode node;
    node.id = identity(number);
    node.name = QStringLiteral("G%1").arg(number);
    return node;
}

QString describe(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors,
                 bool isSorted)
{
    QStringList rows;
    for (const ProcessorGroupNode& group : groups) {
        rows.append(QStringLiteral("%1[%2]").arg(group.name.left(40),
                                                 describeList(group.processors, isSorted)));
    }
    if (isSorted)
        rows.sort();
    if (!processors.isEmpty())
        rows.append(describeList(processors, isSorted));
    return rows.join(QLatin1Char(','));
}

void Project::set(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors)
{
    const std::lock_guard guard(m_mutex);
    m_groups.assign(groups.begin(), groups.end());
    m_processors.assign(processors.begin(), processors.end());
}

QList<ProcessorGroupNode> Project::groups() const
{
    const std::lock_guard guard(m_mutex);
    return QList<ProcessorGroupNode>(m_groups.begin(), m_groups.end());
}

QList<ProcessorNode> Project::processors() const
{
    const std::lock_guard guard(m_mutex);
    return QList<ProcessorNode>(m_processors.begin(), m_processors.end());
}

ProcessorNode Project::processor(const QUuid& id) const
{
    const std::lock_guard guard(m_mutex);
    return find(m_processors, id);
}

ProcessorGroupNode Project::group(const QUuid& id) const
{
    const std::lock_guard guard(m_mutex);
    return find(m_groups, id);
}

void Project::add(const ProcessorNode& processor)
{
    const std::lock_guard guard(m_mutex);
    m_processors.push_back(processor);
}

void Project::add(const ProcessorGroupNode& group)
{
    const std::lock_guard guard(m_mutex);
    m_groups.push_back(group);
}

void Project::remove(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    removeFrom(m_groups, id);
    removeFrom(m_processors, id);
    for (ProcessorNode& processor : m_processors) {
        if (processor.groupId == id)
            processor.groupId = QUuid();
    }
}

bool Project::change(const QUuid& id, const std::function<void(ProcessorNode&)>& change)
{
    const std::lock_guard guard(m_mutex);
    for (ProcessorNode& processor : m_processors) {
        if (processor.id == id) {
            change(processor);
            return true;
        }
    }
    return false;
}

QString Project::describe(bool isSorted) const
{
    const std::lock_guard guard(m_mutex);
    QList<ProcessorGroupNode> groups(m_groups.begin(), m_groups.end());
    QList<ProcessorNode> alone;
    for (ProcessorGroupNode& group : groups)
        group.processors.clear();
    for (const ProcessorNode& processor : m_processors) {
        const auto isItsGroup = [&](const ProcessorGroupNode& group) {
            return group.id == processor.groupId;
        };
        const auto group = std::find_if(groups.begin(), groups.end(), isItsGroup);
        if (group != groups.end())
            group->processors.append(processor);
        else if (processor.groupId.isNull())
            alone.append(processor);
    }
    return ::describe(groups, alone, isSorted);
}
