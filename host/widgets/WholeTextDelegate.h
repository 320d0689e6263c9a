#pragma once

#include <QStyledItemDelegate>

/// Shows an elided text whole in a tool tip, unless the item has a tool tip.
class WholeTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    /// Returns `option` with the rectangle reduced to the visible part of the text. The base
    /// returns it unchanged.
    virtual QStyleOptionViewItem visiblePart(const QStyleOptionViewItem& option) const;

private:
    bool isElided(const QStyleOptionViewItem& option, const QModelIndex& index) const;
};
