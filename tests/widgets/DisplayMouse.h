#pragma once

#include <QPoint>

class QWidget;

/// The mouse of the display: what it does comes through the window system and its window manager.
namespace DisplayMouse {

void moveTo(const QPoint& place);
void press();
void release();
void click();

/// Returns the position of the window on the display, which Qt may not know yet.
QPoint placeOf(const QWidget& window);

} // namespace DisplayMouse
