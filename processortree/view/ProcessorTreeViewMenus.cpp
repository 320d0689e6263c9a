// The menus of the processor tree.

#include "base/NodeType.h"
#include "base/PanelBridge.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ArrivalWatch.h"
#include "processortree/view/MultiSelection.h"
#include "processortree/view/ProcessorTreeView.h"
#include "processortree/view/TreeMenu.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QStandardItem>

#include <algorithm>
#include <utility>

namespace {

constexpr int kMenuWidth = 120;
constexpr int kWideMenuWidth = 240;

/// Returns whether the host protects one of its selected processors.
bool isDeletionBlocked()
{
    const QList<QUuid> selected = askHost(&Host::GetSelectedProcessors);
    return std::any_of(selected.begin(), selected.end(), [](const QUuid& processor) {
        return askHost(&Host::IsDeleteBlocked, processor);
    });
}

/// Returns whether the menu of row `index` would offer "Delete". Of a project's only processor the
/// deletion itself says why it has to stay.
bool isDeletable(const QModelIndex& index)
{
    if (nodeType(index) != NodeProcessor)
        return true;
    const QUuid id = index.data(UuidRole).toUuid();
    return !askHost(&Host::GetProcessorNode, id).hostFlag13
           || askHost(&Host::IsIpManagementAvailable);
}

} // namespace

void CProcessorTreeView::OnNotifyMoreClicked(const QModelIndex& index, const QPoint& pos)
{
    m_isMenuByKey = false;
    OnRightMenuEvent(index, pos);
}

void CProcessorTreeView::OnRightMenuEvent(const QModelIndex& index, const QPoint& pos)
{
    const auto type = nodeType(index);
    if (!type || m_locked)
        return;
    const Life alive(this);
    const QPersistentModelIndex row(index);
    const QUuid id = index.data(UuidRole).toUuid();
    const QPoint place = viewport()->mapToGlobal(pos);
    CTreeMenu menu(dialogParent(), kMenuWidth);
    if (!isReadOnly())
        addAdditionEntries(menu);
    if (alive && type == NodeGroup)
        addGroupEntries(menu, row);
    if (alive && type == NodeProcessor)
        addProcessorEntries(menu, row);
    if (alive)
        appendHostEntries(menu, *type, id);
    if (alive && !isReadOnly() && type == NodeProcessor)
        addFrontPanelEntry(menu, id);
    if (alive)
        menu.run(place, m_isMenuByKey);
}

bool CProcessorTreeView::isReadOnly() const
{
    return m_bridge.IsReadOnly();
}

/// Asked again when an entry acts: the host may have locked the tree under the open menu.
bool CProcessorTreeView::mayChange() const
{
    return !m_locked && !isReadOnly();
}

void CProcessorTreeView::appendHostEntries(CTreeMenu& menu, EPrcTreeNodeType type, const QUuid& id)
{
    if (menu.menu())
        askHost(&Host::AppendContextMenu, type, id, isReadOnly(), menu.menu());
}

void CProcessorTreeView::addAdditionEntries(CTreeMenu& menu)
{
    menu.add(tr("Add processor group"), [this] {
        if (mayChange())
            AddGroup();
    });
    menu.addSeparator();
    const OfferedAdditions entries = offeredAdditions();
    const std::pair<AddKind, QString> kinds[] = {{AddKind::One, tr("Add 1 processor")},
                                                 {AddKind::Two, tr("Add 2 processor")},
                                                 {AddKind::Custom, tr("Custom adds...")}};
    for (const auto& [kind, text] : kinds) {
        const AddKind chosen = kind;
        QAction* entry = menu.add(
            text,
            [this, chosen] {
                if (mayChange())
                    AddProcessors(chosen);
            },
            entries.enabled);
        if (entry)
            entry->setVisible(entries.isVisible(kind));
    }
    if (entries.isAnyVisible())
        menu.addSeparator();
}

void CProcessorTreeView::addGroupEntries(CTreeMenu& menu, const QPersistentModelIndex& index)
{
    addRenameEntry(menu, index);
    addDeleteEntry(menu);
}

void CProcessorTreeView::addRenameEntry(CTreeMenu& menu, const QPersistentModelIndex& index)
{
    menu.add(tr("Rename"), [this, index] {
        if (!m_locked)
            openEditor(index);
    });
    menu.addSeparator();
}

