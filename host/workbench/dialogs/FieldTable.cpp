#include "host/workbench/dialogs/FieldTable.h"

#include "host/workbench/dialogs/FieldDelegate.h"

FieldTable::FieldTable(QWidget* parent)
    : QTreeWidget(parent)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionBehavior(QAbstractItemView::SelectItems);
}

QModelIndex FieldTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action != MoveNext && action != MovePrevious)
        return QTreeWidget::moveCursor(action, modifiers);
    const int step = action == MoveNext ? 1 : -1;
    const int cells = topLevelItemCount() * columnCount();
    const QModelIndex from = currentIndex();
    for (int at = from.row() * columnCount() + from.column() + step; at >= 0 && at < cells;
         at += step) {
        const QModelIndex index = model()->index(at / columnCount(), at % columnCount());
        if (isField(index))
            return index;
    }
    return {};
}

/// Returns whether the cell can be edited; the first one of a row may only name the field.
bool FieldTable::isField(const QModelIndex& index) const
{
    const bool isName =
        index.column() == 0 && !index.data(FieldDelegate::HasTwoValuesRole).toBool();
    return !isName && index.flags().testFlag(Qt::ItemIsEditable);
}
