#include "host/widgets/IPLineEdit.h"

#include "host/widgets/HostTheme.h"
#include "host/widgets/IPEditor.h"
#include "host/widgets/IPFieldLayout.h"
#include "host/widgets/IPKeys.h"
#include "host/widgets/IPLineEditAccessible.h"
#include "host/widgets/MenuByKey.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QStyle>

#include <memory>

namespace {

using Selection = IPEditor::Selection;

constexpr qreal kCornerRadius = 4;

QString clipboardText(QClipboard::Mode mode)
{
    return QApplication::clipboard()->text(mode);
}

} // namespace

CIPLineEdit::CIPLineEdit(QWidget* parent)
    : QFrame(parent)
    , m_editor(std::make_unique<IPEditor>())
{
    installIPLineEditAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setLayoutDirection(Qt::LeftToRight);
    setCursor(Qt::IBeamCursor);
    setAcceptDrops(true);
    setAttribute(Qt::WA_InputMethodEnabled);
    setInputMethodHints(Qt::ImhPreferNumbers | Qt::ImhPreferLatin | Qt::ImhNoPredictiveText);
}

CIPLineEdit::~CIPLineEdit() = default;

QString CIPLineEdit::text() const
{
    return m_editor->address();
}

void CIPLineEdit::setText(const QString& text)
{
    edit([&text](IPEditor& editor) { editor.setAddress(text); });
}

void CIPLineEdit::clear()
{
    setText(QString());
}

void CIPLineEdit::selectAll()
{
    edit([](IPEditor& editor) { editor.selectAll(); });
}

QString CIPLineEdit::displayText() const
{
    return m_editor->text();
}

int CIPLineEdit::selectionAnchor() const
{
    return m_editor->anchor();
}

int CIPLineEdit::cursorPosition() const
{
    return m_editor->cursor();
}

void CIPLineEdit::setSelection(int anchor, int cursor)
{
    edit([anchor, cursor](IPEditor& editor) { editor.select(anchor, cursor); });
}

QRect CIPLineEdit::cursorRect(int place) const
{
    const IPFieldLayout layout(*m_editor, rect(), font());
    const int width = style()->pixelMetric(QStyle::PM_TextCursorWidth, nullptr, this);
    return {qRound(layout.x(place)), qRound(layout.top()), width, qRound(layout.lineHeight())};
}

int CIPLineEdit::placeAt(const QPoint& position) const
{
    return IPFieldLayout(*m_editor, rect(), font()).placeAt(position.x());
}

QSize CIPLineEdit::sizeHint() const
{
    ensurePolished();
    return IPFieldLayout::sizeFor(font(), IPFieldLayout::Room::Ample);
}

QSize CIPLineEdit::minimumSizeHint() const
{
    ensurePolished();
    return IPFieldLayout::sizeFor(font(), IPFieldLayout::Room::Tight);
}

QVariant CIPLineEdit::inputMethodQuery(Qt::InputMethodQuery query) const
{
    switch (query) {
    case Qt::ImCursorRectangle:
        return cursorRect(m_editor->cursor());
    case Qt::ImAnchorRectangle:
        return cursorRect(m_editor->anchor());
    case Qt::ImCursorPosition:
        return m_editor->cursor();
    case Qt::ImAnchorPosition:
        return m_editor->anchor();
    case Qt::ImSurroundingText:
        return m_editor->text();
    case Qt::ImCurrentSelection:
        return m_editor->hasSelection() ? m_editor->copiedText() : QString();
    default:
        return QFrame::inputMethodQuery(query);
    }
}

bool CIPLineEdit::event(QEvent* event)
{
    // A shortcut of the window must not take keys that edit the text.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (IPKeys::isClipboardKey(key) || IPKeys::isEditingKey(key) || IPKeys::isText(key)) {
            event->accept();
            return true;
        }
    }
    return QFrame::event(event);
}

void CIPLineEdit::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    update();
}

void CIPLineEdit::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*menu);
    const QPoint atCursor = mapToGlobal(cursorRect(m_editor->cursor()).bottomLeft());
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const MenuByKey first(isByKey ? menu : nullptr);
    menu->popup(isByKey ? atCursor : event->globalPos());
}

void CIPLineEdit::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
}

void CIPLineEdit::dropEvent(QDropEvent* event)
{
    // Always a copy, because the source must not lose a text that is only partly inserted.
    if (event->possibleActions() & Qt::CopyAction)
        event->setDropAction(Qt::CopyAction);
    event->setAccepted(pasteAt(event->mimeData()->text(), event->pos()));
}

