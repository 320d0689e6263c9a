#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QBasicTimer>
#include <QClipboard>
#include <QFrame>

#include <memory>

class IPEditor;
class QMenu;

/// Input of an IPv4 address in four octets, each 0 to 255.
///
/// Only ASCII digits can be typed; a dot, or a third digit, moves on to the next octet and selects
/// it; arrows, Home, End, Backspace and Delete cross the dots, and so does a selection. A digit
/// that would make an octet larger than 255 is refused; leading zeros go when the cursor leaves the
/// octet. Pasting or dropping a whole dotted address replaces all four octets; one to three digits
/// go where the cursor is, when they fit; other text is refused. Copying and cutting with nothing
/// selected, or all, take the whole address. There is no undo.
///
/// Is one field to users and to assistive technology: one focus frame, one accessible name, one
/// stop for Tab, which selects the whole address. Draws itself, left to right in every language, in
/// the host's colours; style sheets have no effect on it. GUI thread.
class HOSTWIDGETS_EXPORT CIPLineEdit : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged USER true)

public:
    explicit CIPLineEdit(QWidget* parent = nullptr);
    ~CIPLineEdit() override;

    /// The dotted address without leading zeros; empty while an octet is empty.
    QString text() const;

    /// Shows a dotted address, with the cursor behind it; any other text empties the field.
    void setText(const QString& text);

    /// Empties all octets.
    void clear();

    /// Selects the whole address, as Tab into the field does.
    void selectAll();

    /// What stands in the field: four octets, any of which may be empty, with dots between.
    QString displayText() const;

    /// The selected part of displayText() as places in it: the end that stays, and the cursor.
    int selectionAnchor() const;
    int cursorPosition() const;
    void setSelection(int anchor, int cursor);

    /// Where a place of displayText() is drawn, and the place nearest to a point of the field.
    QRect cursorRect(int place) const;
    int placeAt(const QPoint& position) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    /// The address, or the emptiness of text(), changed: by the user or by setText(). Once a
    /// change.
    void textChanged(const QString& text);

    /// Enter was pressed in the field; the key goes on to the dialog.
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
    bool m_selecting = false; // the mouse button went down in the field
};
