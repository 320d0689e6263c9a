#pragma once

#include <QStyledItemDelegate>

/// Shows the text of an item whose end is elided whole in a tool tip, unless the item has one.
class WholeTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    /// The option with the part of its rectangle that the text has; all of it.
    virtual QStyleOptionViewItem visiblePart(const QStyleOptionViewItem& option) const;

private:
    bool isElided(const QStyleOptionViewItem& option, const QModelIndex& index) const;
};
