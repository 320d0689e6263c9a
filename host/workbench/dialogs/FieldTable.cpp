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
        if (index.flags().testFlag(Qt::ItemIsEditable) && FieldDelegate::isText(index))
            return index;
    }
    return {};
}
