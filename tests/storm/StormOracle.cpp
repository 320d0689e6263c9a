#include "tests/storm/StormOracle.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <utility>

namespace {

/// Compares all fields and names those that differ.
class Fields final
{
public:
    Fields(QStringList& out, QString whose)
        : m_out(out)
        , m_whose(std::move(whose))
    {
    }

    template <typename Value>
    Fields& operator()(const char* field, const Value& host, const Value& tree)
    {
        if (host != tree)
            m_out.append(QStringLiteral("%1: %2 is %3, the host says %4")
                             .arg(m_whose, QLatin1String(field), text(tree), text(host)));
        return *this;
    }

private:
    static QString text(const QString& value) { return value; }
    static QString text(const QUuid& value) { return stormLabel(value); }
    static QString text(const std::array<quint32, 4>& value) { return QString::number(value[0]); }
    template <typename Number>
    static QString text(Number value)
    {
        return QString::number(value);
    }
    static QString text(float value) { return QString::number(static_cast<double>(value)); }

    QStringList& m_out;
    QString m_whose;
};

void compareRecords(QStringList& out, const ProcessorNode& host, const ProcessorNode& tree)
{
    Fields(out, stormLabel(host.id))("id", host.id, tree.id)("name", host.name, tree.name)(
        "number", host.number, tree.number)("groupId", host.groupId, tree.groupId)(
        "hostAttribute5", host.hostAttribute5,
        tree.hostAttribute5)("hostAttribute6", host.hostAttribute6, tree.hostAttribute6)(
        "hostAttribute7", host.hostAttribute7,
        tree.hostAttribute7)("hostAttribute8", host.hostAttribute8, tree.hostAttribute8)(
        "redundancyMode", host.redundancyMode,
        tree.redundancyMode)("hostAttribute10", host.hostAttribute10, tree.hostAttribute10)(
        "hostAttribute11", host.hostAttribute11,
        tree.hostAttribute11)("hostAttribute12", host.hostAttribute12,
                              tree.hostAttribute12)("hostFlag13", host.hostFlag13, tree.hostFlag13)(
        "hostText14", host.hostText14, tree.hostText14)("hostAttribute15", host.hostAttribute15,
                                                        tree.hostAttribute15)(
        "hostAttribute16", host.hostAttribute16,
        tree.hostAttribute16)("hostFlag17", host.hostFlag17, tree.hostFlag17)(
        "hostAttribute18", host.hostAttribute18,
        tree.hostAttribute18)("hostAttribute19", host.hostAttribute19, tree.hostAttribute19)(
        "hostAttribute20", host.hostAttribute20,
        tree.hostAttribute20)("hostAttribute21", host.hostAttribute21, tree.hostAttribute21)(
        "hostAttribute22", host.hostAttribute22,
        tree.hostAttribute22)("hostFlag23", host.hostFlag23,
                              tree.hostFlag23)("hostText24", host.hostText24, tree.hostText24)(
        "ipAddress", host.ipAddress, tree.ipAddress)("secondAddress", host.secondAddress,
                                                     tree.secondAddress)(
        "online", host.online, tree.online)("reachedByIp", host.reachedByIp, tree.reachedByIp);
}

void compareRecords(QStringList& out, const ProcessorGroupNode& host,
                    const ProcessorGroupNode& tree)
{
    Fields(out, stormLabel(host.id))("id", host.id, tree.id)("name", host.name, tree.name)(
        "hostAttribute3", host.hostAttribute3,
        tree.hostAttribute3)("hostAttribute4", host.hostAttribute4, tree.hostAttribute4);
}

/// Reads the tree once and compares each row.
class Comparison final
{
public:
    Comparison(const StormProject::State& project, const QAbstractItemModel& tree,
               bool groupsInOrder)
        : m_project(project)
        , m_tree(tree)
        , m_groupsInOrder(groupsInOrder)
    {
    }

