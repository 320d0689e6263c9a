#include "host/widgets/ProcessorRowPainter.h"

#include "host/widgets/ElidedTexts.h"
#include "host/widgets/ProcessorRow.h"
#include "host/widgets/SvgIcons.h"

#include <QPainter>
#include <QStyleOptionViewItem>

namespace {

using namespace ProcessorRowMetrics;

constexpr qreal kDisabledOpacity = 0.4;
constexpr qreal kLeastSqueeze = 0.8; // of an address without room for it

struct Icons
{
    QString openArrow = QStringLiteral(":/HostWidgets/icons/chevron-down.svg");
    QString closedArrow = QStringLiteral(":/HostWidgets/icons/chevron-right.svg");
    QString online = QStringLiteral(":/HostWidgets/icons/processor-online.svg");
    QString offline = QStringLiteral(":/HostWidgets/icons/processor-offline.svg");
    QString backupOnline = QStringLiteral(":/HostWidgets/icons/processor-backup-online.svg");
    QString backupOffline = QStringLiteral(":/HostWidgets/icons/processor-backup-offline.svg");
    QString protectedOnline = QStringLiteral(":/HostWidgets/icons/processor-protected-online.svg");
    QString protectedOffline =
        QStringLiteral(":/HostWidgets/icons/processor-protected-offline.svg");
    QString warning = QStringLiteral(":/HostWidgets/icons/warning.svg");
};

const Icons& icons()
{
    static const Icons icons;
    return icons;
}

const QString& processorIcon(const ProcessorRow& row)
{
    if (row.backup)
        return row.online ? icons().backupOnline : icons().backupOffline;
    if (row.hasBackup)
        return row.online ? icons().protectedOnline : icons().protectedOffline;
    return row.online ? icons().online : icons().offline;
}

/// Returns the colour of the name, which is stronger than that of the other texts.
QColor nameColor(const QStyleOptionViewItem& option)
{
    if (!(option.state & QStyle::State_Enabled))
        return option.palette.color(QPalette::Disabled, QPalette::Text);
    const bool selected = option.state & QStyle::State_Selected;
    return option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
}

QColor detailColor(const QStyleOptionViewItem& option)
{
    if (!(option.state & QStyle::State_Enabled))
        return option.palette.color(QPalette::Disabled, QPalette::Text);
    const bool selected = option.state & QStyle::State_Selected;
    return option.palette.color(selected ? QPalette::Text : QPalette::PlaceholderText);
}

/// Returns the width that the count leaves for the name.
int nameWidth(const QFontMetrics& metrics, const ProcessorRow& row, int room)
{
    return row.count.isEmpty() ? room : room - kGap - metrics.horizontalAdvance(row.count);
}

void paintText(QPainter& painter, const QRect& rect, const QString& text)
{
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

} // namespace

ProcessorRowPainter::ProcessorRowPainter(SvgIcons& icons, ElidedTexts& texts)
    : m_icons(icons)
    , m_texts(texts)
{
}

void ProcessorRowPainter::load()
{
    const Icons& all = icons();
    for (const QString& path :
         {all.openArrow, all.closedArrow, all.online, all.offline, all.backupOnline,
          all.backupOffline, all.protectedOnline, all.protectedOffline, all.warning})
        m_icons.load(path);
}

void ProcessorRowPainter::paint(QPainter& painter, const QStyleOptionViewItem& option,
                                const ProcessorRow& row, RowEnd end)
{
    const ProcessorRowLayout layout(row, option, end);
    painter.save();
    // Clipping is expensive, and only needed if the row is too small: texts are elided to their
    // rectangles.
    if (!option.rect.contains(layout.icon | layout.name | layout.detail | layout.warning))
        painter.setClipRect(option.rect, Qt::IntersectClip);
    painter.setFont(option.font);
    const QFontMetrics& metrics = option.fontMetrics;

    const qreal opacity = painter.opacity(); // of a view that paints some rows pale
    if (!(option.state & QStyle::State_Enabled))
        painter.setOpacity(opacity * kDisabledOpacity);
    paintIcon(painter, layout.icon, row, option.state);
    if (row.warning)
        m_icons.paint(painter, layout.warning.topLeft(), icons().warning, kWarningSize);
    painter.setOpacity(opacity);

    const QString name =
        m_texts.elided(metrics, row.name, nameWidth(metrics, row, layout.name.width()));
    painter.setPen(nameColor(option));
    paintText(painter, layout.name, name);
    painter.setPen(detailColor(option));
    if (!row.count.isEmpty()) {
        QRect count = layout.name;
        count.setLeft(count.left() + metrics.horizontalAdvance(name) + kGap);
        paintText(painter, count, m_texts.elided(metrics, row.count, count.width()));
    }
    paintDetail(painter, metrics, layout.detail, row);
    painter.restore();
}

bool ProcessorRowPainter::isElided(const QStyleOptionViewItem& option, const ProcessorRow& row,
                                   RowEnd end)
{
    const ProcessorRowLayout layout(row, option, end);
    const QFontMetrics& metrics = option.fontMetrics;
    return metrics.horizontalAdvance(row.name) > nameWidth(metrics, row, layout.name.width())
           || metrics.horizontalAdvance(row.detail) > qMax(0, layout.detail.width());
}

void ProcessorRowPainter::paintDetail(QPainter& painter, const QFontMetrics& metrics,
                                      const QRect& rect, const ProcessorRow& row)
{
    const QString whole = m_texts.elided(metrics, row.detail, rect.width());
    if (whole == row.detail) {
        paintText(painter, rect, whole);
        return;
    }
    const int width = metrics.horizontalAdvance(row.value);
    if (width <= rect.width() || rect.width() < kLeastSqueeze * width) {
        paintText(painter, rect, m_texts.elided(metrics, row.value, rect.width()));
        return;
    }
    painter.save();
    painter.translate(rect.topLeft());
    painter.scale(static_cast<qreal>(rect.width()) / width, 1);
    paintText(painter, QRect(0, 0, width, rect.height()), row.value);
    painter.restore();
}

void ProcessorRowPainter::paintIcon(QPainter& painter, const QRect& rect, const ProcessorRow& row,
                                    QStyle::State state)
{
    if (row.type == NodeProcessor)
        m_icons.paint(painter, rect.topLeft(), processorIcon(row), kIconSize);
    else if (state & QStyle::State_Children)
        m_icons.paint(painter, rect.topLeft(),
                      state & QStyle::State_Open ? icons().openArrow : icons().closedArrow,
                      kArrowSize);
}
