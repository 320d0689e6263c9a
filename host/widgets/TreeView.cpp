#include "host/widgets/TreeView.h"

#include <QContextMenuEvent>
#include <QPainter>

CTreeView::CTreeView(QWidget* parent)
    : QTreeView(parent)
{
    setHeaderHidden(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
}

void CTreeView::setModel(QAbstractItemModel* model)
{
    QTreeView::setModel(model);
}

bool CTreeView::eventFilter(QObject* watched, QEvent* event)
{
    return QTreeView::eventFilter(watched, event);
}

void CTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    const QModelIndex index = indexAt(event->pos());
    if (index.isValid())
        emit RightMenuEvent(index, event->pos());
}

bool CTreeView::viewportEvent(QEvent* event)
{
    return QTreeView::viewportEvent(event);
}

void CTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const
{
    QTreeView::drawRow(painter, option, index);
}

void CTreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    QTreeView::drawBranches(painter, rect, index);
}

void CTreeView::DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QRect& row) const
{
    painter->fillRect(row, option.palette.highlight());
}

void CTreeView::DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                             const QRect& row) const
{
    painter->fillRect(row, option.palette.alternateBase());
}

void CTreeView::DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QRect& row) const
{
    painter->fillRect(row, option.palette.base());
}
