#pragma once

#include <QImage>

/// How a picture differs from the one that it is compared with.
struct PictureDifference
{
    int changed = 0; ///< Pixels that have another colour.
    int foreign = 0; ///< Of those, the ones whose colour is not between the colours around them.
    QImage marked;   ///< The pictures over each other, dimmed; what is changed is red.

    /// Returns whether the pictures look the same. What is antialiased otherwise has other colours
    /// at edges, between those of the two sides; a surface, a line or a text that has changed or
    /// moved has colours that are foreign to their place, or many changed ones.
    bool isNegligible() const;
};

/// Compares two pictures. Pictures of different sizes differ in every pixel.
PictureDifference comparePictures(const QImage& seen, const QImage& reference);
