#include "processortree/view/TreeDeletion.h"

#include "base/LogCategories.h"
#include "base/NodeType.h"
#include "base/UserMessages.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(CProcessorTreeView)
};

enum class Redundancy { HasBackup = 1, IsBackup = 2 };

/// Why the processor cannot be deleted; empty when it can.
QString refusal(const QModelIndex& index)
{
    const auto processor = index.data(NodeDataRole).value<ProcessorNode>();
    switch (static_cast<Redundancy>(processor.redundancyMode)) {
    case Redundancy::HasBackup:
        return Texts::tr("The selected processor has a redundant backup, please disable redundant "
                         "backup first.");
    case Redundancy::IsBackup:
        return Texts::tr("Processor%1 has been set to backup redundancy, please disable backup "
                         "before delete them.")
            .arg(qint64{processor.number} + 1);
    }
    return {};
}

bool mayUngroup(const CProcessorTreeModel& model, const QModelIndex& group, QWidget* parent)
{
    return model.getChildProcessor(group).isEmpty()
           || askUser(
               parent,
               Texts::tr("Are you sure you want to ungroup the selected processor group (the "
                         "processors under the group still remains)?"));
}

} // namespace

TreeDeletion askForDeletion(const CProcessorTreeModel& model,
                            const QList<QPersistentModelIndex>& selected, QWidget* parent)
{
    const QPointer<const CProcessorTreeModel> alive(&model);
    const QPointer<QWidget> aliveParent(parent);
    for (const QPersistentModelIndex& index : selected) {
        const auto type = nodeType(index);
        if (type == NodeProcessor) {
            const QString message = refusal(index);
            if (message.isEmpty())
                continue;
            qCInfo(lcTree, "nothing is deleted: %s", qPrintable(message));
            tellUser(parent, message);
            return {};
        }
        if (type == NodeGroup) {
            const QUuid id = index.data(UuidRole).toUuid();
            if (mayUngroup(model, index, parent))
                return index.isValid() ? TreeDeletion{{}, id} : TreeDeletion();
            if (!alive || !aliveParent)
                return {};
        }
    }
    if (selected.isEmpty() || nodeType(selected.first()) != NodeProcessor)
        return {};
    if (selected.size() == model.getAllProcessorCount()) {
        qCInfo(lcTree, "nothing is deleted: no processor would be left");
        tellUser(parent, Texts::tr("Must keep at least one processor."));
        return {};
    }
    if (!askUser(parent, Texts::tr("Want to delete the selected processor?")))
        return {};
    // The host may have removed some while the user thought about it.
    TreeDeletion deletion;
    for (const QPersistentModelIndex& index : selected) {
        if (nodeType(index) == NodeProcessor)
            deletion.processors.append(index.data(UuidRole).toUuid());
    }
    return deletion;
}
