#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QTableView>

/// A table in the host's look: alternating rows that may go on through the empty area below the
/// last one, no grid, row numbers at the left when the model names none itself. A text that runs
/// past the edge of the table is elided there, and a text that is elided is shown whole in a tool
/// tip unless the model has another one. With the horizontal scroll bar switched off, nothing ever
/// shifts the columns. Where rows are selected whole, the one under the mouse is lit whole.
/// GUI thread.
class HOSTWIDGETS_EXPORT CTableView : public QTableView
{
    Q_OBJECT

public:
    explicit CTableView(QWidget* parent = nullptr);

    /// Whether the alternating colours go on below the last row and beside the last column. Off by
    /// default.
    void setPaintAlternatingRowColorsForEmptyArea(bool on);
    bool paintAlternatingRowColorsForEmptyArea() const { return m_paintEmptyArea; }

    /// The row under the mouse, -1 for none.
    int hoveredRow() const { return m_hoveredRow; }

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void paintEvent(QPaintEvent* event) override;
    void updateGeometries() override;
    bool viewportEvent(QEvent* event) override;

private:
    void paintStripes();
    void paintStripe(QPainter& painter, int top, int height, bool alternate);
    void setHoveredRow(int row);
    void updateRow(int row);

    bool m_paintEmptyArea = false;
    int m_hoveredRow = -1;
};
