#include "processortree/model/RowDescription.h"

#include "base/NodeType.h"
#include "base/ProcessorTexts.h"
#include "processortree/model/ProcessorTreeModel.h"

namespace {

int countChildren(const QModelIndex& row, EPrcTreeNodeType type)
{
    const QAbstractItemModel& model = *row.model();
    int count = 0;
    for (int child = 0; child < model.rowCount(row); ++child) {
        if (nodeType(model.index(child, 0, row)) == type)
            ++count;
    }
    return count;
}

} // namespace

QString rowDescription(const QModelIndex& row)
{
    const auto type = nodeType(row);
    if (!type)
        return {};
    switch (*type) {
    case NodeRoot:
        return CProcessorTreeModel::tr("Project, Processor groups: %1")
            .arg(countChildren(row, NodeGroup));
    case NodeGroup:
        return CProcessorTreeModel::tr("Processor group, Processors: %1")
            .arg(countChildren(row, NodeProcessor));
    case NodeProcessor:
        return processorDescription(row.data(NodeDataRole).value<ProcessorNode>());
    }
    return {};
}