void CIPLineEdit::focusInEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
        || reason == Qt::ShortcutFocusReason)
        selectAll();
    showCursor();
    QFrame::focusInEvent(event);
}

void CIPLineEdit::focusOutEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        edit([](IPEditor& editor) { editor.finish(); });
    showCursor();
    QFrame::focusOutEvent(event);
}

void CIPLineEdit::inputMethodEvent(QInputMethodEvent* event)
{
    const QString typed = event->commitString();
    edit([&typed](IPEditor& editor) {
        for (const QChar character : typed)
            editor.type(character);
    });
    event->accept();
}

void CIPLineEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->ignore();
        emit returnPressed();
        return;
    }
    event->setAccepted(handleClipboard(*event) || handleMove(*event) || handleErase(*event)
                       || handleText(*event));
}

void CIPLineEdit::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int octet = m_editor->octetAt(placeAt(event->pos()));
    edit([octet](IPEditor& editor) { editor.selectOctet(octet); });
    m_selecting = false;
    copy(QClipboard::Selection);
}

void CIPLineEdit::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_selecting || !(event->buttons() & Qt::LeftButton))
        return;
    const int place = placeAt(event->pos());
    edit([place](IPEditor& editor) { editor.moveTo(place, Selection::Extend); });
}

void CIPLineEdit::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_selecting = true;
    const int place = placeAt(event->pos());
    const bool extends = event->modifiers() & Qt::ShiftModifier;
    edit([place, extends](IPEditor& editor) {
        editor.moveTo(place, extends ? Selection::Extend : Selection::Drop);
    });
}

void CIPLineEdit::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_selecting = false;
        copy(QClipboard::Selection);
    } else if (event->button() == Qt::MiddleButton
               && QApplication::clipboard()->supportsSelection()) {
        pasteAt(clipboardText(QClipboard::Selection), event->pos());
    }
}

void CIPLineEdit::paintEvent(QPaintEvent*)
{
    const HostColors& colors = hostColors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor& frame = isEnabled() ? colors.frame : colors.line;
    painter.setPen(hasFocus() ? colors.accent : frame);
    painter.setBrush(colors.field);
    constexpr qreal halfLine = 0.5;
    painter.drawRoundedRect(QRectF(rect()).adjusted(halfLine, halfLine, -halfLine, -halfLine),
                            kCornerRadius - halfLine, kCornerRadius - halfLine);

    const IPFieldLayout layout(*m_editor, rect(), font());
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Text));
    layout.paintText(painter);
    if (m_editor->hasSelection()) {
        painter.setClipRect(layout.selectionRect());
        painter.fillRect(rect(), colors.accent);
        painter.setPen(colors.window);
        layout.paintText(painter);
    }
    if (m_cursorShown && !m_editor->hasSelection())
        painter.fillRect(cursorRect(m_editor->cursor()), colors.strongText);
}

void CIPLineEdit::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_blinking.timerId()) {
        QFrame::timerEvent(event);
        return;
    }
    m_cursorShown = !m_cursorShown;
    update(cursorRect(m_editor->cursor()));
}

/// Runs an operation that may change the address and emits textChanged() once if it did.
template <typename Operation>
void CIPLineEdit::edit(Operation operation)
{
    const IPEditor before = *m_editor;
    operation(*m_editor);
    showCursor();
    updateMicroFocus();
    tellAssistiveTechnology(before.text(), before.cursor());
    const QString address = text();
    if (address != before.address())
        emit textChanged(address);
}

bool CIPLineEdit::handleClipboard(const QKeyEvent& key)
{
    if (key.matches(QKeySequence::Copy))
        copy(QClipboard::Clipboard);
    else if (key.matches(QKeySequence::Cut))
        cut();
    else if (key.matches(QKeySequence::Paste))
        paste(clipboardText(QClipboard::Clipboard));
    else if (key.matches(QKeySequence::SelectAll))
        selectAll();
    return IPKeys::isClipboardKey(key);
}

bool CIPLineEdit::handleMove(const QKeyEvent& key)
{
    if (!IPKeys::isEditingKey(key))
        return false;
    const bool far = key.modifiers() & Qt::ControlModifier;
    const bool extends = key.modifiers() & Qt::ShiftModifier;
    void (IPEditor::*operation)(Selection) = nullptr;
    switch (key.key()) {
    case Qt::Key_Left:
        operation = far ? &IPEditor::moveOctetLeft : &IPEditor::moveLeft;
        break;
    case Qt::Key_Right:
        operation = far ? &IPEditor::moveOctetRight : &IPEditor::moveRight;
        break;
    case Qt::Key_Home:
        operation = &IPEditor::moveHome;
        break;
    case Qt::Key_End:
        operation = &IPEditor::moveEnd;
        break;
    default:
        return false;
    }
    edit([operation, extends](IPEditor& editor) {
        (editor.*operation)(extends ? Selection::Extend : Selection::Drop);
    });
    return true;
}

