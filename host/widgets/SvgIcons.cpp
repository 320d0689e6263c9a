#include "host/widgets/SvgIcons.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QtMath>

namespace {

int& parses()
{
    static int count = 0;
    return count;
}

/// Returns the nearest point to `position` on the grid of device pixels.
QPointF onPixel(const QPainter& painter, const QPointF& position)
{
    const QTransform& toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale)
        return position;
    const QPointF pixel = toDevice.map(position);
    return toDevice.inverted().map(QPointF(qRound(pixel.x()), qRound(pixel.y())));
}

} // namespace

std::shared_ptr<SvgIcons> SvgIcons::shared()
{
    static std::weak_ptr<SvgIcons> current;
    std::shared_ptr<SvgIcons> icons = current.lock();
    if (!icons) {
        icons = std::make_shared<SvgIcons>();
        current = icons;
    }
    return icons;
}

int SvgIcons::parseCount()
{
    return parses();
}

SvgIcons::SvgIcons() = default;

SvgIcons::~SvgIcons() = default;

void SvgIcons::load(const QString& path)
{
    if (m_files.contains(path))
        return;
    ++parses();
    m_files.insert(path, {std::make_shared<QSvgRenderer>(path), {}});
}

QPixmap SvgIcons::pixmap(const QString& path, int size, qreal scale)
{
    const auto file = m_files.find(path);
    if (file == m_files.end() || !file->renderer->isValid())
        return {};
    QPixmap& pixmap = file->pixmaps[{size, scale}];
    if (pixmap.isNull()) {
        const int pixels = qCeil(size * scale);
        pixmap = QPixmap(pixels, pixels);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        file->renderer->render(&painter);
        painter.end();
        pixmap.setDevicePixelRatio(scale);
    }
    return pixmap;
}

void SvgIcons::paint(QPainter& painter, const QPointF& position, const QString& path, int size)
{
    const qreal scale = painter.device()->devicePixelRatioF();
    painter.drawPixmap(onPixel(painter, position), pixmap(path, size, scale));
}
