#include "host/widgets/ToolTipFilter.h"

#include "host/widgets/ToolTip.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>

namespace {

constexpr char kLocationProperty[] = "ToolLocation";
constexpr int kDistance = 4; // between a widget and its tool tip

QWidget* shownToolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->inherits("QTipLabel"))
            return window;
    }
    return nullptr;
}

QRect placeBeside(const QRect& widget, const QSize& size, int location)
{
    QRect place(widget.topLeft(), size);
    switch (location) {
    case CToolTip::Above:
        place.moveBottom(widget.top() - 1 - kDistance);
        break;
    case CToolTip::Right:
        place.moveLeft(widget.right() + 1 + kDistance);
        break;
    case CToolTip::Left:
        place.moveRight(widget.left() - 1 - kDistance);
        break;
    default:
        place.moveTop(widget.bottom() + 1 + kDistance);
        break;
    }
    return place;
}

int oppositeOf(int location)
{
    switch (location) {
    case CToolTip::Above:
        return CToolTip::Below;
    case CToolTip::Right:
        return CToolTip::Left;
    case CToolTip::Left:
        return CToolTip::Right;
    default:
        return CToolTip::Above;
    }
}

bool runsPast(const QRect& screen, const QRect& place, int location)
{
    const bool vertical = location == CToolTip::Above || location == CToolTip::Below;
    return vertical ? place.top() < screen.top() || place.bottom() > screen.bottom()
                    : place.left() < screen.left() || place.right() > screen.right();
}

QPoint shiftedOnto(const QRect& screen, const QRect& place)
{
    return {qMax(screen.left(), qMin(place.left(), screen.right() + 1 - place.width())),
            qMax(screen.top(), qMin(place.top(), screen.bottom() + 1 - place.height()))};
}

void showBeside(QWidget& widget, int location)
{
    const QRect area(widget.mapToGlobal(QPoint()), widget.size());
    CToolTip::ShowText(widget.toolTip(), area.center(), &widget, widget.rect());
    QWidget* toolTip = shownToolTip();
    if (!toolTip)
        return;
    const QRect screen = widget.screen()->availableGeometry();
    QRect place = placeBeside(area, toolTip->size(), location);
    if (runsPast(screen, place, location))
        place = placeBeside(area, toolTip->size(), oppositeOf(location));
    toolTip->move(shiftedOnto(screen, place));
}

} // namespace

bool ToolTipFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !watched->isWidgetType())
        return false;
    auto& widget = static_cast<QWidget&>(*watched);
    const int location = widget.property(kLocationProperty).toInt();
    if (location < CToolTip::Above || location > CToolTip::Left || widget.toolTip().isEmpty())
        return false;
    showBeside(widget, location);
    event->accept();
    return true;
}
