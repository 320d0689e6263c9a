#pragma once

#include <QJsonArray>

class QWidget;

/// The place of a widget below another one, through its windows too, so that the same place is
/// found in another process: a list of steps from the parent to the child. A step is the object
/// name if no sibling has it, otherwise "#Class:N", the Nth child of that class. Of windows only
/// visible ones count.
namespace WidgetPath {

/// Returns whether `widget` is `root`, or in it, or in one of its dialogs, menus and popups.
bool isWithin(const QWidget& root, const QWidget* widget);

/// Returns the path from `root` to `widget`, which is within it; empty for `root` itself.
QJsonArray of(const QWidget& root, const QWidget& widget);

/// Returns the widget at the path, or null if there is none.
QWidget* find(QWidget& root, const QJsonArray& path);

} // namespace WidgetPath
