#include "base/PanelStep.h"

#include <QPointer>
#include <QWidget>

#include <utility>
#include <vector>

namespace {

struct Steps
{
    int underWay = 0; // nested
    std::vector<QPointer<QWidget>> kept;
};

Steps& steps()
{
    static thread_local Steps instance;
    return instance;
}

} // namespace

CPanelStep::CPanelStep()
{
    ++steps().underWay;
}

CPanelStep::~CPanelStep()
{
    if (--steps().underWay > 0)
        return;
    for (const QPointer<QWidget>& widget : std::exchange(steps().kept, {})) {
        if (widget)
            widget->deleteLater();
    }
}

bool CPanelStep::isUnderWay()
{
    return steps().underWay > 0;
}

void CPanelStep::keep(QWidget* widget)
{
    widget->setParent(nullptr);
    if (isUnderWay())
        steps().kept.emplace_back(widget);
    else
        widget->deleteLater();
}
