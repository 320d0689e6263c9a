#include "plugin/DeviceDetection.h"

#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"

#include <QPointer>
#include <QScopeGuard>
#include <QWidget>

namespace {

bool isRestricted()
{
    const auto handler = GetTargetSelectHandler();
    return handler && handler->IsRestrictedMode();
}

void detect(DetectionScope scope)
{
    const HandlerPlace::CPanelWatch panel;
    const bool all = scope == DetectionScope::AllDevices || isRestricted();
    if (panel.isOver())
        return;
    const auto handler = GetTargetSelectHandler();
    if (!handler) {
        qCInfo(lcPanel, "nothing is detected: there is no handler");
        return;
    }
    qCDebug(lcPanel, "the host detects %s", all ? "all devices" : "processors");
    if (all)
        handler->DetectAllDevices();
    else
        handler->DetectProcessorsOnly();
}

} // namespace

void detectDevices(QWidget* button, DetectionScope scope)
{
    Q_ASSERT(button && isThreadOf(*button));
    if (!button->isEnabled()) {
        qCInfo(lcPanel, "a second detection does not start");
        return;
    }
    // The host may destroy the button with its panel whenever it is asked.
    const QPointer<QWidget> alive(button);
    const bool focused = button->hasFocus();
    button->setEnabled(false);
    const QPointer<QWidget> next = button->window()->focusWidget();
    const auto end = qScopeGuard([&] {
        if (!alive)
            return;
        button->setEnabled(true);
        // A disabled widget hands the focus on; whoever works by keyboard gets it back.
        if (focused && button->window()->focusWidget() == next)
            button->setFocus(Qt::OtherFocusReason);
    });
    detect(scope);
}
