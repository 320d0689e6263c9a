#pragma once

#include "host/widgets/IPOctets.h"

#include <QFont>
#include <QFontMetricsF>
#include <QRectF>

class IPEditor;
class QPainter;
class QSize;

/// The positions of digits and dots in an address field: four cells of equal width with centred
/// octets, separated by dots.
class IPFieldLayout final
{
public:
    enum class Room { Tight, Ample };

    /// `editor` must outlive the layout.
    IPFieldLayout(const IPEditor& editor, const QRectF& field, const QFont& font);

    /// Returns the size of a field for this font.
    static QSize sizeFor(const QFont& font, Room room);

    qreal top() const;
    qreal lineHeight() const { return m_metrics.height(); }

    /// Return the x of the cursor at a place of the text, and the place nearest to an x.
    qreal x(int place) const;
    int placeAt(qreal x) const;

    QRectF selectionRect() const;
    void paintText(QPainter& painter) const;

private:
    qreal cellStart(int octet) const;
    qreal textStart(int octet) const;

    const IPEditor& m_editor;
    QFontMetricsF m_metrics;
    QRectF m_field;
    qreal m_dotWidth;
    qreal m_cellWidth;
};
