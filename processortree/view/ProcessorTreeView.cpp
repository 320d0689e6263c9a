#include "processortree/view/ProcessorTreeView.h"

#include "base/NodeType.h"
#include "base/PaintScope.h"
#include "base/PanelBridge.h"
#include "base/PanelStep.h"
#include "base/TargetSelectHandler.h"
#include "host/widgets/HostTheme.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/AccessibleTree.h"
#include "processortree/view/Addition.h"
#include "processortree/view/ArrivalWatch.h"
#include "processortree/view/EmptyTreeHint.h"
#include "processortree/view/ExpandBranches.h"
#include "processortree/view/ProcessorSelectionModel.h"
#include "processortree/view/ProcessorTreeDelegate.h"
#include "processortree/view/TreeDeletion.h"

#include <QHoverEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QShortcut>
#include <QStandardItem>

#include <algorithm>
#include <utility>

namespace {

// Along the right edge of the viewport, for the scroll bar: rows end before it, at the same column
// as the controls above the tree, and the mouse does nothing there.
constexpr int kEdge = 10;

// Of rows that wait for their new place. Their names stay readable.
constexpr qreal kCutOpacity = 0.6;

bool isMouseEvent(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return true;
    default:
        return false;
    }
}

QUuid identity(const QModelIndex& index)
{
    return index.data(UuidRole).toUuid();
}

/// With these keys the mouse selects, and drags nothing.
bool isSelecting(const QMouseEvent& event)
{
    return event.buttons() != Qt::NoButton
           && (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier));
}

QRect withoutEdge(const QRect& row)
{
    return row.adjusted(0, 0, -kEdge, 0);
}

} // namespace

CProcessorTreeView::CProcessorTreeView(IPanelBridge& bridge, QWidget* parent)
    : CTreeView(parent)
    , m_bridge(bridge)
    , m_delegate(new CProcessorTreeDelegate(bridge, this))
    , m_arrivals(new CArrivalWatch(this))
    , m_groupToFill(new CArrivalWatch(this))
    , m_emptyHint(new CEmptyTreeHint(this))
{
    AccessibleTree::install();
    setItemDelegate(m_delegate);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setDefaultDropAction(Qt::MoveAction);
    // When the view is through with the click: the host may end it while the menu is open.
    connect(m_delegate, &CProcessorTreeDelegate::notifyMoreClicked, this,
            [this](const QModelIndex& index, const QPoint& pos) {
                const auto open = [this, row = QPersistentModelIndex(index), pos] {
                    if (row.isValid())
                        OnNotifyMoreClicked(row, pos);
                };
                QMetaObject::invokeMethod(this, open, Qt::QueuedConnection);
            });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
        if (m_isByUser && nodeType(index) == NodeGroup)
            m_closed.insert(identity(index));
    });
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { m_closed.remove(identity(index)); });
    connect(this, &CTreeView::RightMenuEvent, this, &CProcessorTreeView::OnRightMenuEvent);
    connect(m_arrivals, &CArrivalWatch::groupArrived, this, &CProcessorTreeView::onGroupArrived);
    connect(m_arrivals, &CArrivalWatch::processorArrived, this,
            &CProcessorTreeView::onProcessorArrived);
    // Queued: others still have to hear of the group before rows move into it.
    connect(m_groupToFill, &CArrivalWatch::groupArrived, this,
            &CProcessorTreeView::onGroupToFillArrived, Qt::QueuedConnection);
    addShortcut(Qt::Key_F2, &CProcessorTreeView::RenameSelection);
    addShortcut(Qt::Key_Delete, &CProcessorTreeView::deleteByKey);
    addShortcut(QKeySequence(QStringLiteral("Ctrl+G")), &CProcessorTreeView::groupSelection);
    addShortcut(QKeySequence(QStringLiteral("Ctrl+X")), &CProcessorTreeView::cutSelection);
    addShortcut(QKeySequence(QStringLiteral("Ctrl+V")), &CProcessorTreeView::pasteCut);
}

CProcessorTreeView::~CProcessorTreeView()
{
    abandonDrag();
}

/// Belongs to the editor while one is open, which has the focus then.
void CProcessorTreeView::addShortcut(const QKeySequence& keys, void (CProcessorTreeView::*action)())
{
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
    m_shortcuts.append(shortcut);
}

/// Not while rows come or go already, as when the host lets events through in the middle of it.
void CProcessorTreeView::changeTree(const std::function<void(CProcessorTreeModel&)>& change)
{
    m_bridge.changeTree([change, model = QPointer<CProcessorTreeModel>(treeModel())] {
        if (model)
            change(*model);
    });
}

CProcessorTreeModel* CProcessorTreeView::treeModel() const
{
    return qobject_cast<CProcessorTreeModel*>(model());
}

