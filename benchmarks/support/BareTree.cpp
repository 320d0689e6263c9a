#include "benchmarks/support/BareTree.h"

#include "base/NodeType.h"
#include "processortree/model/ProcessorItem.h"

#include <QHash>
#include <QVector>

namespace {

CProcessorItem* makeGroup(const ProcessorGroupNode& group)
{
    auto* item = new CProcessorItem(NodeGroup, group.id);
    item->setText(group.name);
    item->setData(QVariant::fromValue(group), NodeDataRole);
    return item;
}

CProcessorItem* makeProcessor(const ProcessorNode& processor)
{
    auto* item = new CProcessorItem(NodeProcessor, processor.id);
    item->setText(processor.name);
    item->setData(QVariant::fromValue(processor), NodeDataRole);
    return item;
}

bool sameRecord(const QModelIndex& left, const QModelIndex& right)
{
    const QVariant leftRecord = left.data(NodeDataRole);
    const QVariant rightRecord = right.data(NodeDataRole);
    if (nodeType(left) == NodeProcessor) {
        const auto one = leftRecord.value<ProcessorNode>();
        const auto other = rightRecord.value<ProcessorNode>();
        return one.id == other.id && one.name == other.name && one.number == other.number
               && one.groupId == other.groupId && one.ipAddress == other.ipAddress
               && one.reachedByIp == other.reachedByIp && one.hostText14 == other.hostText14;
    }
    const auto one = leftRecord.value<ProcessorGroupNode>();
    const auto other = rightRecord.value<ProcessorGroupNode>();
    return one.id == other.id && one.name == other.name
           && one.processors.size() == other.processors.size();
}

bool sameRow(const QModelIndex& left, const QModelIndex& right)
{
    for (const int role : {int(Qt::DisplayRole), int(Qt::SizeHintRole), int(UuidRole)}) {
        if (left.data(role) != right.data(role))
            return false;
    }
    return nodeType(left) == nodeType(right) && left.flags() == right.flags()
           && sameRecord(left, right);
}

bool sameChildren(const QModelIndex& leftParent, const QModelIndex& rightParent,
                  const QAbstractItemModel& left, const QAbstractItemModel& right)
{
    const int rows = left.rowCount(leftParent);
    if (rows != right.rowCount(rightParent))
        return false;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex leftChild = left.index(row, 0, leftParent);
        const QModelIndex rightChild = right.index(row, 0, rightParent);
        if (!sameRow(leftChild, rightChild) || !sameChildren(leftChild, rightChild, left, right))
            return false;
    }
    return true;
}

} // namespace

BareTree::BareTree()
    : m_root(new CProcessorItem(NodeRoot))
{
    m_root->setData(QUuid(), UuidRole);
    m_root->setEditable(false);
    m_model.appendRow(m_root);
}

void BareTree::refill(const Project& project)
{
    m_root->removeRows(0, m_root->rowCount());
    m_root->setText(QStringLiteral("All processors(%1)").arg(project.processors.size()));
    int next = 0;
    for (const ProcessorGroupNode& group : project.groups) {
        QStandardItem* groupItem = makeGroup(group);
        m_root->appendRow(groupItem);
        // Listed group by group, so that nothing has to be looked up here.
        for (; next < project.processors.size(); ++next) {
            const ProcessorNode& processor = project.processors.at(next);
            if (processor.groupId != group.id)
                break;
            groupItem->appendRow(makeProcessor(processor));
        }
    }
}

bool sameTree(const QAbstractItemModel& left, const QAbstractItemModel& right)
{
    return sameChildren(QModelIndex(), QModelIndex(), left, right);
}
