#include "processortree/ProcessorSelectionModel.h"

#include "plugin/TargetSelectData.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorTreeModel.h"

#include <QAbstractItemView>
#include <QPointer>

#include <algorithm>

CProcessorSelectionModel::CProcessorSelectionModel(QAbstractItemModel* model,
                                                   QAbstractItemView* view)
    : CProcessorItemSelectionModel(model, view)
{
    // Where the current row is removed, Qt has any neighbour take over. Queued: others have yet to
    // hear of that one.
    connect(
        this, &QItemSelectionModel::currentChanged, this,
        [this] {
            if (currentIndex().isValid() && nodeType(currentIndex()) != NodeProcessor)
                clearCurrentIndex();
        },
        Qt::QueuedConnection);
}

void CProcessorSelectionModel::setCurrentIndex(const QModelIndex& index,
                                               QItemSelectionModel::SelectionFlags command)
{
    if (index == currentIndex() && command == NoUpdate)
        return;
    if (nodeType(index) != NodeProcessor)
        return;

    // The host may take the row away, or the view with this, whenever it is asked or told.
    const QPointer<CProcessorSelectionModel> self(this);
    const QPersistentModelIndex row(index);
    if (nodeType(currentIndex()) == NodeProcessor) {
        const QUuid previous = currentIndex().data(UuidRole).toUuid();
        askHost(&Host::GetProcessorNode, previous);
        if (!self)
            return;
        if (!previous.isNull())
            m_previous = previous;
    }
    if (command != NoUpdate && row.isValid())
        select(row, command);
    if (self && row.isValid())
        CProcessorItemSelectionModel::setCurrentIndex(row, NoUpdate);
}

void CProcessorSelectionModel::select(const QItemSelection& selection,
                                      QItemSelectionModel::SelectionFlags command)
{
    const QPointer<CProcessorSelectionModel> self(this);
    const QModelIndexList before = selectedIndexes();
    CProcessorItemSelectionModel::select(selection, command);
    if (!self)
        return;
    const QModelIndexList after = selectedIndexes();
    // Blocked while the host's own choice is taken over: it knows of that one.
    if (after != before && !signalsBlocked())
        report(after);
}

void CProcessorSelectionModel::report(QModelIndexList selected) const
{
    std::sort(selected.begin(), selected.end());
    const auto* tree = qobject_cast<const CProcessorTreeModel*>(model());
    QUuid focus;
    QList<QUuid> processors;
    QList<SGroupSelection> groups;
    for (const QModelIndex& index : qAsConst(selected)) {
        const QUuid id = index.data(UuidRole).toUuid();
        const auto type = nodeType(index);
        if (type == NodeProcessor) {
            processors.append(id);
            focus = id;
        } else if (type == NodeGroup) {
            groups.append({id, tree ? tree->getChildProcessor(index) : QList<QUuid>()});
            focus = id;
        }
    }

    CTargetSelectData& bridge = *CTargetSelectData::Instance();
    if (bridge.IsSelectionEchoGuarded())
        return;
    const QUuid previous = m_previous;
    bridge.SetSelectionEchoGuard(true);
    askHost(&Host::ReportSelection, focus, processors, groups, previous);
    bridge.SetSelectionEchoGuard(false);
}