void CProcessorTreeView::setModel(QAbstractItemModel* newModel)
{
    const QPointer<CProcessorSelectionModel> before =
        qobject_cast<CProcessorSelectionModel*>(selectionModel());
    if (treeModel())
        disconnect(&treeModel()->moves(), &CRowMoves::ended, this, nullptr);
    m_movingRows.clear();
    CTreeView::setModel(newModel);
    if (treeModel())
        connect(&treeModel()->moves(), &CRowMoves::ended, this, &CProcessorTreeView::onMoveEnded);
    if (before != selectionModel())
        delete before;
    if (newModel) {
        QItemSelectionModel* const given = selectionModel();
        setSelectionModel(new CProcessorSelectionModel(m_bridge, newModel, this));
        delete given;
    }
    // Behind the selection model, which forgets the selection when the model is reset.
    m_arrivals->setModel(treeModel());
    m_groupToFill->setModel(treeModel());
    m_emptyHint->setModel(treeModel());
}

void CProcessorTreeView::outlivePanel()
{
    m_retired = true;
    m_arrivals->stop();
    m_groupToFill->stop();
    SetLocked(true);
    // Blocked it reports nothing, whatever becomes of its rows: the host may have another panel.
    selectionModel()->blockSignals(true);
    CPanelStep::keep(this);
}

/// What menus and dialogs go with: the panel, which this view may outlive.
QWidget* CProcessorTreeView::dialogParent()
{
    return parentWidget() ? parentWidget() : this;
}

void CProcessorTreeView::SetLocked(bool locked)
{
    m_locked = locked;
    m_delegate->setButtonEnabled(!locked);
    for (QShortcut* shortcut : qAsConst(m_shortcuts))
        shortcut->setEnabled(!locked);
    setContextMenuPolicy(locked ? Qt::PreventContextMenu : Qt::DefaultContextMenu);
    viewport()->update();
}

void CProcessorTreeView::selectAll()
{
    expandBranches(*this);
    CTreeView::selectAll();
}

QList<QPersistentModelIndex> CProcessorTreeView::selectedRows() const
{
    const QModelIndexList selected =
        selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    return {selected.begin(), selected.end()};
}

void CProcessorTreeView::AddGroup()
{
    const Life alive(this);
    const QUuid id = createGroup();
    if (alive)
        m_arrivals->expectGroup(id);
}

QUuid CProcessorTreeView::createGroup()
{
    const CProcessorTreeModel* tree = treeModel();
    if (!tree)
        return {};
    ProcessorGroupNode group;
    group.name = QStringLiteral("%1 %2").arg(tr("Group")).arg(tree->groupCount() + 1);
    return askHost(&Host::CreateGroup, group);
}

void CProcessorTreeView::onGroupArrived(const QUuid& id)
{
    const QStandardItem* item = treeModel()->getItem(id);
    if (!item)
        return;
    const QPersistentModelIndex index(item->index());
    const Life alive(this);
    // A group is selected, but never current.
    selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
    if (!alive || !index.isValid())
        return;
    scrollTo(index);
    openEditor(index);
}

void CProcessorTreeView::AddProcessors(AddKind kind)
{
    AddProcessors(kind, [this] { return mayChange(); });
}

void CProcessorTreeView::AddProcessors(AddKind kind, const std::function<bool()>& isAllowed)
{
    const Life alive(this);
    const std::optional<Addition> addition = askForAddition(kind, m_outputs, dialogParent());
    if (!alive || !addition || addition->size() == 0 || !isAllowed())
        return;
    if (addition->outputs && !addition->areOutputsFixed)
        m_outputs = *addition->outputs;
    const QUuid group = targetGroup();
    m_arrivals->expectProcessors(addition->size());
    {
        // No QSignalBlocker: the host may destroy the view here.
        const bool wereBlocked = blockSignals(true);
        const auto unblock =
            qScopeGuard([this, view = QPointer<CProcessorTreeView>(this), wereBlocked] {
                if (view)
                    blockSignals(wereBlocked);
            });
        requestAddition(group, *addition);
    }
    if (!alive)
        return;
    if (const QStandardItem* item = treeModel() ? treeModel()->getItem(group) : nullptr)
        expand(item->index());
}

QUuid CProcessorTreeView::targetGroup() const
{
    const QList<QPersistentModelIndex> selected = selectedRows();
    if (selected.isEmpty())
        return {};
    const QModelIndex index = selected.first();
    return identity(nodeType(index) == NodeProcessor ? index.parent() : index);
}

void CProcessorTreeView::onProcessorArrived(const QUuid& id)
{
    const QStandardItem* item = treeModel()->getItem(id);
    if (!item)
        return;
    const QPersistentModelIndex index(item->index());
    const Life alive(this);
    // In the middle of the request the view's signals are blocked.
    m_closed.remove(identity(index.parent()));
    expand(index.parent());
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    if (alive && index.isValid())
        scrollTo(index);
}

