#include "processortree/MoreButtonIcons.h"

#include <QPainter>
#include <QString>
#include <QSvgRenderer>

namespace {

QString path(CMoreButtonIcons::Icon icon)
{
    switch (icon) {
    case CMoreButtonIcons::Hover:
        return QStringLiteral(":/Image/OperateButton/more_hover.svg");
    case CMoreButtonIcons::Pressed:
        return QStringLiteral(":/Image/OperateButton/more_pressed.svg");
    case CMoreButtonIcons::Disabled:
        return QStringLiteral(":/Image/OperateButton/more_disabled.svg");
    case CMoreButtonIcons::Normal:
        break;
    }
    return QStringLiteral(":/Image/OperateButton/more_normal.svg");
}

QPixmap draw(CMoreButtonIcons::Icon icon, qreal scale)
{
    const int size = qRound(CMoreButtonIcons::kSize * scale);
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(path(icon)).render(&painter, QRectF(0, 0, size, size));
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace

const QPixmap& CMoreButtonIcons::at(Icon icon, qreal scale) const
{
    QPixmap& pixmap = m_pixmaps.at(static_cast<std::size_t>(icon));
    if (pixmap.isNull() || !qFuzzyCompare(pixmap.devicePixelRatioF(), scale))
        pixmap = draw(icon, scale);
    return pixmap;
}
