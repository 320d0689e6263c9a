#pragma once

#include "tests/system/Screen.h"

#include <QPoint>

#include <functional>

class WorkbenchProgram;

/// Somebody at the display: looks for things by role and name, and uses mouse and keys through the
/// X server. Throws Stuck when what should come does not.
class User final
{
public:
    explicit User(WorkbenchProgram& program)
        : m_program(program)
    {
    }

    /// Waits until it is there and keeps its place.
    Element find(const Wanted& wanted);

    /// Waits until it is there and in `state`; "enabled" is the lack of "disabled".
    Element findIn(const QString& state, const Wanted& wanted);

    /// Waits until it has gone.
    void waitUntilGone(const Wanted& wanted);

    /// Waits until the keyboard goes to something with `value`; whatever the value when null.
    void waitForKeyboardIn(const QString& role, const QString& value = QString());

    /// Waits until `condition`; `what` says what was missing.
    void waitFor(const QString& what, const std::function<bool()>& condition);

    void click(const Wanted& wanted) { press(wanted, 1); }
    void clickWith(const QString& modifier, const Wanted& wanted);
    void rightClick(const Wanted& wanted) { press(wanted, 3); }
    void clickAt(const QPoint& place);

    /// Opens the context menu of something and chooses an entry.
    void choose(const QString& entry, const Wanted& wanted);

    /// Drags onto `target` until `moves` counts moves of the drag there, and lets go.
    void drag(const Wanted& wanted, const Wanted& target, const std::function<int()>& moves);

    /// Turns the wheel until `top`, the first thing in there, has come.
    void scrollUp(const Wanted& within, const Wanted& top);

    /// Such as "Return", "ctrl+q".
    void pressKeys(const QString& keys);

    /// Writes over what the field with the keyboard holds.
    void write(const QString& text);

    /// Clicks into the field and writes over what it holds.
    void writeInto(const Wanted& field, const QString& text);

private:
    void press(const Wanted& wanted, int button);

    WorkbenchProgram& m_program;
};
