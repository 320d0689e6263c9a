#pragma once

#include <QJsonObject>
#include <QPoint>

class QWidget;

/// What a gesture is on: the entry of a menu, or of a list, a table or a tree. Entries are
/// elsewhere with another font, and another one may be in their place when rows come and go. GUI
/// thread.
namespace GestureEntry {

/// Adds to `gesture` what is at `at` in `widget`: its number as "entry" and, for rows, the "text".
/// Adds nothing where there is no entry.
void add(QJsonObject& gesture, const QWidget& widget, const QPoint& at);

/// Returns whether `widget` has the entry that the gesture was on, with its text. True for a
/// gesture that was on none.
bool isThere(const QWidget& widget, const QJsonObject& gesture);

/// Returns `recorded`, or the middle of the gesture's entry if that is somewhere else. Scrolls to a
/// row that is out of sight.
QPoint place(QWidget& widget, const QJsonObject& gesture, const QPoint& recorded);

} // namespace GestureEntry
