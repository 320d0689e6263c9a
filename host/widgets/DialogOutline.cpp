#include "host/widgets/DialogOutline.h"

#include "host/widgets/HostTheme.h"

#include <QPainter>

DialogOutline::DialogOutline(QWidget* dialog)
    : QWidget(dialog)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DialogOutline::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), hostColors().line);
}

void DialogOutline::resizeEvent(QResizeEvent*)
{
    setMask(QRegion(rect()).subtracted(rect().adjusted(1, 1, -1, -1)));
}
