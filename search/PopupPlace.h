#pragma once

#include <QRect>

/// Where a popup of height `height` belongs that is as wide as `field`: its top left corner on the
/// field's bottom left one; above the field where it fits there and not below, and pushed
/// back into `screen` where it would stand out. All global.
QRect popupPlace(const QRect& field, int height, const QRect& screen);
