#include "tests/system/User.h"

#include "tests/system/WorkbenchProgram.h"

#include <QProcess>
#include <QTest>

namespace {

constexpr int kPatienceMs = 20000;

QString at(const QPoint& place)
{
    return QStringLiteral("mousemove %1 %2").arg(place.x()).arg(place.y());
}

/// Makes the X server take these for events of mouse and keyboard.
void input(const QStringList& commands)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), commands);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw Stuck(QStringLiteral("xdotool %1: %2")
                        .arg(commands.join(QLatin1Char(' ')),
                             QString::fromLocal8Bit(process.readAllStandardError())));
}

void input(const QString& commands)
{
    input(commands.split(QLatin1Char(' ')));
}

} // namespace

Element User::find(const Wanted& wanted)
{
    std::optional<Element> last;
    waitFor(wanted.text(), [&] {
        const Screen screen = m_program.look();
        const std::optional<Element> found = screen.find(wanted);
        const bool keepsPlace = found && last && found->rect == last->rect;
        last = found;
        // A window that has been shown is not on the screen yet; a click would go behind it.
        return keepsPlace && screen.takesKeys() && !found->rect.isEmpty();
    });
    return *last;
}

Element User::findIn(const QString& state, const Wanted& wanted)
{
    std::optional<Element> found;
    waitFor(QStringLiteral("%1 %2").arg(state, wanted.text()), [&] {
        found = m_program.look().find(wanted);
        return found
               && (state == QLatin1String("enabled") ? !found->is(QStringLiteral("disabled"))
                                                     : found->is(state));
    });
    return *found;
}

void User::waitUntilGone(const Wanted& wanted)
{
    waitFor(QStringLiteral("the end of ") + wanted.text(),
            [&] { return !m_program.look().find(wanted); });
}

void User::waitForKeyboardIn(const QString& role, const QString& value)
{
    waitFor(QStringLiteral("the keyboard in %1 \"%2\"").arg(role, value), [&] {
        const std::optional<Element> focus = m_program.look().focus();
        return focus && focus->role == role && (value.isNull() || focus->value == value);
    });
}

void User::waitFor(const QString& what, const std::function<bool()>& condition)
{
    const bool came =
        QTest::qWaitFor([&] { return !m_program.isRunning() || condition(); }, kPatienceMs);
    if (!m_program.isRunning())
        throw Stuck(QStringLiteral("the workbench has gone before %1").arg(what));
    if (!came)
        throw Stuck(QStringLiteral("waited in vain for %1").arg(what));
}

void User::clickWith(const QString& modifier, const Wanted& wanted)
{
    input(QStringLiteral("keydown ") + modifier);
    press(wanted, 1);
    input(QStringLiteral("keyup ") + modifier);
}

void User::clickAt(const QPoint& place)
{
    input(at(place) + QStringLiteral(" click 1"));
}

void User::choose(const QString& entry, const Wanted& wanted)
{
    rightClick(wanted);
    click({QStringLiteral("MenuItem"), entry, {}});
}

void User::drag(const Wanted& wanted, const Wanted& target, const std::function<int()>& moves)
{
    const QPoint from = find(wanted).rect.center();
    const QPoint to = find(target).rect.center();
    input(at(from) + QStringLiteral(" mousedown 1"));
    // A drag begins after a few moves; how many, depends on how they come together.
    int step = 0;
    const auto nudge = [&] {
        ++step;
        input(at(to + QPoint(step % 8, step % 3)));
    };
    const int before = moves();
    waitFor(QStringLiteral("a drag of ") + wanted.text(), [&] {
        nudge();
        return moves() > before;
    });
    const int arrived = moves();
    waitFor(QStringLiteral("a drag over ") + target.text(), [&] {
        nudge();
        return moves() > arrived;
    });
    input(QStringLiteral("mouseup 1"));
}

void User::scrollUp(const Wanted& within, const Wanted& top)
{
    input(at(find(within).rect.center()) + QStringLiteral(" click --repeat 30 --delay 1 4"));
    find(top);
}

void User::pressKeys(const QString& keys)
{
    waitFor(QStringLiteral("the keyboard"), [this] { return m_program.look().takesKeys(); });
    input(QStringLiteral("key ") + keys);
}

void User::write(const QString& text)
{
    pressKeys(QStringLiteral("ctrl+a"));
    input({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("2"), text});
    waitFor(QStringLiteral("the text \"%1\"").arg(text), [&] {
        const std::optional<Element> focus = m_program.look().focus();
        return focus && focus->value == text;
    });
}

void User::writeInto(const Wanted& field, const QString& text)
{
    click(field);
    waitFor(QStringLiteral("the keyboard in ") + field.text(), [&] {
        const std::optional<Element> focus = m_program.look().focus();
        return focus && focus->name == field.name;
    });
    write(text);
}

/// Presses and releases a mouse button on something that is not disabled.
void User::press(const Wanted& wanted, int button)
{
    findIn(QStringLiteral("enabled"), wanted);
    input(at(find(wanted).rect.center()) + QStringLiteral(" click %1").arg(button));
}
