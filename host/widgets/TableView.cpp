#include "host/widgets/TableView.h"

#include "host/widgets/RowNumberHeader.h"
#include "host/widgets/TableDelegate.h"

#include <QHoverEvent>
#include <QPainter>
#include <QScrollBar>

namespace {

constexpr int kRowHeight = 24;
constexpr int kRowMargins = 6; // above and below the text of a larger font

} // namespace

CTableView::CTableView(QWidget* parent)
    : QTableView(parent)
{
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setItemDelegate(new TableDelegate(this));
    setVerticalHeader(new RowNumberHeader(this));

    const int textHeight = fontMetrics().height() + kRowMargins;
    verticalHeader()->setDefaultSectionSize(qMax(kRowHeight, textHeight));
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    viewport()->setAttribute(Qt::WA_Hover);
}

void CTableView::setPaintAlternatingRowColorsForEmptyArea(bool on)
{
    m_paintEmptyArea = on;
    viewport()->update();
}

void CTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    updateRow(current.row());
    updateRow(previous.row());
}

void CTableView::paintEvent(QPaintEvent* event)
{
    if (m_paintEmptyArea && alternatingRowColors())
        paintStripes();
    QTableView::paintEvent(event);
}

void CTableView::updateGeometries()
{
    QTableView::updateGeometries();
    // Without a scroll bar the user could not scroll back.
    if (horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff)
        horizontalScrollBar()->setRange(0, 0);
}

bool CTableView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove)
        setHoveredRow(rowAt(static_cast<QHoverEvent*>(event)->pos().y()));
    else if (event->type() == QEvent::HoverLeave)
        setHoveredRow(-1);
    return QTableView::viewportEvent(event);
}

/// Paints the stripes behind and below the visible rows. Like in QTableView, hidden rows do not
/// count.
void CTableView::paintStripes()
{
    QPainter painter(viewport());
    const QHeaderView& rows = *verticalHeader();
    const int firstVisible = qMax(0, rows.visualIndexAt(0));
    int stripe = 0;
    for (int row = 0; row < rows.count(); ++row) {
        const int section = rows.logicalIndex(row);
        if (rows.isSectionHidden(section))
            continue;
        const int top = rows.sectionViewportPosition(section);
        if (row >= firstVisible && top < viewport()->height())
            paintStripe(painter, top, rows.sectionSize(section), stripe % 2 != 0);
        ++stripe;
    }

    const int height = qMax(1, rows.defaultSectionSize());
    for (int top = rows.length() - rows.offset(); top < viewport()->height(); top += height)
        paintStripe(painter, top, height, stripe++ % 2 != 0);
}

/// Paints what the style paints behind a cell, across the whole width.
void CTableView::paintStripe(QPainter& painter, int top, int height, bool alternate)
{
    QStyleOptionViewItem option = viewOptions();
    option.rect = QRect(0, top, viewport()->width(), height);
    option.features.setFlag(QStyleOptionViewItem::Alternate, alternate);
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, &painter, this);
}

void CTableView::setHoveredRow(int row)
{
    if (row == m_hoveredRow)
        return;
    updateRow(m_hoveredRow);
    m_hoveredRow = row;
    updateRow(row);
}

void CTableView::updateRow(int row)
{
    if (row >= 0)
        viewport()->update(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
}
