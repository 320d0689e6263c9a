#include "processortree/view/ProcessorSelectionModel.h"

#include "base/ContractCheck.h"
#include "base/NodeType.h"
#include "base/PanelBridge.h"
#include "base/TargetSelectHandler.h"
#include "host/common/AppendLog.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <QAbstractItemView>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>

CProcessorSelectionModel::CProcessorSelectionModel(IPanelBridge& bridge, QAbstractItemModel* model,
                                                   QAbstractItemView* view)
    : CProcessorItemSelectionModel(model, view)
    , m_bridge(bridge)
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
        tellHost([&] {
            // It may be the row of a processor that the host has just removed.
            const ContractCheck::Probe probe;
            askHost(&Host::GetProcessorNode, previous);
        });
        if (!self)
            return;
        if (!previous.isNull())
            m_previous = previous;
    }
    // The report comes last: the host may choose another processor in it.
    if (row.isValid())
        CProcessorItemSelectionModel::setCurrentIndex(row, NoUpdate);
    if (self && row.isValid() && command != NoUpdate)
        select(row, command);
}

void CProcessorSelectionModel::restore(const QItemSelection& rows)
{
    CProcessorItemSelectionModel::select(rows, Select);
}

void CProcessorSelectionModel::restoreCurrent(const QModelIndex& index)
{
    CProcessorItemSelectionModel::setCurrentIndex(index, NoUpdate);
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

    if (m_bridge.IsSelectionEchoGuarded())
        return;
    const QUuid previous = m_previous;
    // The host may delete this selection while it is told.
    IPanelBridge& bridge = m_bridge;
    bridge.SetSelectionEchoGuard(true);
    const auto unguard = qScopeGuard([&bridge] { bridge.SetSelectionEchoGuard(false); });
    tellHost([&] { askHost(&Host::ReportSelection, focus, processors, groups, previous); });
}

/// While rows come or go, an exception of the host's ends here: it would keep the model and its
/// views from hearing the rest of it.
void CProcessorSelectionModel::tellHost(const std::function<void()>& tell) const
{
    const auto* tree = qobject_cast<const CProcessorTreeModel*>(model());
    if (!tree || !tree->isChanging()) {
        tell();
        return;
    }
    try {
        tell();
    } catch (...) {
        AppendLog(__func__, __FILE__, __LINE__, "The host threw when it was told of a selection.");
    }
}