void CProcessorTreeView::DeleteSelection()
{
    CProcessorTreeModel* const tree = treeModel();
    if (!tree || !mayChange())
        return;
    const Life alive(this);
    const TreeDeletion deletion = askForDeletion(*tree, selectedRows(), dialogParent());
    // The host may forbid changes while the user thinks about it.
    if (!alive || deletion.isEmpty() || !mayChange())
        return;
    if (!deletion.group.isNull()) {
        askHost(&Host::Ungroup, deletion.group);
        if (alive) {
            changeTree(
                [group = deletion.group](CProcessorTreeModel& model) { model.removeNode(group); });
        }
        return;
    }
    m_pendingDeletions = deletion.processors.size();
    m_removedSoFar = 0;
    if (askHost(&Host::IsIpManagementAvailable))
        askHost(&Host::PreDeleteProcessors, deletion.processors);
    askHost(&Host::DeleteProcessors, deletion.processors);
}

bool CProcessorTreeView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport() && isMouseEvent(*event)
        && isAtEdge(static_cast<QMouseEvent*>(event)->pos()))
        return true;
    return CTreeView::eventFilter(watched, event);
}

/// No row lights up at the edge, where a click would do nothing.
bool CProcessorTreeView::viewportEvent(QEvent* event)
{
    const bool isHover = event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove;
    if (isHover && isAtEdge(static_cast<QHoverEvent*>(event)->pos())) {
        QHoverEvent leave(QEvent::HoverLeave, QPointF(-1, -1),
                          static_cast<QHoverEvent*>(event)->oldPosF());
        return CTreeView::viewportEvent(&leave);
    }
    return CTreeView::viewportEvent(event);
}

bool CProcessorTreeView::isAtEdge(const QPoint& position) const
{
    return position.x() >= viewport()->width() - kEdge && position.x() < viewport()->width();
}

void CProcessorTreeView::mousePressEvent(QMouseEvent* event)
{
    m_arrivals->stop();
    followUser([&] { CTreeView::mousePressEvent(event); });
}

void CProcessorTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    followUser([&] { CTreeView::mouseDoubleClickEvent(event); });
}

/// Takes note of groups that the user closes by `act`.
void CProcessorTreeView::followUser(const std::function<void()>& act)
{
    const QPointer<CProcessorTreeView> alive(this);
    const bool wasByUser = std::exchange(m_isByUser, true);
    act();
    if (alive)
        m_isByUser = wasByUser;
}

void CProcessorTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!dragsOthers(*event) && !isSelecting(*event))
        CTreeView::mouseReleaseEvent(event);
}

void CProcessorTreeView::mouseMoveEvent(QMouseEvent* event)
{
    if (dragsOthers(*event))
        return;
    if (isSelecting(*event))
        event->ignore();
    else
        CTreeView::mouseMoveEvent(event);
}

/// Only processors are dragged.
bool CProcessorTreeView::dragsOthers(const QMouseEvent& event) const
{
    if (!(event.buttons() & Qt::LeftButton))
        return false;
    const QList<QPersistentModelIndex> selected = selectedRows();
    return std::any_of(selected.begin(), selected.end(), [](const QPersistentModelIndex& index) {
        return nodeType(index) != NodeProcessor;
    });
}

void CProcessorTreeView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    CTreeView::rowsInserted(parent, start, end);
    if (!m_closed.contains(identity(parent)))
        expand(parent);
}

/// After a reset, which closed all rows.
void CProcessorTreeView::expandOpen()
{
    const QSet<QUuid> closed = std::exchange(m_closed, {});
    expandBranches(*this);
    for (const QUuid& group : closed) {
        const QStandardItem* item = treeModel() ? treeModel()->getItem(group) : nullptr;
        if (!item)
            continue;
        collapse(item->index());
        m_closed.insert(group);
    }
}

void CProcessorTreeView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && treeModel())
        treeModel()->updateRootText();
    if (event->type() == QEvent::LanguageChange)
        m_emptyHint->update();
    CTreeView::changeEvent(event);
}

void CProcessorTreeView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                     const QVector<int>& roles)
{
    CTreeView::dataChanged(topLeft, bottomRight, roles);
    // Qt tells the field that edits the row, but not while the view has rows to lay out.
    QWidget* field = topLeft == bottomRight ? indexWidget(topLeft) : nullptr;
    if (field)
        itemDelegate()->setEditorData(field, topLeft);
}

void CProcessorTreeView::paintEvent(QPaintEvent* event)
{
    const CPaintScope painting;
    CTreeView::paintEvent(event);
    m_emptyHint->paint();
}

void CProcessorTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    painter->setOpacity(isCut(index) ? kCutOpacity : 1);
    CTreeView::drawRow(painter, option, index);
    painter->setOpacity(1);
    if (!m_dropTarget.isValid() || index != m_dropTarget)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(hostColors().accent);
    painter->drawRoundedRect(QRectF(withoutEdge(option.rect)).adjusted(0.5, 1.5, -0.5, -1.5), 4, 4);
    painter->restore();
}

void CProcessorTreeView::DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QRect& row) const
{
    CTreeView::DrawSelectRow(painter, option, withoutEdge(row));
}

void CProcessorTreeView::DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                                      const QRect& row) const
{
    CTreeView::DrawHoverRow(painter, option, withoutEdge(row));
}

void CProcessorTreeView::DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QRect& row) const
{
    CTreeView::DrawNormalRow(painter, option, withoutEdge(row));
}
