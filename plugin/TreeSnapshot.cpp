#include "plugin/TreeSnapshot.h"

#include "Interface/TargetSelectAreaInterface.h"
#include "base/NodeType.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorTreeModel.h"

namespace {

QList<ProcessorNode> processorsBelow(const QStandardItem& parent)
{
    QList<ProcessorNode> processors;
    for (int row = 0; row < parent.rowCount(); ++row) {
        const QStandardItem* child = parent.child(row);
        if (child && nodeType(*child) == NodeProcessor)
            processors.append(child->data(NodeDataRole).value<ProcessorNode>());
    }
    return processors;
}

void appendTree(const QStandardItem& root, ProcessorTreeSnapshot& out)
{
    for (int row = 0; row < root.rowCount(); ++row) {
        const QStandardItem* child = root.child(row);
        if (!child || nodeType(*child) != NodeGroup)
            continue;
        auto group = child->data(NodeDataRole).value<ProcessorGroupNode>();
        group.processors = processorsBelow(*child);
        out.groups.append(group);
    }
    out.processors += processorsBelow(root);
}

QList<ProcessorNode> accepted(const QList<ProcessorNode>& processors)
{
    QList<ProcessorNode> kept;
    for (const ProcessorNode& processor : processors) {
        if (askHost(&Host::AcceptProcessorForSnapshot, processor))
            kept.append(processor);
    }
    return kept;
}

} // namespace

void takeSnapshot(const CProcessorTreeModel& model, ProcessorTreeSnapshot& out)
{
    for (int row = 0; row < model.rowCount(); ++row)
        appendTree(*model.item(row), out);
}

void dropRefused(ProcessorTreeSnapshot& out)
{
    for (ProcessorGroupNode& group : out.groups)
        group.processors = accepted(group.processors);
    out.processors = accepted(out.processors);
}