bool CIPLineEdit::handleErase(const QKeyEvent& key)
{
    if (!IPKeys::isEditingKey(key))
        return false;
    const bool backward = key.key() == Qt::Key_Backspace;
    const bool octet = key.modifiers() & Qt::ControlModifier;
    edit([backward, octet](IPEditor& editor) {
        if (octet && !editor.hasSelection()) {
            if (backward)
                editor.moveOctetLeft(Selection::Extend);
            else
                editor.moveOctetRight(Selection::Extend);
            editor.eraseSelection();
        } else if (backward) {
            editor.eraseBackward();
        } else {
            editor.eraseForward();
        }
    });
    return true;
}

/// Accepts any character, as text fields do, but ignores those that an address cannot contain.
bool CIPLineEdit::handleText(const QKeyEvent& key)
{
    if (!IPKeys::isText(key))
        return false;
    const QString typed = key.text();
    edit([&typed](IPEditor& editor) {
        for (const QChar character : typed)
            editor.type(character);
    });
    return true;
}

void CIPLineEdit::copy(QClipboard::Mode mode) const
{
    QClipboard* clipboard = QApplication::clipboard();
    const bool byMouse = mode == QClipboard::Selection;
    if (byMouse && !(clipboard->supportsSelection() && m_editor->hasSelection()))
        return;
    const QString copied = m_editor->copiedText();
    if (!copied.isEmpty())
        clipboard->setText(copied, mode);
}

void CIPLineEdit::cut()
{
    if (m_editor->copiedText().isEmpty())
        return;
    copy(QClipboard::Clipboard);
    edit([](IPEditor& editor) {
        if (editor.hasSelection())
            editor.eraseSelection();
        else
            editor.setAddress(QString());
    });
}

void CIPLineEdit::paste(const QString& text)
{
    edit([&text](IPEditor& editor) { editor.paste(text); });
}

bool CIPLineEdit::pasteAt(const QString& text, const QPoint& position)
{
    IPEditor pasted = *m_editor;
    pasted.moveTo(placeAt(position));
    if (!pasted.paste(text))
        return false;
    edit([&pasted](IPEditor& editor) { editor = pasted; });
    return true;
}

void CIPLineEdit::fillMenu(QMenu& menu)
{
    const bool hasText = !m_editor->copiedText().isEmpty();
    QAction* cutAction = menu.addAction(tr("Cu&t"), this, &CIPLineEdit::cut);
    cutAction->setEnabled(hasText);
    QAction* copyAction =
        menu.addAction(tr("&Copy"), this, [this] { copy(QClipboard::Clipboard); });
    copyAction->setEnabled(hasText);
    QAction* pasteAction =
        menu.addAction(tr("&Paste"), this, [this] { paste(clipboardText(QClipboard::Clipboard)); });
    IPEditor pasted = *m_editor;
    pasteAction->setEnabled(pasted.paste(clipboardText(QClipboard::Clipboard)));
    menu.addSeparator();
    QAction* selectAction = menu.addAction(tr("Select &All"), this, &CIPLineEdit::selectAll);
    selectAction->setEnabled(!m_editor->isEmpty());
}

/// Restarts the blinking of the cursor in the visible state; stops it without the focus.
void CIPLineEdit::showCursor()
{
    m_cursorShown = hasFocus();
    const int flashTime = QApplication::cursorFlashTime();
    if (m_cursorShown && flashTime > 1)
        m_blinking.start(flashTime / 2, this);
    else
        m_blinking.stop();
    update();
}

void CIPLineEdit::tellAssistiveTechnology(const QString& before, int cursorBefore)
{
    if (!QAccessible::isActive())
        return;
    if (before != m_editor->text()) {
        QAccessibleTextUpdateEvent event(this, 0, before, m_editor->text());
        event.setCursorPosition(m_editor->cursor());
        QAccessible::updateAccessibility(&event);
    } else if (cursorBefore != m_editor->cursor()) {
        QAccessibleTextCursorEvent event(this, m_editor->cursor());
        QAccessible::updateAccessibility(&event);
    }
}
