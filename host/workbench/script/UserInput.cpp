#include "host/workbench/script/UserInput.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPointer>
#include <QWidget>
#include <QWindow>

// Exported by Qt Gui for its own test library, which the program does not need for these two.
extern Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local,
                                             const QPointF& global, Qt::MouseButtons state,
                                             Qt::MouseButton button, QEvent::Type type,
                                             Qt::KeyboardModifiers modifiers, int timestamp);
extern Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                           Qt::KeyboardModifiers modifiers, const QString& text,
                                           bool isRepeated, ushort count);

namespace {

/// In the time stamps of the events, so that two clicks are no double click on any platform.
constexpr int kPauseBetweenClicksMs = 10000;

/// Returns what a key writes.
QString textOf(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return {};
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return QStringLiteral("\r");
    case Qt::Key_Tab:
        return QStringLiteral("\t");
    case Qt::Key_Escape:
        return QString(QChar(0x1B));
    case Qt::Key_Backspace:
        return QStringLiteral("\b");
    case Qt::Key_Delete:
        return QString(QChar(0x7F));
    default:
        break;
    }
    if (key < Qt::Key_Space || key > 0xFFFF)
        return {};
    const QChar character(static_cast<ushort>(key));
    return modifiers & Qt::ShiftModifier ? QString(character) : QString(character.toLower());
}

QWindow* keyboardWindow()
{
    if (QWindow* window = QGuiApplication::focusWindow())
        return window;
    const QWidget* active = QApplication::activeModalWidget();
    if (!active)
        active = QApplication::activeWindow();
    return active ? active->windowHandle() : nullptr;
}

} // namespace

UserInput::UserInput(QObject* parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

void UserInput::click(const QWidget& target, const QPoint& place, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers, int count)
{
    const QWidget* top = target.window();
    const QPoint local = target.mapTo(top, place);
    const QPoint global = target.mapToGlobal(place);
    m_time += kPauseBetweenClicksMs;
    const auto send = [&](QEvent::Type type) {
        const bool isPress = type == QEvent::MouseButtonPress;
        later(top->windowHandle(), [=, time = ++m_time](QWindow* window) {
            const bool isMove = type == QEvent::MouseMove;
            qt_handleMouseEvent(window, local, global, isPress ? button : Qt::NoButton,
                                isMove ? Qt::NoButton : button, type, modifiers, time);
        });
    };
    send(QEvent::MouseMove);
    for (int done = 0; done < count; ++done) {
        ++m_sent;
        send(QEvent::MouseButtonPress);
        send(QEvent::MouseButtonRelease);
    }
}

void UserInput::press(const QKeySequence& keys)
{
    for (int at = 0; at < keys.count(); ++at) {
        const auto combined = static_cast<uint>(keys[static_cast<uint>(at)]);
        const auto modifiers =
            static_cast<Qt::KeyboardModifiers>(combined & Qt::KeyboardModifierMask);
        const int code = static_cast<int>(combined & ~static_cast<uint>(Qt::KeyboardModifierMask));
        key(code, modifiers, textOf(code, modifiers));
    }
}

void UserInput::type(const QString& text)
{
    // A character beyond the basic plane is one key.
    for (const uint character : text.toUcs4()) {
        const QString written = QString::fromUcs4(&character, 1);
        if (character == '\n' || character == '\r')
            key(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        else if (character == '\t')
            key(Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
        else
            key(static_cast<int>(QChar::toUpper(character)),
                written != written.toLower() ? Qt::ShiftModifier : Qt::NoModifier, written);
    }
}

bool UserInput::eventFilter(QObject* watched, QEvent* event)
{
    // Each press of a key is offered to the shortcuts of its window first.
    if (watched->isWindowType() && m_received < m_sent
        && (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::MouseButtonPress
            || event->type() == QEvent::MouseButtonDblClick))
        ++m_received;
    return QObject::eventFilter(watched, event);
}

void UserInput::key(int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    ++m_sent;
    QMetaObject::invokeMethod(
        this,
        [=] {
            // The keys before may have moved the keyboard.
            if (QWindow* window = keyboardWindow())
                qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false, 1);
        },
        Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        this,
        [=] {
            if (QWindow* window = keyboardWindow())
                qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false, 1);
        },
        Qt::QueuedConnection);
}

/// Calls `send` from the event loop if the window is still there: some platforms deliver at once.
void UserInput::later(QWindow* window, const std::function<void(QWindow*)>& send)
{
    QMetaObject::invokeMethod(
        this,
        [send, window = QPointer<QWindow>(window)] {
            if (window)
                send(window);
        },
        Qt::QueuedConnection);
}
