#pragma once

#include "host/widgets/HostTheme.h"
#include "host/widgets/TableView.h"
#include "host/widgets/WholeTextDelegate.h"

#include <QHeaderView>
#include <QPainter>

/// Paints cells in the visible part of the table, and highlights whole rows under the mouse.
class TableDelegate final : public WholeTextDelegate
{
    Q_OBJECT

public:
    explicit TableDelegate(CTableView* view)
        : WholeTextDelegate(view)
        , m_view(view)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        WholeTextDelegate::paint(painter, visiblePart(option), index);
        if (!showsWholeRows() || !m_view->hasFocus() || index.row() != m_view->currentIndex().row())
            return;
        // With Ctrl pressed, the keyboard moves the current cell without selecting it.
        paintFocus(*painter, visiblePart(option).rect,
                   m_view->horizontalHeader()->visualIndex(index.column()));
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        WholeTextDelegate::initStyleOption(option, index);
        if (showsWholeRows() && m_view->isEnabled() && index.row() == m_view->hoveredRow())
            option->state |= QStyle::State_MouseOver;
        if (showsWholeRows())
            option->state &= ~QStyle::State_HasFocus;
    }

    QStyleOptionViewItem visiblePart(const QStyleOptionViewItem& option) const override
    {
        QStyleOptionViewItem visible(option);
        visible.rect.setRight(qMin(option.rect.right(), m_view->viewport()->rect().right()));
        return visible;
    }

private:
    /// Paints the part of the outline around the row that is in one cell.
    void paintFocus(QPainter& painter, const QRect& cell, int visualColumn) const
    {
        const QColor& color = hostColors().accent;
        painter.fillRect(cell.left(), cell.top(), cell.width(), 1, color);
        painter.fillRect(cell.left(), cell.bottom(), cell.width(), 1, color);
        const bool isLast = visualColumn == m_view->horizontalHeader()->count() - 1
                            || cell.right() == m_view->viewport()->rect().right();
        if (visualColumn == 0)
            painter.fillRect(cell.left(), cell.top(), 1, cell.height(), color);
        if (isLast)
            painter.fillRect(cell.right(), cell.top(), 1, cell.height(), color);
    }

    bool showsWholeRows() const
    {
        return m_view->selectionBehavior() == QAbstractItemView::SelectRows;
    }

    CTableView* m_view; // owner
};
