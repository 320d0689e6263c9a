#include "host/widgets/Separator.h"

#include <QPainter>

CSeparator::CSeparator(QWidget* parent, int direction, int thickness)
    : QWidget(parent)
    , m_direction(direction == Down ? Down : Across)
    , m_thickness(qMax(1, thickness))
{
    if (m_direction == Down)
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    else
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CSeparator::sizeHint() const
{
    return {m_thickness, m_thickness};
}

QSize CSeparator::minimumSizeHint() const
{
    return sizeHint();
}

void CSeparator::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    const QPoint middle((width() - 1) / 2, (height() - 1) / 2);
    const QRect line =
        m_direction == Down ? QRect(middle.x(), 0, 1, height()) : QRect(0, middle.y(), width(), 1);
    // The style sheet sets this colour.
    QPainter(this).fillRect(line, palette().color(QPalette::WindowText));
}
