#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

/// Helpers to examine pictures of the popup.

constexpr QColor kPopupBackground(41, 41, 45);

inline int distance(const QColor& one, const QColor& two)
{
    return qAbs(one.red() - two.red()) + qAbs(one.green() - two.green())
           + qAbs(one.blue() - two.blue());
}

/// Returns the bounds of the pixels in `within` that differ from the background.
inline QRect covered(const QImage& image, const QRect& within)
{
    QRect found;
    for (int y = within.top(); y <= within.bottom(); ++y) {
        for (int x = within.left(); x <= within.right(); ++x) {
            if (distance(image.pixelColor(x, y), kPopupBackground) > 12)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}
