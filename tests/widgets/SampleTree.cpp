#include "tests/widgets/SampleTree.h"

namespace {

QStandardItem* row(EPrcTreeNodeType type, const QString& name, int height)
{
    auto* item = new QStandardItem(name);
    item->setData(QVariant::fromValue(type), NodeTypeRole);
    item->setData(QSize(0, height), Qt::SizeHintRole);
    return item;
}

} // namespace

QStandardItem* groupRow(const QString& name)
{
    return row(NodeGroup, name, 32);
}

QStandardItem* rootRow(const QString& name)
{
    return row(NodeRoot, name, 32);
}

QStandardItem* processorRow(const ProcessorNode& record)
{
    QStandardItem* item = row(NodeProcessor, record.name, 42);
    item->setData(QVariant::fromValue(record), NodeDataRole);
    return item;
}

ProcessorNode namedProcessor(const QString& name)
{
    ProcessorNode record;
    record.name = name;
    return record;
}

SampleTree::SampleTree()
{
    for (int number = 1; number <= 5; ++number)
        processors.append(processorRow(namedProcessor(QString::number(number))));
    groupA->appendRows({processors.at(0), processors.at(1)});
    groupB->appendRow(processors.at(2));
    root->appendRows({groupA, groupB, processors.at(3), processors.at(4)});
    model.appendRow(root);
}

QString names(const QModelIndexList& rows)
{
    QStringList texts;
    for (const QModelIndex& row : rows)
        texts.append(row.data().toString());
    texts.sort();
    return texts.join(QLatin1Char(' '));
}
