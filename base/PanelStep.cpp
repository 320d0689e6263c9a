#include "base/PanelStep.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <utility>
#include <vector>

namespace {

using Widgets = std::vector<QPointer<QWidget>>;

// Without destructors: on Windows, MinGW calls those of thread-local objects at the end of a thread
// when their memory may have gone.
thread_local int t_underWay = 0; // nested
thread_local Widgets* t_kept = nullptr;

} // namespace

CPanelStep::CPanelStep()
{
    ++t_underWay;
}

CPanelStep::~CPanelStep()
{
    if (--t_underWay > 0 || !t_kept)
        return;
    const std::unique_ptr<Widgets> kept(std::exchange(t_kept, nullptr));
    for (const QPointer<QWidget>& widget : *kept) {
        if (widget)
            widget->deleteLater();
    }
}

bool CPanelStep::isUnderWay()
{
    return t_underWay > 0;
}

void CPanelStep::keep(QWidget* widget)
{
    widget->setParent(nullptr);
    if (!isUnderWay()) {
        widget->deleteLater();
        return;
    }
    if (!t_kept)
        t_kept = new Widgets;
    t_kept->emplace_back(widget);
}
