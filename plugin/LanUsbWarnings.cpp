#include "plugin/LanUsbWarnings.h"

#include "plugin/NetUsbTipDlg.h"

#include <QPointer>
#include <QWidget>

#include <utility>

CLanUsbWarnings::CLanUsbWarnings(QWidget* panel)
    : QObject(panel)
    , m_panel(panel)
{
}

void CLanUsbWarnings::show(const std::vector<LanUsbProcessorInfo>& processors)
{
    QMetaObject::invokeMethod(
        this,
        [this, processors] {
            m_waiting.push_back(processors);
            showWaiting();
        },
        Qt::QueuedConnection);
}

/// One that is asked for while another is open waits for its end: two of a kind, one hiding the
/// other, would read as one.
void CLanUsbWarnings::showWaiting()
{
    if (m_showing)
        return;
    const QPointer<CLanUsbWarnings> alive(this);
    m_showing = true;
    while (alive && !m_waiting.empty()) {
        const auto processors = std::move(m_waiting.front());
        m_waiting.pop_front();
        CNetUsbTipDlg(processors, m_panel).exec();
    }
    if (alive)
        m_showing = false;
}
