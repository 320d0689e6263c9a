#include "sdk/record/InputRecorder.h"

#include "sdk/record/GestureEntry.h"
#include "sdk/record/TraceWriter.h"
#include "sdk/record/WidgetPath.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWheelEvent>

#include <utility>

namespace {

QString nameOfMouse(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
        return QStringLiteral("press");
    case QEvent::MouseButtonDblClick:
        return QStringLiteral("doubleClick");
    case QEvent::MouseButtonRelease:
        return QStringLiteral("release");
    default:
        return QStringLiteral("move");
    }
}

QJsonObject position(const QPoint& at)
{
    return {{QStringLiteral("x"), at.x()}, {QStringLiteral("y"), at.y()}};
}

void add(QJsonObject& object, const char* name, const QJsonValue& value)
{
    object.insert(QLatin1String(name), value);
}

} // namespace

CInputRecorder::CInputRecorder(std::shared_ptr<CTraceWriter> writer, QObject* parent)
    : QObject(parent)
    , m_writer(std::move(writer))
{
    qApp->installEventFilter(this);
    // What comes after the GUI thread has slept has another cause than the last gesture.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { m_writer->endInput(); });
}

void CInputRecorder::watch(QWidget* panel)
{
    m_panel = panel;
    m_pendingMove = {};
}

bool CInputRecorder::eventFilter(QObject* watched, QEvent* event)
{
    if (m_panel && watched->isWidgetType())
        look(*static_cast<QWidget*>(watched), *event);
    return QObject::eventFilter(watched, event);
}

void CInputRecorder::look(QWidget& widget, QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        lookAtMouse(widget, event);
        break;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        lookAtKey(widget, event);
        break;
    case QEvent::Drop:
        lookAtDrop(widget, static_cast<QDropEvent&>(event));
        break;
    case QEvent::FocusOut:
        lookAtFocus(widget, static_cast<QFocusEvent&>(event));
        break;
    default:
        lookAtOthers(widget, event);
    }
}

void CInputRecorder::lookAtMouse(QWidget& widget, QEvent& event)
{
    const auto& mouse = static_cast<QMouseEvent&>(event);
    if (!WidgetPath::isWithin(*m_panel, &widget)
        || isRepeated(widget, mouse, mouse.globalPos(), static_cast<int>(mouse.button())))
        return;
    QJsonObject arguments = position(mouse.pos());
    GestureEntry::add(arguments, widget, mouse.pos());
    add(arguments, "button", static_cast<int>(mouse.button()));
    add(arguments, "buttons", static_cast<int>(mouse.buttons()));
    add(arguments, "modifiers", static_cast<int>(mouse.modifiers()));
    if (event.type() == QEvent::MouseMove && mouse.buttons() == Qt::NoButton) {
        add(arguments, "widget", WidgetPath::of(*m_panel, widget));
        m_pendingMove = arguments;
        return;
    }
    note(widget, nameOfMouse(event.type()), arguments);
}

void CInputRecorder::lookAtKey(QWidget& widget, QEvent& event)
{
    const auto& key = static_cast<QKeyEvent&>(event);
    if (!WidgetPath::isWithin(*m_panel, &widget) || isRepeated(widget, key, {}, key.key()))
        return;
    const bool isRelease = event.type() == QEvent::KeyRelease;
    // A key comes twice: as an offer to shortcuts, which may take it, and as a key.
    const bool isTold = event.type() == QEvent::KeyPress && m_override.key == key.key()
                        && m_override.timestamp == key.timestamp()
                        && m_override.type == QEvent::ShortcutOverride;
    if (event.type() == QEvent::ShortcutOverride)
        m_override = m_last;
    else
        m_override = {};
    if (isTold)
        return;
    note(widget, isRelease ? QStringLiteral("keyRelease") : QStringLiteral("key"),
         {{QStringLiteral("key"), key.key()},
          {QStringLiteral("modifiers"), static_cast<int>(key.modifiers())},
          {QStringLiteral("text"), key.text()},
          {QStringLiteral("repeat"), key.isAutoRepeat()}});
}

void CInputRecorder::lookAtDrop(QWidget& widget, const QDropEvent& event)
{
    if (!WidgetPath::isWithin(*m_panel, &widget))
        return;
    QJsonObject data;
    const QStringList formats = event.mimeData()->formats();
    for (const QString& format : formats)
        data.insert(format, QString::fromLatin1(event.mimeData()->data(format).toBase64()));
    QJsonObject arguments = position(event.pos());
    add(arguments, "data", data);
    add(arguments, "actions", static_cast<int>(event.possibleActions()));
    add(arguments, "modifiers", static_cast<int>(event.keyboardModifiers()));
    note(widget, QStringLiteral("drop"), arguments);
}

