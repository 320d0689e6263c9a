#include "host/workbench/replay/InputPlayer.h"

#include "sdk/record/GestureEntry.h"
#include "sdk/record/WidgetPath.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QJsonArray>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

#include <map>

// What Qt Test delivers keys with: shortcuts get them first. Qt exports it for that.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k,
                                               Qt::KeyboardModifiers mods, const QString& text,
                                               bool autorep, ushort count);

/// A friend of QEvent, which Qt names for tests: marks an event as one of the window system.
class QSpontaneKeyEvent
{
public:
    static void mark(QEvent& event) { event.setSpontaneous(); }
};

namespace InputPlayer {
namespace {

struct Gesture
{
    QWidget& widget;
    const QJsonObject& arguments;

    int number(const char* name) const { return arguments.value(QLatin1String(name)).toInt(); }
    QString text(const char* name) const { return arguments.value(QLatin1String(name)).toString(); }
    QPoint at() const;
    QPoint globalAt() const { return widget.mapToGlobal(at()); }
    Qt::MouseButtons buttons() const { return Qt::MouseButtons(number("buttons")); }
    Qt::KeyboardModifiers modifiers() const { return Qt::KeyboardModifiers(number("modifiers")); }
};

/// Returns the recorded place, or that of the entry which has moved from there.
QPoint Gesture::at() const
{
    return GestureEntry::place(widget, arguments, {number("x"), number("y")});
}

void send(QWidget& widget, QEvent& event)
{
    QSpontaneKeyEvent::mark(event);
    qApp->notify(&widget, &event);
}

template <QEvent::Type Type>
void sendMouse(const Gesture& gesture)
{
    const QPoint inWindow = gesture.widget.mapTo(gesture.widget.window(), gesture.at());
    QMouseEvent event(Type, gesture.at(), inWindow, gesture.globalAt(),
                      static_cast<Qt::MouseButton>(gesture.number("button")), gesture.buttons(),
                      gesture.modifiers(), Qt::MouseEventNotSynthesized);
    send(gesture.widget, event);
}

/// Shortcuts work in the active window only, and keys go to the focus.
void takeFocus(QWidget& widget)
{
    if (QApplication::activePopupWidget())
        return;
    if (QApplication::activeWindow() != widget.window())
        QApplication::setActiveWindow(widget.window());
    if (widget.window()->focusWidget() != &widget)
        widget.setFocus(Qt::OtherFocusReason);
}

template <QEvent::Type Type>
void sendKey(const Gesture& gesture)
{
    if (Type == QEvent::KeyPress)
        takeFocus(gesture.widget);
    const int key = gesture.number("key");
    const QString text = gesture.text("text");
    const bool isRepeat = gesture.arguments.value(QLatin1String("repeat")).toBool();
    const QPointer<QWidget> widget(&gesture.widget);
    if (Type == QEvent::KeyPress
        && qt_sendShortcutOverrideEvent(widget, 0, key, gesture.modifiers(), text, isRepeat, 1))
        return;
    if (!widget)
        return;
    QKeyEvent event(Type, key, gesture.modifiers(), text, isRepeat);
    send(*widget, event);
}

void sendWheel(const Gesture& gesture)
{
    QWheelEvent event(gesture.at(), gesture.globalAt(), QPoint(),
                      QPoint(gesture.number("dx"), gesture.number("dy")), gesture.buttons(),
                      gesture.modifiers(), Qt::NoScrollPhase, false);
    send(gesture.widget, event);
}

void sendContextMenu(const Gesture& gesture)
{
    QContextMenuEvent event(static_cast<QContextMenuEvent::Reason>(gesture.number("reason")),
                            gesture.at(), gesture.globalAt(), gesture.modifiers());
    send(gesture.widget, event);
}

/// Drops without a drag of the window system, and ends the one that the moves before may have
/// begun.
void sendDrop(const Gesture& gesture)
{
    QMimeData data;
    const QJsonObject formats = gesture.arguments.value(QLatin1String("data")).toObject();
    for (auto format = formats.begin(); format != formats.end(); ++format)
        data.setData(format.key(), QByteArray::fromBase64(format->toString().toLatin1()));
    const auto actions = Qt::DropActions(gesture.number("actions"));
    const QPointer<QWidget> widget(&gesture.widget);
    QDragEnterEvent enter(gesture.at(), actions, &data, Qt::LeftButton, gesture.modifiers());
    QCoreApplication::sendEvent(widget, &enter);
    QDragMoveEvent move(gesture.at(), actions, &data, Qt::LeftButton, gesture.modifiers());
    if (widget)
        QCoreApplication::sendEvent(widget, &move);
    QDropEvent drop(gesture.at(), actions, &data, Qt::LeftButton, gesture.modifiers());
    if (widget)
        QCoreApplication::sendEvent(widget, &drop);
    QDrag::cancel();
}

/// Closes a window as its title bar does.
void sendClose(const Gesture& gesture)
{
    if (QWindow* window = gesture.widget.windowHandle())
        window->close();
}

void sendInputMethod(const Gesture& gesture)
{
    QInputMethodEvent event(gesture.text("preedit"), {});
    event.setCommitString(gesture.text("commit"));
    QCoreApplication::sendEvent(&gesture.widget, &event);
}

void loseFocus(const Gesture& gesture)
{
    gesture.widget.clearFocus();
}

using Send = void (*)(const Gesture&);

const std::map<QString, Send>& sends()
{
    static const std::map<QString, Send> all{
        {QStringLiteral("press"), &sendMouse<QEvent::MouseButtonPress>},
        {QStringLiteral("doubleClick"), &sendMouse<QEvent::MouseButtonDblClick>},
        {QStringLiteral("release"), &sendMouse<QEvent::MouseButtonRelease>},
        {QStringLiteral("move"), &sendMouse<QEvent::MouseMove>},
        {QStringLiteral("key"), &sendKey<QEvent::KeyPress>},
        {QStringLiteral("keyRelease"), &sendKey<QEvent::KeyRelease>},
        {QStringLiteral("wheel"), &sendWheel},
        {QStringLiteral("contextMenu"), &sendContextMenu},
        {QStringLiteral("drop"), &sendDrop},
        {QStringLiteral("inputMethod"), &sendInputMethod},
        {QStringLiteral("close"), &sendClose},
        {QStringLiteral("focusOut"), &loseFocus},
        {QStringLiteral("resize"),
         [](const Gesture& gesture) {
             gesture.widget.resize(gesture.number("width"), gesture.number("height"));
         }},
    };
    return all;
}

} // namespace

QWidget* target(QWidget& panel, const CTraceEntry& gesture)
{
    const QJsonValue path = gesture.arguments.value(QLatin1String("widget"));
    QWidget* widget = WidgetPath::find(panel, path.toArray());
    return widget && widget->isVisible() && widget->isEnabled() ? widget : nullptr;
}

bool isEntryThere(const QWidget& widget, const CTraceEntry& gesture)
{
    const bool isChoice = gesture.name == QLatin1String("press")
                          || gesture.name == QLatin1String("doubleClick")
                          || gesture.name == QLatin1String("contextMenu");
    return !isChoice || GestureEntry::isThere(widget, gesture.arguments);
}

bool isForAnyWidget(const CTraceEntry& gesture)
{
    return gesture.name == QLatin1String("key") || gesture.name == QLatin1String("keyRelease")
           || gesture.name == QLatin1String("focusOut");
}

QWidget& nearest(QWidget& panel, const CTraceEntry& gesture)
{
    QJsonArray path = gesture.arguments.value(QLatin1String("widget")).toArray();
    QWidget* widget = WidgetPath::find(panel, path);
    while (!widget && !path.isEmpty()) {
        path.removeLast();
        widget = WidgetPath::find(panel, path);
    }
    return widget ? *widget : panel;
}

void perform(QWidget& widget, const CTraceEntry& gesture)
{
    const auto found = sends().find(gesture.name);
    if (found != sends().end())
        found->second({widget, gesture.arguments});
}

} // namespace InputPlayer
