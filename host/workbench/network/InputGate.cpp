#include "host/workbench/network/InputGate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace {

constexpr char kAdmitted[] = "admittedByInputGate";

bool isAdmitted(const QWidget* widget)
{
    return widget && widget->property(kAdmitted).toBool();
}

/// Returns the widget that the mouse event is for: `receiver`, or one in a window.
const QWidget* target(const QObject* receiver, const QMouseEvent& event)
{
    if (!qobject_cast<const QWindow*>(receiver))
        return qobject_cast<const QWidget*>(receiver);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (window->windowHandle() == receiver)
            return window->childAt(event.pos());
    }
    return nullptr;
}

} // namespace

InputGate::InputGate(std::function<void()> cancel)
    : m_cancel(std::move(cancel))
{
    QCoreApplication::instance()->installEventFilter(this);
}

InputGate::~InputGate()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

void InputGate::admit(QWidget& widget)
{
    widget.setProperty(kAdmitted, true);
}

bool InputGate::eventFilter(QObject* receiver, QEvent* event)
{
    return isShut(receiver, event) || QObject::eventFilter(receiver, event);
}

/// Returns whether the event is the user's and has to be dropped.
bool InputGate::isShut(QObject* receiver, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Accepted, it arrives as a key instead of as somebody's shortcut.
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            event->accept();
        return true;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            m_cancel();
        return true;
    case QEvent::Close:
        // A program closes its own windows as it likes.
        if (!event->spontaneous())
            return false;
        event->ignore();
        m_cancel();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_pressed = isAdmitted(target(receiver, *static_cast<QMouseEvent*>(event)));
        return !m_pressed;
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return !m_pressed;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}