    QStringList run()
    {
        const QModelIndex root = m_tree.index(0, 0);
        if (m_tree.rowCount() != 1 || root.data(NodeTypeRole).toInt() != NodeRoot)
            return {QStringLiteral("the tree has no single root")};
        const QString count = QString::number(m_project.processors.size());
        if (!root.data().toString().endsWith(QLatin1Char('(') + count + QLatin1Char(')')))
            m_out.append(QStringLiteral("the root says %1, the host has %2 processors")
                             .arg(root.data().toString(), count));
        readRows(root, QUuid());
        compareGroups();
        for (const ProcessorNode& processor : m_project.processors) {
            const int rows = m_processors.count(processor.id);
            if (rows != 1)
                m_out.append(QStringLiteral("%1 (of %2) has %3 rows")
                                 .arg(stormLabel(processor.id), stormLabel(processor.groupId))
                                 .arg(rows));
        }
        return m_out;
    }

private:
    void readRows(const QModelIndex& parent, const QUuid& parentId)
    {
        bool processorsBegan = false;
        bool othersBegan = false;
        quint32 lastAddress = 0;
        for (int row = 0; row < m_tree.rowCount(parent); ++row) {
            const QModelIndex index = m_tree.index(row, 0, parent);
            const QUuid id = index.data(UuidRole).toUuid();
            if (index.data(NodeTypeRole).toInt() == NodeGroup) {
                if (processorsBegan || parent.parent().isValid())
                    m_out.append(QStringLiteral("%1 stands too low").arg(stormLabel(id)));
                readGroup(index, id);
                continue;
            }
            processorsBegan = true;
            readProcessor(index, id, parentId);
            const auto record = index.data(NodeDataRole).value<ProcessorNode>();
            const bool addressed = record.reachedByIp && record.ipAddress != kNoProcessorAddress;
            if (addressed && (othersBegan || record.ipAddress < lastAddress))
                m_out.append(QStringLiteral("%1 is out of order in %2")
                                 .arg(stormLabel(id), stormLabel(parentId)));
            if (addressed)
                lastAddress = record.ipAddress;
            else
                othersBegan = true;
        }
    }

    void readGroup(const QModelIndex& index, const QUuid& id)
    {
        m_groups.append(id);
        const ProcessorGroupNode group = m_project.group(id);
        if (group.id.isNull() || id.isNull()) {
            m_out.append(QStringLiteral("%1 has a row '%2', but is no group of the host's")
                             .arg(stormLabel(id), index.data().toString()));
        } else {
            Fields(m_out, stormLabel(id))("text", group.name, index.data().toString());
            compareRecords(m_out, group, index.data(NodeDataRole).value<ProcessorGroupNode>());
        }
        readRows(index, id);
    }

    void readProcessor(const QModelIndex& index, const QUuid& id, const QUuid& parentId)
    {
        m_processors.append(id);
        const ProcessorNode processor = m_project.processor(id);
        if (processor.id.isNull() || id.isNull()) {
            m_out.append(QStringLiteral("%1 has a row '%2', but is no processor of the host's")
                             .arg(stormLabel(id), index.data().toString()));
            return;
        }
        Fields(m_out, stormLabel(id))("text", processor.name, index.data().toString())(
            "parent", processor.groupId, parentId);
        compareRecords(m_out, processor, index.data(NodeDataRole).value<ProcessorNode>());
    }

    void compareGroups()
    {
        QList<QUuid> wanted;
        for (const ProcessorGroupNode& group : m_project.groups)
            wanted.append(group.id);
        QList<QUuid> found = m_groups;
        if (!m_groupsInOrder) {
            std::sort(wanted.begin(), wanted.end());
            std::sort(found.begin(), found.end());
        }
        if (wanted != found)
            m_out.append(QStringLiteral("the groups are %1, the host's %2")
                             .arg(stormLabels(found), stormLabels(wanted)));
    }

    const StormProject::State& m_project;
    const QAbstractItemModel& m_tree;
    const bool m_groupsInOrder;
    QList<QUuid> m_groups;
    QList<QUuid> m_processors;
    QStringList m_out;
};

} // namespace

QStringList stormDifferences(const StormProject::State& project, const QAbstractItemModel& tree,
                             bool groupsInOrder)
{
    return Comparison(project, tree, groupsInOrder).run();
}
