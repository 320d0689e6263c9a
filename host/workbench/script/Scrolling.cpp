#include "host/workbench/script/Scrolling.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPointF>
#include <QScrollBar>
#include <QWheelEvent>

#include <cstdlib>

namespace {

/// How far a wheel is turned, in eighths of a degree: by a notch, and by the least that a smooth
/// wheel tells, which does not pass a row by.
constexpr int kNotch = 120;
constexpr int kLittle = 15;

/// Returns how many pixels the row is out of sight, negative above.
int distanceTo(const QAbstractItemView& view, const QModelIndex& row)
{
    const QRect place = view.visualRect(row);
    const QRect sight = view.viewport()->rect();
    if (place.isEmpty() || sight.contains(place))
        return 0;
    return place.top() < sight.top() ? place.top() - sight.top() : place.bottom() - sight.bottom();
}

void turnWheel(QAbstractItemView& view, int angle)
{
    const QPoint place = view.viewport()->rect().center();
    QWheelEvent event(place, view.viewport()->mapToGlobal(place), QPoint(), QPoint(0, angle),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &event);
}

} // namespace

void scrollByWheel(QAbstractItemView& view, const QModelIndex& row)
{
    const bool isBelow = distanceTo(view, row) > 0;
    for (int distance = distanceTo(view, row); distance != 0 && (distance > 0) == isBelow;) {
        const int angle = std::abs(distance) > view.viewport()->height() ? kNotch : kLittle;
        turnWheel(view, isBelow ? -angle : angle);
        const int left = distanceTo(view, row);
        if (left == distance)
            break;
        distance = left;
    }
    // What the wheel does not reach.
    view.scrollTo(row);
}