void CProcessorTreeView::addDeleteEntry(CTreeMenu& menu)
{
    // What the user saw selected, and nothing that the host selected since.
    menu.add(
        tr("Delete"),
        [this, selected = selectedRows()] {
            if (selectedRows() == selected)
                DeleteSelection();
        },
        !isReadOnly());
}

void CProcessorTreeView::addProcessorEntries(CTreeMenu& menu, const QPersistentModelIndex& index)
{
    if (!menu.menu() || !GetTargetSelectHandler())
        return;
    menu.menu()->setMinimumWidth(kWideMenuWidth);
    const QUuid id = index.data(UuidRole).toUuid();
    const bool guarded = askHost(&Host::GetProcessorNode, id).hostFlag13;
    if (!guarded || askHost(&Host::CanRenameProcessor, id))
        addRenameEntry(menu, index);
    if (!menu.menu() || !treeModel() || treeModel()->getAllProcessorCount() < 2)
        return;
    if (!guarded || askHost(&Host::IsIpManagementAvailable))
        addDeleteEntry(menu);
}

void CProcessorTreeView::addFrontPanelEntry(CTreeMenu& menu, const QUuid& id)
{
    if (!askHost(&Host::IsFrontPanelHighlightAvailable))
        return;
    const bool lit = askHost(&Host::IsFrontPanelHighlighted, id);
    menu.addSeparator();
    menu.add(lit ? tr("Cancel highlighting the front panel") : tr("Highlight the front panel"),
             [lit] { askHost(&Host::SetFrontPanelHighlight, !lit); });
}

void CProcessorTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    const Life alive(this);
    // Assistive technology has no mouse either.
    m_isMenuByKey = event->reason() != QContextMenuEvent::Mouse;
    const bool several = offersSelectionMenu();
    if (!alive)
        return;
    if (!several) {
        CTreeView::contextMenuEvent(event);
        return;
    }
    event->accept();
    // By keyboard it is the current row's, which may be out of view, or in a closed group.
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    runSelectionMenu(index.isValid() ? index : currentIndex(),
                     byKey ? pointInView(event->pos()) : event->pos());
}

bool CProcessorTreeView::offersSelectionMenu() const
{
    return isMultiSelection() && !askHost(&Host::IsRestrictedMode);
}

void CProcessorTreeView::runSelectionMenu(const QModelIndex& index, const QPoint& pos)
{
    const Life alive(this);
    const QUuid id = index.data(UuidRole).toUuid();
    const QPoint place = viewport()->mapToGlobal(pos);
    CTreeMenu menu(dialogParent(), kWideMenuWidth);
    if (!isReadOnly() && mayGroupSelection() && alive) {
        menu.add(tr("Add processor group"), [this] {
            if (!m_locked)
                groupSelection();
        });
        menu.addSeparator();
    }
    if (!isDeletionBlocked() && alive)
        addDeleteEntry(menu);
    if (alive)
        appendHostEntries(menu, NodeProcessor, id);
    if (alive && !isReadOnly())
        addFrontPanelEntry(menu, id);
    if (alive)
        menu.run(place, m_isMenuByKey);
}

/// A processor that has, or is, a backup stays where it is.
bool CProcessorTreeView::mayGroupSelection() const
{
    const QList<QUuid> selected = askHost(&Host::GetSelectedProcessors);
    return std::none_of(selected.begin(), selected.end(), [](const QUuid& id) {
        return askHost(&Host::GetProcessorNode, id).redundancyMode != 0;
    });
}

/// Where the menus would offer it.
void CProcessorTreeView::deleteByKey()
{
    const Life alive(this);
    const bool several = offersSelectionMenu();
    if (!alive || (several && isDeletionBlocked()) || !alive)
        return;
    const QList<QPersistentModelIndex> selected = selectedRows();
    if ((several || std::all_of(selected.begin(), selected.end(), isDeletable)) && alive)
        DeleteSelection();
}

void CProcessorTreeView::groupSelection()
{
    const Life alive(this);
    if (!mayChange() || !offersSelectionMenu() || !alive || !mayGroupSelection() || !alive
        || !mayChange())
        return;
    m_toGroup = selectedProcessors();
    const QUuid group = createGroup();
    if (!alive || group.isNull() || !treeModel())
        return;
    if (treeModel()->getItem(group))
        onGroupToFillArrived(group);
    else
        m_groupToFill->expectGroup(group);
}

void CProcessorTreeView::onGroupToFillArrived(const QUuid& id)
{
    moveTo(std::exchange(m_toGroup, {}), id);
}
