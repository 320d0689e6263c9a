#pragma once

#include <QStyle>

class QFontMetrics;
class QPainter;
class QStyleOptionViewItem;
class SvgIcons;
struct ProcessorRow;

/// Paints the content of a row of the processor tree: icons and texts, no background.
class ProcessorRowPainter final
{
public:
    explicit ProcessorRowPainter(SvgIcons& icons);

    /// Reads the files of all icons, so that painting need not.
    void load();

    void paint(QPainter& painter, const QStyleOptionViewItem& option, const ProcessorRow& row);

    /// Whether the room is too narrow for one of the texts.
    static bool isElided(const QStyleOptionViewItem& option, const ProcessorRow& row);

private:
    void paintIcon(QPainter& painter, const QRect& rect, const ProcessorRow& row,
                   QStyle::State state);

    SvgIcons& m_icons;
};
