#include "sdk/record/GestureEntry.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QJsonArray>
#include <QMenu>
#include <QString>

namespace GestureEntry {
namespace {

QLatin1String entryKey()
{
    return QLatin1String("entry");
}

QLatin1String textKey()
{
    return QLatin1String("text");
}

/// Returns the view whose rows `widget` shows, null for none.
QAbstractItemView* viewOf(const QWidget& widget)
{
    auto* view = qobject_cast<QAbstractItemView*>(widget.parentWidget());
    return view && view->viewport() == &widget && view->model() ? view : nullptr;
}

/// Returns the numbers of the rows from the top level down to `index`, and its column.
QJsonArray pathOf(const QModelIndex& index)
{
    QJsonArray path{index.column()};
    for (QModelIndex at = index; at.isValid(); at = at.parent())
        path.prepend(at.row());
    return path;
}

QModelIndex find(const QAbstractItemView& view, const QJsonArray& path)
{
    QModelIndex index = view.rootIndex();
    for (int at = 0; at + 1 < path.size(); ++at) {
        const bool isLast = at + 2 == path.size();
        index =
            view.model()->index(path.at(at).toInt(-1), isLast ? path.last().toInt(-1) : 0, index);
        if (!index.isValid())
            return {};
    }
    return index;
}

QRect placeIn(const QMenu& menu, const QJsonValue& entry)
{
    QAction* action = menu.actions().value(entry.toInt(-1));
    return action ? menu.actionGeometry(action) : QRect();
}

} // namespace

void add(QJsonObject& gesture, const QWidget& widget, const QPoint& at)
{
    if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
        if (QAction* action = menu->actionAt(at))
            gesture.insert(entryKey(), menu->actions().indexOf(action));
    } else if (const QAbstractItemView* view = viewOf(widget)) {
        const QModelIndex index = view->indexAt(at);
        if (!index.isValid())
            return;
        gesture.insert(entryKey(), pathOf(index));
        gesture.insert(textKey(), index.data().toString());
    }
}

bool isThere(const QWidget& widget, const QJsonObject& gesture)
{
    const QAbstractItemView* view = viewOf(widget);
    const QJsonValue entry = gesture.value(entryKey());
    if (!view || !entry.isArray())
        return true;
    const QModelIndex index = find(*view, entry.toArray());
    return index.isValid() && index.data().toString() == gesture.value(textKey()).toString();
}

QPoint place(QWidget& widget, const QJsonObject& gesture, const QPoint& recorded)
{
    const QJsonValue entry = gesture.value(entryKey());
    QRect rect;
    if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
        rect = placeIn(*menu, entry);
    } else if (QAbstractItemView* view = viewOf(widget);
               view && entry.isArray() && isThere(widget, gesture)) {
        const QModelIndex index = find(*view, entry.toArray());
        rect = view->visualRect(index);
        if (!rect.isEmpty() && !rect.contains(recorded)) {
            view->scrollTo(index);
            rect = view->visualRect(index);
        }
    }
    if (rect.isEmpty() || rect.contains(recorded))
        return recorded;
    // The parts of a row stand beside each other.
    const bool isBeside = recorded.x() >= rect.left() && recorded.x() <= rect.right();
    return {isBeside ? recorded.x() : rect.center().x(), rect.center().y()};
}

} // namespace GestureEntry
