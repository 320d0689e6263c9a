#pragma once

#include <QAbstractButton>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>

class QWidget;

/// Answers dialogs and menus while their exec() keeps the test waiting. Each step waits for the
/// next window of its kind to be shown, in the order of the steps, and then runs inside that
/// window's event loop. A step may open a further one: the step after it answers that.
///
/// A window that no step is there for, or that is still open long after its step, fails the test
/// and is closed, so that no test waits without end. A step that never came to run fails it too.
class DialogDriver final : public QObject
{
    Q_OBJECT

public:
    DialogDriver();
    ~DialogDriver() override;

    /// Runs `step` with the next modal dialog, or menu, that is shown.
    DialogDriver& then(std::function<void(QWidget&)> step);

    /// The same, before the steps that are there already: for a step that opens a window itself.
    DialogDriver& thenFirst(std::function<void(QWidget&)> step);

    /// Presses Escape in the next window, or Enter.
    DialogDriver& thenEscape();
    DialogDriver& thenEnter();

    /// Reads the message box that is shown next, and presses Enter in it.
    DialogDriver& thenReadMessage(QString& text);

    /// Returns whether all steps have run.
    bool isDone() const { return m_steps.empty(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void runStep(QWidget* window);
    void giveUp();

    std::deque<std::function<void(QWidget&)>> m_steps;
    QTimer m_watchdog;
};

/// The text of a message box; empty when `window` is none.
QString messageOf(const QWidget& window);

/// The button of that text in `window`, mnemonics aside; the test fails when there is none.
QAbstractButton* buttonOf(const QWidget& window, const QString& text);

/// Presses it with the mouse.
void clickButton(const QWidget& window, const QString& text);

/// Types `keys` into `field`, which gets the focus by a click first.
void typeInto(QWidget* field, const QString& keys);
