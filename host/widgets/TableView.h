#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QTableView>

/// A table in the host's look: alternating rows that may go on through the empty area below the last
/// one, no grid, row numbers at the left when the model names none itself. A text that runs past
/// the edge of the table is elided there, and, with the horizontal scroll bar switched off, moving
/// the current cell never shifts the columns. GUI thread.
class HOSTWIDGETS_EXPORT CTableView : public QTableView
{
    Q_OBJECT

public:
    explicit CTableView(QWidget* parent = nullptr);

    /// Whether the alternating colours go on below the last row. Off by default.
    void setPaintAlternatingRowColorsForEmptyArea(bool on);
    bool paintAlternatingRowColorsForEmptyArea() const { return m_paintEmptyArea; }

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_paintEmptyArea = false;
};
