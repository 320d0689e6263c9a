#include "plugin/PanelEvents.h"

#include "base/GuiCalls.h"
#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"

#include <QMetaObject>

#include <utility>

CPanelEvents::CPanelEvents(std::shared_ptr<CGuiCalls> calls)
    : m_calls(std::move(calls))
{
}

void CPanelEvents::changeDetectStrategy(HandlerPlace::CPanelWatch told, int strategy)
{
    post(told, [strategy](QObject& panel) {
        QMetaObject::invokeMethod(&panel, "onDetectStrategyChanged", Qt::DirectConnection,
                                  Q_ARG(int, strategy));
    });
}

void CPanelEvents::changeDeviceSets(HandlerPlace::CPanelWatch told, GUID current,
                                    const QList<SDeviceSetInfo>& sets)
{
    post(told, [current, sets](QObject& panel) {
        QMetaObject::invokeMethod(&panel, "onCurrentDeviceSetChanged", Qt::DirectConnection,
                                  Q_ARG(GUID, current), Q_ARG(QList<SDeviceSetInfo>, sets));
    });
}

void CPanelEvents::changeLanUsbAddresses(HandlerPlace::CPanelWatch told)
{
    post(told, [](QObject& panel) {
        QMetaObject::invokeMethod(&panel, "onLANUSBGetProcessorIP", Qt::DirectConnection);
    });
}

void CPanelEvents::repaintMonitorWarnings(HandlerPlace::CPanelWatch told)
{
    post(told, [](QObject& panel) {
        QMetaObject::invokeMethod(&panel, "UpdateMonitorWarningState", Qt::DirectConnection);
    });
}

CPanelEvents::Current CPanelEvents::askForCurrent()
{
    Current current;
    current.place = m_currents.take({}, CEventOrder::Reach::WholeTree);
    current.reports = m_reports;
    current.source = HandlerPlace::current();
    if (const auto handler = GetTargetSelectHandler()) {
        current.processor = handler->GetCurrentProcessorId();
        current.isKnown = true;
    }
    return current;
}

void CPanelEvents::showCurrent(const Current& current)
{
    m_calls->run([self = shared_from_this(), current] {
        if (current.place->isOver() || !HandlerPlace::current())
            return;
        const bool holds = self->holds(current);
        if (!holds)
            qCDebug(lcBridge, "the current processor is asked for again");
        const auto shown = holds ? current.processor : askHost(&Host::GetCurrentProcessorId);
        if (self->m_panel && !current.place->isOver()) {
            QMetaObject::invokeMethod(self->m_panel, "onCurrentProcessorChanged",
                                      Qt::DirectConnection, Q_ARG(QUuid, shown));
        }
    });
}

/// Returns whether the host's answer may still be shown. It may not when the user has picked
/// something since: of that the host told in vain, while it was being reported.
bool CPanelEvents::holds(const Current& current) const
{
    return current.isKnown && current.reports == m_reports
           && !m_currents.isOvertakenAtAll(*current.place)
           && HandlerPlace::isCurrent(current.source);
}

void CPanelEvents::post(HandlerPlace::CPanelWatch told, std::function<void(QObject&)> call)
{
    m_calls->post([self = shared_from_this(), told, call = std::move(call)] {
        Q_ASSERT(isThreadOf(*self->m_calls));
        if (self->m_panel && !told.isOver())
            call(*self->m_panel);
    });
}
