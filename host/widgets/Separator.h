#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QWidget>

/// A thin line between parts of a form: one pixel, in the middle of a strip that keeps the parts
/// apart. GUI thread.
class HOSTWIDGETS_EXPORT CSeparator : public QWidget
{
    Q_OBJECT

public:
    enum Direction { Across = 0, Down = 1 };

    /// A line of the direction `direction`, as long as the layout lets it, in a strip that is
    /// `thickness` pixels thick. Any other direction than Down is Across.
    explicit CSeparator(QWidget* parent = nullptr, int direction = Across, int thickness = 4);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_direction;
    int m_thickness;
};
