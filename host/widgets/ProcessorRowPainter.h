#pragma once

#include <QStyle>

class ElidedTexts;
class QPainter;
class QStyleOptionViewItem;
class SvgIcons;
enum class RowEnd;
struct ProcessorRow;

/// Paints the icons and texts of a row of the processor tree. Does not paint the background.
class ProcessorRowPainter final
{
public:
    ProcessorRowPainter(SvgIcons& icons, ElidedTexts& texts);

    /// Loads all icons, so that painting does not read files.
    void load();

    /// An address or number without room for it loses its label, is squeezed a little, and only
    /// then elided.
    void paint(QPainter& painter, const QStyleOptionViewItem& option, const ProcessorRow& row,
               RowEnd end);

    /// Returns whether one of the texts does not fit.
    static bool isElided(const QStyleOptionViewItem& option, const ProcessorRow& row, RowEnd end);

private:
    void paintDetail(QPainter& painter, const QFontMetrics& metrics, const QRect& rect,
                     const ProcessorRow& row);
    void paintIcon(QPainter& painter, const QRect& rect, const ProcessorRow& row,
                   QStyle::State state);

    SvgIcons& m_icons;
    ElidedTexts& m_texts;
};
