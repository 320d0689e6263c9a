#pragma once

#include "tests/system/Screen.h"

#include <QPoint>

#include <functional>

class WorkbenchProgram;

/// A user at the display: finds elements by role and name, and uses mouse and keyboard through the
/// X server. Throws Stuck if an expected state is not reached in time.
class User final
{
public:
    explicit User(WorkbenchProgram& program)
        : m_program(program)
    {
    }

    /// Waits until the element is visible and does not move any more, and returns it.
    Element find(const Wanted& wanted);

    /// Waits until the element is visible and in `state`; "enabled" means not "disabled".
    Element findIn(const QString& state, const Wanted& wanted);

    /// Waits until no such element is visible.
    void waitUntilGone(const Wanted& wanted);

    /// Waits until an element with `role` and `value` has the focus. A null `value` matches any.
    void waitForKeyboardIn(const QString& role, const QString& value = QString());

    /// Waits until `condition` returns true. `what` describes it in the message of a timeout.
    void waitFor(const QString& what, const std::function<bool()>& condition);

    void click(const Wanted& wanted) { press(wanted, 1); }
    void clickWith(const QString& modifier, const Wanted& wanted);
    void rightClick(const Wanted& wanted) { press(wanted, 3); }
    void clickAt(const QPoint& place);

    /// Opens the context menu of an element and chooses `entry`.
    void choose(const QString& entry, const Wanted& wanted);

    /// Drags an element to `target`, moves until `moves` counts moves of the drag there, and drops
    /// it.
    void drag(const Wanted& wanted, const Wanted& target, const std::function<int()>& moves);

    /// Turns the wheel over `within` until its first element, `top`, is visible.
    void scrollUp(const Wanted& within, const Wanted& top);

    /// Presses a key with modifiers, such as "Return" or "ctrl+q".
    void pressKeys(const QString& keys);

    /// Replaces the text of the field that has the focus.
    void write(const QString& text);

    /// Clicks into the field and replaces its text.
    void writeInto(const Wanted& field, const QString& text);

private:
    void press(const Wanted& wanted, int button);

    WorkbenchProgram& m_program;
};
