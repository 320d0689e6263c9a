#include "host/widgets/ReadingOrder.h"

#include <QLayout>
#include <QWidget>

void putInReadingOrder(const QLayout& layout)
{
    for (int n = 0; n < layout.count(); ++n) {
        QLayoutItem* const item = layout.itemAt(n);
        QWidget* const widget = item->widget();
        if (widget)
            widget->raise();
        const QLayout* const inner = widget ? widget->layout() : item->layout();
        if (inner)
            putInReadingOrder(*inner);
    }
}
