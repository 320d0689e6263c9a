#pragma once

#include "host/widgets/HostTheme.h"
#include "host/widgets/TableView.h"
#include "host/widgets/WholeTextDelegate.h"

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
        painter->fillRect(QRect(option.rect.topLeft(), QSize(option.rect.width(), 1)),
                          hostColors().accent);
        painter->fillRect(QRect(option.rect.bottomLeft(), QSize(option.rect.width(), 1)),
                          hostColors().accent);
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
    bool showsWholeRows() const
    {
        return m_view->selectionBehavior() == QAbstractItemView::SelectRows;
    }

    CTableView* m_view; // owner
};
