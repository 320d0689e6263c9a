#include "host/widgets/IPFieldLayout.h"

#include "host/widgets/IPEditor.h"

#include <QPainter>
#include <QSize>

#include <cmath>

namespace {

constexpr QLatin1Char kDot('.');
constexpr int kDots = IPOctets::kOctets - 1;
constexpr qreal kFrameMargin = 6;    // between the frame's outside and the outer octets
constexpr qreal kVerticalMargin = 4; // above and below the digits
constexpr qreal kDotSpace = 2;       // beside a dot

qreal dotWidth(const QFontMetricsF& metrics)
{
    return metrics.horizontalAdvance(kDot) + 2 * kDotSpace;
}

} // namespace

IPFieldLayout::IPFieldLayout(const IPEditor& editor, const QRectF& field, const QFont& font)
    : m_editor(editor)
    , m_metrics(font)
    , m_field(field.adjusted(kFrameMargin, 0, -kFrameMargin, 0))
    , m_dotWidth(dotWidth(m_metrics))
    , m_cellWidth((m_field.width() - kDots * m_dotWidth) / IPOctets::kOctets)
{
}

QSize IPFieldLayout::sizeFor(const QFont& font, Room room)
{
    const QFontMetricsF metrics(font);
    const qreal space = room == Room::Ample ? metrics.averageCharWidth() : 0;
    const qreal cell = metrics.horizontalAdvance(QStringLiteral("000")) + space + 2;
    const qreal width = IPOctets::kOctets * cell + kDots * dotWidth(metrics) + 2 * kFrameMargin;
    const qreal height = metrics.height() + 2 * kVerticalMargin;
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

qreal IPFieldLayout::top() const
{
    return m_field.top() + (m_field.height() - m_metrics.height()) / 2;
}

qreal IPFieldLayout::x(int place) const
{
    const int octet = m_editor.octetAt(place);
    const int digits = place - m_editor.octetStart(octet);
    return textStart(octet) + m_metrics.horizontalAdvance(m_editor.octet(octet).left(digits));
}

int IPFieldLayout::placeAt(qreal x) const
{
    const qreal cell = std::floor((x - m_field.left() + m_dotWidth / 2)
                                  / qMax(m_cellWidth + m_dotWidth, qreal(1)));
    const int octet = static_cast<int>(qBound(qreal(0), cell, qreal(kDots)));
    int nearest = m_editor.octetStart(octet);
    for (int place = nearest + 1; place <= m_editor.octetEnd(octet); ++place) {
        if (std::abs(this->x(place) - x) < std::abs(this->x(nearest) - x))
            nearest = place;
    }
    return nearest;
}

QRectF IPFieldLayout::selectionRect() const
{
    const qreal start = x(m_editor.selectionStart());
    const qreal end = x(m_editor.selectionEnd());
    return {start, top(), end - start, lineHeight()};
}

void IPFieldLayout::paintText(QPainter& painter) const
{
    const qreal baseline = top() + m_metrics.ascent();
    for (int octet = 0; octet < IPOctets::kOctets; ++octet) {
        painter.drawText(QPointF(textStart(octet), baseline), m_editor.octet(octet));
        if (octet > 0) {
            const qreal dotStart = cellStart(octet) - m_dotWidth + kDotSpace;
            painter.drawText(QPointF(dotStart, baseline), QString(kDot));
        }
    }
}

qreal IPFieldLayout::cellStart(int octet) const
{
    return m_field.left() + octet * (m_cellWidth + m_dotWidth);
}

qreal IPFieldLayout::textStart(int octet) const
{
    const qreal width = m_metrics.horizontalAdvance(m_editor.octet(octet));
    return cellStart(octet) + (m_cellWidth - width) / 2;
}
