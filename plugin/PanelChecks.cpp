#include "plugin/PanelChecks.h"

#include "Interface/HostRequests.h"
#include "base/ContractCheck.h"
#include "plugin/EventChecks.h"

#include <QDockWidget>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <utility>

using ContractCheck::Finding;

CPanelChecks::CPanelChecks(QWidget& panel)
    : QObject(&panel)
    , m_panel(panel)
    , m_parent(panel.parentWidget())
{
    panel.installEventFilter(this);
}

void CPanelChecks::noteInitialized()
{
    QTimer::singleShot(HostRequests::kFollowUpMs, this, [this, events = EventChecks::count()] {
        if (!m_wasShown) {
            ContractCheck::report(
                Finding::NeverShown,
                QStringLiteral("%1 ms after Initialize() the widget was never visible; "
                               "QDockWidget::setWidget(), or a layout, shows it with its parent")
                    .arg(HostRequests::kFollowUpMs));
        }
        const auto* dock = qobject_cast<const QDockWidget*>(m_panel.parentWidget());
        if (dock && dock->widget() != &m_panel) {
            ContractCheck::report(
                Finding::NeverShown,
                QStringLiteral("the widget lies in a dock that does not lay it out; call "
                               "QDockWidget::setWidget() with it"));
        }
        if (events == EventChecks::count()) {
            ContractCheck::report(
                Finding::NoEvent,
                QStringLiteral("no event came %1 ms after Initialize(); attach the observer that "
                               "SetObserver() delivers to the subject, and tell event 16")
                    .arg(HostRequests::kFollowUpMs));
        }
    });
}

bool CPanelChecks::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        m_wasShown = true;
    } else if (event->type() == QEvent::ParentChange) {
        QWidget* const before = std::exchange(m_parent, m_panel.parentWidget());
        if (m_wasShown && before && m_parent && before != m_parent) {
            ContractCheck::report(Finding::TwoParents,
                                  QStringLiteral("the panel was shown in one parent and is moved "
                                                 "to another; there is one panel in a process"));
        }
    }
    return QObject::eventFilter(watched, event);
}

void CPanelChecks::checkParent(const QWidget& panel, const QWidget* parent)
{
    if (!parent) {
        ContractCheck::report(Finding::NullParent,
                              QStringLiteral("TargetSelectArea_Init got no parent: nobody owns the "
                                             "panel until its widget is given one"));
    } else if (panel.parentWidget() && panel.parentWidget() != parent) {
        ContractCheck::report(
            Finding::TwoParents,
            QStringLiteral("TargetSelectArea_Init moves the panel from one parent "
                           "to another; there is one panel in a process"));
    }
}
