#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// Returns the relative luminance of WCAG 2.
inline double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
           + 0.0722 * linear(color.blueF());
}

/// Returns the contrast ratio of WCAG 2, from 1 to 21.
inline double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, brighter] = std::minmax({luminance(one), luminance(other)});
    return (brighter + 0.05) / (darker + 0.05);
}
