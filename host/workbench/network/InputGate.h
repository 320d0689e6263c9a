#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// While one lives, drops what the user does with mouse and keyboard anywhere in the program,
/// except for what may end the work in progress: the Escape key, and widgets that are admitted.
/// Events are handled in full meanwhile, which an event loop without user input cannot offer to a
/// button.
class InputGate final : public QObject
{
    Q_OBJECT

public:
    /// `cancel` is called for Escape and for the closing of a window, which stays open.
    explicit InputGate(std::function<void()> cancel);
    ~InputGate() override;

    /// Lets the mouse reach `widget` while there is a gate.
    static void admit(QWidget& widget);

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool isShut(QObject* receiver, QEvent* event);

    std::function<void()> m_cancel;
    bool m_pressed = false; // a press was admitted, so its release is
};
