#pragma once

#include <QObject>
#include <QPoint>
#include <QString>
#include <Qt>

#include <functional>

class QKeySequence;
class QWidget;
class QWindow;

/// Mouse and keyboard of a script. The events enter Qt where those of the display do, so that popup
/// windows, shortcuts, double clicks and modal dialogs take their part. They are queued: nothing
/// happens before the event loop runs, and what a click opens does not keep its caller. GUI thread.
class UserInput final : public QObject
{
    Q_OBJECT

public:
    explicit UserInput(QObject* parent = nullptr);

    /// Presses and releases a button at `place` of `target`, `count` times in quick succession.
    void click(const QWidget& target, const QPoint& place, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier, int count = 1);

    /// Presses and releases the keys of a sequence in the window with the keyboard.
    void press(const QKeySequence& keys);

    /// Types a text, key by key.
    void type(const QString& text);

    /// Returns whether the windows have received everything so far.
    bool isDelivered() const { return m_received >= m_sent; }

    /// Ceases to wait for what no window has received.
    void forget() { m_received = m_sent; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void later(QWindow* window, const std::function<void(QWindow*)>& send);
    void key(int key, Qt::KeyboardModifiers modifiers, const QString& text);

    int m_sent = 0;     ///< Presses of buttons and keys.
    int m_received = 0; ///< The same.
    int m_time = 1;     ///< Of the events, in milliseconds.
};
