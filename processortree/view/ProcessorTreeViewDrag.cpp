// Drag and drop in the processor tree.

#include "base/LogCategories.h"
#include "base/NodeType.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeDelegate.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QItemSelection>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QScopeGuard>
#include <QStandardItem>

namespace {

constexpr int kPictureOpacity = 255 * 7 / 10; // of what is dragged, over where it may go

bool isMovable(const CProcessorTreeModel* model, const QMimeData& data)
{
    return model && data.hasFormat(model->mimeTypes().value(0));
}

} // namespace

/// The group, or root, that a drop on row `index` goes into; invalid for the root over empty space.
/// `nowhere` is set over a processor that is in no group.
QModelIndex CProcessorTreeView::dropTarget(const QModelIndex& index, bool* nowhere)
{
    *nowhere = false;
    if (nodeType(index) != NodeProcessor)
        return index;
    *nowhere = nodeType(index.parent()) != NodeGroup;
    return *nowhere ? QModelIndex() : index.parent();
}

QList<QUuid> CProcessorTreeView::selectedProcessors() const
{
    QList<QUuid> processors;
    const QList<QPersistentModelIndex> selected = selectedRows();
    for (const QPersistentModelIndex& index : selected) {
        if (nodeType(index) == NodeProcessor)
            processors.append(index.data(UuidRole).toUuid());
    }
    return processors;
}

/// Later, when the view is through with the mouse: the host may destroy it during the drag. What is
/// dragged is settled now, and kept by identity: the host may select and move other rows meanwhile.
void CProcessorTreeView::startDrag(Qt::DropActions)
{
    if (!mayChange())
        return;
    m_dragged = selectedProcessors();
    QMetaObject::invokeMethod(this, &CProcessorTreeView::runDrag, Qt::QueuedConnection);
}

/// Without the base, which removes the rows of a move: that is for the host alone to do.
void CProcessorTreeView::runDrag()
{
    QRegion rows;
    QModelIndexList dragged;
    for (const QUuid& processor : qAsConst(m_dragged)) {
        const QStandardItem* item = treeModel() ? treeModel()->getItem(processor) : nullptr;
        if (!item)
            continue;
        dragged.append(item->index());
        rows += wholeRow(item->index());
    }
    if (dragged.isEmpty() || !mayChange() || !(QApplication::mouseButtons() & Qt::LeftButton))
        return;
    const QRect picture = rows.boundingRect() & viewport()->rect();
    m_drag = new QDrag(this);
    m_drag->setMimeData(model()->mimeData(dragged));
    m_drag->setPixmap(dragPicture(dragged, picture));
    m_drag->setHotSpot(viewport()->mapFromGlobal(QCursor::pos()) - picture.topLeft());
    const QPointer<CProcessorTreeView> alive(this);
    m_drag->exec(Qt::MoveAction);
    if (alive)
        m_drag = nullptr;
}

/// Returns the part of the viewport `part` with the dragged rows alone: translucent, so that it
/// does not hide where they go, and without the button, which nobody can press meanwhile.
QPixmap CProcessorTreeView::dragPicture(const QModelIndexList& rows, const QRect& part)
{
    const qreal scale = viewport()->devicePixelRatioF();
    QPixmap picture(QSizeF(part.size() * scale).toSize());
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    m_delegate->setButtonShown(false);
    const auto show = qScopeGuard([this] { m_delegate->setButtonShown(true); });
    QPainter painter(&picture);
    painter.translate(-part.topLeft());
    QStyleOptionViewItem option = viewOptions();
    for (const QModelIndex& row : rows) {
        option.rect = wholeRow(row);
        drawRow(&painter, option, row);
    }
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(part, QColor(0, 0, 0, kPictureOpacity));
    return picture;
}

/// Returns the place of a row with its indentation.
QRect CProcessorTreeView::wholeRow(const QModelIndex& index) const
{
    const QRect row = visualRect(index);
    return {0, row.top(), row.right() + 1, row.height()};
}

/// Of a view that ends. Qt works with the drag until that is over, and deletes it then.
void CProcessorTreeView::abandonDrag()
{
    if (!m_drag)
        return;
    m_drag->setParent(nullptr);
    QDrag::cancel();
}

void CProcessorTreeView::dragMoveEvent(QDragMoveEvent* event)
{
    // For its scrolling near the edges; what it says of the drop does not count.
    CTreeView::dragMoveEvent(event);
    const Life alive(this);
    const bool restricted = askHost(&Host::IsRestrictedMode);
    if (!alive)
        return;
    bool nowhere = false;
    const QModelIndex target = dropTarget(indexAt(event->pos()), &nowhere);
    const bool accepted =
        isMovable(treeModel(), *event->mimeData()) && !restricted && !nowhere && mayChange();
    if (!accepted) {
        qCDebug(lcTree, "no drop here: %s",
                restricted     ? "the host is restricted"
                : nowhere      ? "the row is in no group"
                : !mayChange() ? "the tree is locked or read-only"
                               : "these are no rows of the tree");
    }
    if (accepted) // over empty space they go to the root
        setDropTarget(target.isValid() ? target : model()->index(0, 0));
    else
        setDropTarget({});
    event->setAccepted(accepted);
}

void CProcessorTreeView::dragLeaveEvent(QDragLeaveEvent* event)
{
    CTreeView::dragLeaveEvent(event);
    setDropTarget({});
    event->accept();
}

void CProcessorTreeView::dropEvent(QDropEvent* event)
{
    setDropTarget({});
    stopAutoScroll();
    setState(openField() ? EditingState : NoState);
    const Life alive(this);
    if (!isMovable(treeModel(), *event->mimeData()) || askHost(&Host::IsRestrictedMode) || !alive
        || !mayChange())
        return;
    // The view that a move comes from removes its rows; here the model moves them itself.
    event->setDropAction(Qt::TargetMoveAction);
    event->accept();
    moveOnto(m_drag ? m_dragged : selectedProcessors(), indexAt(event->pos()));
}

/// Moves processors to where row `index` is, or says that they belong. Returns whether they may go
/// there.
bool CProcessorTreeView::moveOnto(const QList<QUuid>& processors, const QModelIndex& index)
{
    bool nowhere = false;
    const QModelIndex target = dropTarget(index, &nowhere);
    if (nowhere)
        return false;
    const Life alive(this);
    const QUuid group = target.data(UuidRole).toUuid();
    if (target.isValid())
        expand(target);
    moveTo(processors, group);
    if (alive) {
        m_delegate->resetButtonState();
        viewport()->update();
    }
    return true;
}

void CProcessorTreeView::setDropTarget(const QModelIndex& index)
{
    if (m_dropTarget == index)
        return;
    m_dropTarget = index;
    viewport()->update();
}
