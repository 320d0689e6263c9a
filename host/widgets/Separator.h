#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QWidget>

/// A line of one pixel between parts of a form, in the middle of a strip that separates them. GUI
/// thread.
class HOSTWIDGETS_EXPORT CSeparator : public QWidget
{
    Q_OBJECT

public:
    enum Direction { Across = 0, Down = 1 };

    /// `direction` is Down or Across; other values count as Across. `thickness` is that of the
    /// strip, in pixels.
    explicit CSeparator(QWidget* parent = nullptr, int direction = Across, int thickness = 4);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_direction;
    int m_thickness;
};
