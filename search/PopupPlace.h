#pragma once

#include <QRect>

/// Returns the geometry of a popup that is as wide as `field` and `height` pixels high. The popup
/// is below the field, or above it if it fits only there, and is moved into `screen` if it would
/// extend beyond it. All coordinates are global.
QRect popupPlace(const QRect& field, int height, const QRect& screen);
