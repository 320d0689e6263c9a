#include "search/PopupPlace.h"

QRect popupPlace(const QRect& field, int height, const QRect& screen)
{
    QRect place(field.bottomLeft(), QSize(field.width(), height));
    if (place.bottom() > screen.bottom() && field.top() - height >= screen.top())
        place.moveBottom(field.top());
    place.moveBottom(qMin(place.bottom(), screen.bottom()));
    place.moveTop(qMax(place.top(), screen.top()));
    place.moveRight(qMin(place.right(), screen.right()));
    place.moveLeft(qMax(place.left(), screen.left()));
    return place;
}
