#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QBasicTimer>
#include <QClipboard>
#include <QFrame>

#include <memory>

class IPEditor;
class QMenu;

/// An input field for an IPv4 address with four octets from 0 to 255.
///
/// Only ASCII digits can be typed. A dot, or a third digit, selects the next octet. Arrows, Home,
/// End, Backspace, Delete and selections cross the dots. A digit that would make an octet larger
/// than 255 is refused; leading zeros are removed when the cursor leaves the octet. A pasted or
/// dropped dotted address replaces all octets; one to three digits are inserted at the cursor if
/// they fit; any other text is refused. Copy and cut without a selection use the whole address. Not
/// supported: undo.
///
/// For users and assistive technology it is one field, with one focus frame, one accessible name
/// and one stop for Tab, which selects the whole address. It paints itself in the host's colours,
/// left to right in every language. Not supported: style sheets. GUI thread.
class HOSTWIDGETS_EXPORT CIPLineEdit : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged USER true)

public:
    explicit CIPLineEdit(QWidget* parent = nullptr);
    ~CIPLineEdit() override;

    /// Returns the dotted address without leading zeros; empty while an octet is empty.
    QString text() const;

    /// Shows a dotted address with the cursor at its end. Any other text empties the field.
    void setText(const QString& text);

    /// Empties all octets.
    void clear();

    /// Selects the whole address.
    void selectAll();

    /// Returns the displayed text: four octets, which may be empty, separated by dots.
    QString displayText() const;

    /// Return the ends of the selection as places in displayText(): the fixed end, and the cursor.
    int selectionAnchor() const;
    int cursorPosition() const;
    void setSelection(int anchor, int cursor);

    /// Return the rectangle of a place of displayText(), and the place nearest to a point.
    QRect cursorRect(int place) const;
    int placeAt(const QPoint& position) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    /// Emitted once for each change of text(), by the user or by setText().
    void textChanged(const QString& text);

    /// Emitted when Enter is pressed. The key event is passed on to the dialog.
    void returnPressed();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    template <typename Operation>
    void edit(Operation operation);
    bool handleClipboard(const QKeyEvent& key);
    bool handleMove(const QKeyEvent& key);
    bool handleErase(const QKeyEvent& key);
    bool handleText(const QKeyEvent& key);
    void copy(QClipboard::Mode mode) const;
    void cut();
    void paste(const QString& text);
    bool pasteAt(const QString& text, const QPoint& position);
    void fillMenu(QMenu& menu);
    void showCursor();
    void tellAssistiveTechnology(const QString& before, int cursorBefore);

    std::unique_ptr<IPEditor> m_editor;
    QBasicTimer m_blinking;
    bool m_cursorShown = false;
    bool m_selecting = false; // the mouse button was pressed in the field
};
