// The texts of a reference tree and of a model, for comparisons.

#include "tests/support/ReferenceTree.h"

#include <QAbstractItemModel>
#include <QStringList>

namespace {

using Row = ReferenceTree::Row;

QString dumpRow(const Row& row)
{
    if (row.type == NodeProcessor)
        return row.text;
    QStringList texts;
    for (const Row& child : row.children)
        texts.append(dumpRow(child));
    return row.text + QLatin1Char('[') + texts.join(QLatin1Char(',')) + QLatin1Char(']');
}

QString describeRecord(const ProcessorNode& processor)
{
    return QStringLiteral("%1 '%2' #%3 in %4 at %5/%6 %7 own %8 %9")
        .arg(processor.id.toString(), processor.name)
        .arg(processor.number)
        .arg(processor.groupId.toString())
        .arg(processor.ipAddress)
        .arg(processor.reachedByIp)
        .arg(processor.online)
        .arg(processor.hostAttribute8)
        .arg(processor.hostText24);
}

QString describeRecord(const ProcessorGroupNode& group)
{
    QStringList members;
    for (const ProcessorNode& processor : group.processors)
        members.append(describeRecord(processor));
    return QStringLiteral("%1 '%2' own %3 of {%4}")
        .arg(group.id.toString(), group.name)
        .arg(group.hostAttribute4)
        .arg(members.join(QLatin1Char(';')));
}

QString describeLine(int depth, int type, const QUuid& id, const QString& text,
                     const ProcessorGroupNode& group, const ProcessorNode& processor)
{
    return QStringLiteral("%1%2 %3 '%4' group: %5 processor: %6\n")
        .arg(QString(depth, QLatin1Char(' ')))
        .arg(type)
        .arg(id.toString(), text, describeRecord(group), describeRecord(processor));
}

QString describeRow(const Row& row, int depth)
{
    QString lines = describeLine(depth, row.type, row.id, row.text,
                                 row.recordAs<ProcessorGroupNode>(), row.recordAs<ProcessorNode>());
    for (const Row& child : row.children)
        lines += describeRow(child, depth + 1);
    return lines;
}

QString describeRows(const QAbstractItemModel& model, const QModelIndex& parent, int depth)
{
    QString lines;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QVariant record = index.data(NodeDataRole);
        lines += describeLine(depth, index.data(NodeTypeRole).toInt(),
                              index.data(UuidRole).toUuid(), index.data().toString(),
                              record.value<ProcessorGroupNode>(), record.value<ProcessorNode>());
        lines += describeRows(model, index, depth + 1);
    }
    return lines;
}

} // namespace

QString ReferenceTree::dump() const
{
    return dumpRow(m_root);
}

QString ReferenceTree::describe() const
{
    return describeRow(m_root, 0);
}

QString describeTree(const QAbstractItemModel& model)
{
    return describeRows(model, QModelIndex(), 0);
}
