#pragma once

#include <QPixmap>

#include <array>

/// The pictures of the "More" button, each drawn from its SVG file once for a scale. GUI thread.
class CMoreButtonIcons final
{
public:
    enum Icon { Normal, Hover, Pressed, Disabled };

    /// Width and height, in device-independent pixels.
    static constexpr int kSize = 20;

    /// The picture of `icon` for a device with `scale` pixels a device-independent one; valid until
    /// the next call.
    const QPixmap& at(Icon icon, qreal scale) const;

private:
    mutable std::array<QPixmap, 4> m_pixmaps;
};
