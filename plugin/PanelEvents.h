#pragma once

#include "Interface/DeviceSetInfo.h"
#include "base/TargetSelectHandler.h"
#include "plugin/EventOrder.h"

#include <QList>
#include <QObject>
#include <QUuid>

#include <atomic>
#include <functional>
#include <memory>

class CGuiCalls;
class IAbstractControlInterface;

/// The host's events about the panel itself, as jobs of the work thread: each calls a slot of the
/// panel that the event was told to, by name. If that panel has gone, it calls nothing.
///
/// Thread-safe, but for setPanel(). Shared with the jobs.
class CPanelEvents final : public std::enable_shared_from_this<CPanelEvents>
{
public:
    explicit CPanelEvents(std::shared_ptr<CGuiCalls> calls);
    CPanelEvents(const CPanelEvents&) = delete;
    CPanelEvents& operator=(const CPanelEvents&) = delete;

    /// Names the panel whose slots are called; null when it goes. GUI thread.
    void setPanel(QObject* panel) { m_panel = panel; }

    /// Counts the user's own choices, which make the host's older answers void.
    void noteReport() { ++m_reports; }

    /// `told` was made when the host told the event.
    void changeDetectStrategy(HandlerPlace::CPanelWatch told, int strategy);
    void changeDeviceSets(HandlerPlace::CPanelWatch told, GUID current,
                          const QList<SDeviceSetInfo>& sets);
    void changeLanUsbAddresses(HandlerPlace::CPanelWatch told);
    void repaintMonitorWarnings(HandlerPlace::CPanelWatch told);

    /// What was known when the host told that its current processor changed.
    struct Current
    {
        CEventOrder::Place place;
        quint32 reports = 0;
        bool isKnown = false;
        QUuid processor;
        std::weak_ptr<IAbstractControlInterface> source; // the handler that answered
    };

    /// Asks the host for its current processor. On the thread that tells the event.
    Current askForCurrent();
    void showCurrent(const Current& current);

private:
    void post(HandlerPlace::CPanelWatch told, std::function<void(QObject&)> call);
    bool holds(const Current& current) const;

    const std::shared_ptr<CGuiCalls> m_calls;
    QObject* m_panel = nullptr; // the host's; GUI thread
    CEventOrder m_currents;     // of the events about the current processor
    std::atomic<quint32> m_reports{0};
};