void CInputRecorder::lookAtOthers(QWidget& widget, QEvent& event)
{
    if (event.type() == QEvent::Resize && &widget == m_panel) {
        note(widget, QStringLiteral("resize"),
             {{QStringLiteral("width"), widget.width()},
              {QStringLiteral("height"), widget.height()}});
    } else if (event.type() == QEvent::Wheel && WidgetPath::isWithin(*m_panel, &widget)) {
        const auto& wheel = static_cast<QWheelEvent&>(event);
        if (isRepeated(widget, wheel, wheel.globalPosition().toPoint(), 0))
            return;
        QJsonObject arguments = position(wheel.position().toPoint());
        add(arguments, "dx", wheel.angleDelta().x());
        add(arguments, "dy", wheel.angleDelta().y());
        add(arguments, "buttons", static_cast<int>(wheel.buttons()));
        add(arguments, "modifiers", static_cast<int>(wheel.modifiers()));
        note(widget, QStringLiteral("wheel"), arguments);
    } else if (event.type() == QEvent::ContextMenu && WidgetPath::isWithin(*m_panel, &widget)) {
        const auto& menu = static_cast<QContextMenuEvent&>(event);
        if (isRepeated(widget, menu, menu.globalPos(), 0))
            return;
        QJsonObject arguments = position(menu.pos());
        if (menu.reason() == QContextMenuEvent::Mouse)
            GestureEntry::add(arguments, widget, menu.pos());
        add(arguments, "reason", static_cast<int>(menu.reason()));
        add(arguments, "modifiers", static_cast<int>(menu.modifiers()));
        note(widget, QStringLiteral("contextMenu"), arguments);
    } else if (event.type() == QEvent::InputMethod && WidgetPath::isWithin(*m_panel, &widget)) {
        const auto& input = static_cast<QInputMethodEvent&>(event);
        note(widget, QStringLiteral("inputMethod"),
             {{QStringLiteral("commit"), input.commitString()},
              {QStringLiteral("preedit"), input.preeditString()}});
    } else if (event.type() == QEvent::Close && event.spontaneous() && &widget != m_panel
               && WidgetPath::isWithin(*m_panel, &widget)) {
        // By the title bar: what the panel closes itself is what other gestures came to.
        note(widget, QStringLiteral("close"), {});
    }
}

/// Returns whether this is the gesture of before, which a widget left to its parent, or a view to
/// its scroll bar.
bool CInputRecorder::isRepeated(QWidget& widget, const QInputEvent& event, const QPoint& at,
                                int key)
{
    const bool isSame = m_last.type == event.type() && m_last.timestamp == event.timestamp()
                        && m_last.at == at && m_last.key == key;
    if (isSame && m_last.widget && m_last.widget != &widget
        && (event.type() == QEvent::Wheel || WidgetPath::isWithin(widget, m_last.widget)))
        return true;
    m_last = {event.type(), event.timestamp(), at, key, &widget};
    return false;
}

/// The focus also goes when the user turns to the host or to another program, which ends an editor.
/// What the panel does with its own focus follows from other gestures.
void CInputRecorder::lookAtFocus(QWidget& widget, const QFocusEvent& event)
{
    const QWidget* now = QApplication::focusWidget();
    const bool isElsewhere =
        now ? !WidgetPath::isWithin(*m_panel, now) : event.reason() == Qt::ActiveWindowFocusReason;
    const bool isUsable = widget.isVisible() && widget.isEnabled() && !widget.window()->isHidden();
    if (isElsewhere && isUsable && WidgetPath::isWithin(*m_panel, &widget))
        note(widget, QStringLiteral("focusOut"), {});
}

void CInputRecorder::note(const QWidget& widget, const QString& name, QJsonObject arguments)
{
    notePendingMove();
    add(arguments, "widget", WidgetPath::of(*m_panel, widget));
    m_writer->addInput(name, arguments);
}

void CInputRecorder::notePendingMove()
{
    if (!m_pendingMove.isEmpty())
        m_writer->addInput(QStringLiteral("move"), std::exchange(m_pendingMove, {}));
}
