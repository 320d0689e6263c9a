#pragma once

#include "host/widgets/TableView.h"
#include "host/widgets/WholeTextDelegate.h"

/// Paints cells within the visible part of the table, and lit by rows.
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
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        WholeTextDelegate::initStyleOption(option, index);
        const bool wholeRows = m_view->selectionBehavior() == QAbstractItemView::SelectRows;
        if (wholeRows && m_view->isEnabled() && index.row() == m_view->hoveredRow())
            option->state |= QStyle::State_MouseOver;
        if (wholeRows)
            option->state &= ~QStyle::State_HasFocus;
    }

    QStyleOptionViewItem visiblePart(const QStyleOptionViewItem& option) const override
    {
        QStyleOptionViewItem visible(option);
        visible.rect.setRight(qMin(option.rect.right(), m_view->viewport()->rect().right()));
        return visible;
    }

private:
    CTableView* m_view; // owns this
};
