#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QTableView>

/// A table in the host's look, without a grid. Alternating row colours may continue in the empty
/// area below the last row. The vertical header shows row numbers unless the model provides texts.
/// A text that extends beyond the table is elided, and elided texts are shown whole in a tool tip
/// unless the model provides one. If the horizontal scroll bar is off, the columns never scroll. If
/// whole rows are selected, the whole row under the mouse is highlighted. GUI thread.
class HOSTWIDGETS_EXPORT CTableView : public QTableView
{
    Q_OBJECT

public:
    explicit CTableView(QWidget* parent = nullptr);

    /// Sets whether alternating row colours continue below the last row and beside the last column.
    /// Off by default.
    void setPaintAlternatingRowColorsForEmptyArea(bool on);
    bool paintAlternatingRowColorsForEmptyArea() const { return m_paintEmptyArea; }

    /// Returns the row under the mouse, or -1.
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
