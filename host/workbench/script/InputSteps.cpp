// Steps that use mouse and keyboard.

#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Scrolling.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/script/Targets.h"
#include "host/workbench/window/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeySequence>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTabBar>
#include <QTreeView>

#include <memory>

namespace {

/// Of the arrow that opens the menu of a button, from the button's right edge.
constexpr int kArrowMiddle = 6;

Qt::KeyboardModifiers modifiersOf(const ScriptStep& step)
{
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (const QString& name : step.value("MODIFIERS").split(QLatin1Char('+'))) {
        if (name == QLatin1String("Ctrl"))
            modifiers |= Qt::ControlModifier;
        else if (name == QLatin1String("Shift"))
            modifiers |= Qt::ShiftModifier;
        else if (name == QLatin1String("Alt"))
            modifiers |= Qt::AltModifier;
    }
    return modifiers;
}

std::optional<ScriptProblem> checkModifiers(const ScriptStep& step)
{
    if (step.has("with") && !step.has("MODIFIERS"))
        return step.problemAt(step.token("with"),
                              QStringLiteral("Ctrl, Shift or Alt is expected after \"with\""));
    for (const QString& name : step.value("MODIFIERS").split(QLatin1Char('+'))) {
        if (step.has("with") && name != QLatin1String("Ctrl") && name != QLatin1String("Shift")
            && name != QLatin1String("Alt"))
            return step.problemAt(step.token("MODIFIERS"),
                                  QStringLiteral("Ctrl, Shift, Alt or several with a + are "
                                                 "expected, not \"%1\"")
                                      .arg(name));
    }
    return std::nullopt;
}

/// Returns why the tree gets no mouse, empty if it does.
QString obstacle()
{
    const QWidget* front = Targets::popup() ? Targets::popup() : Targets::dialog();
    return front ? QStringLiteral("\"%1\" is open in front of the tree").arg(front->windowTitle())
                 : QString();
}

/// Returns the row of the step in view, without an index if it has none.
Targets::Row shownRow(ScriptRun& run, const ScriptToken& name)
{
    Targets::Row row = Targets::row(run, name);
    row.reason += obstacle();
    if (!row.reason.isEmpty())
        return {row.view, {}, row.reason};
    scrollByWheel(*row.view, row.index);
    if (row.view->visualRect(row.index).isEmpty())
        return {row.view, {}, QStringLiteral("\"%1\" is in a closed group").arg(name.text)};
    return row;
}

QString settling()
{
    return QStringLiteral("the window is being laid out");
}

/// The last part of a step that clicks: waits until the place is where it stays.
Progress clickAt(ScriptRun& run, const QWidget& target, const QPoint& place,
                 Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier, int count = 1)
{
    if (!run.isSettled(target, place))
        return Progress::waiting(settling());
    return run.inputOnce([&] { run.input().click(target, place, button, modifiers, count); });
}

StepType::Run rowClick(Qt::MouseButton button, int count)
{
    return [button, count](ScriptRun& run, const ScriptStep& step) {
        if (run.phase > 0)
            return run.inputOnce({});
        const Targets::Row row = shownRow(run, step.token("ROW"));
        if (!row.index.isValid())
            return Progress::waiting(row.reason);
        return clickAt(run, *row.view->viewport(), row.view->visualRect(row.index).center(), button,
                       modifiersOf(step), count);
    };
}

Progress clickEmptySpace(ScriptRun& run, const ScriptStep&)
{
    if (run.phase > 0)
        return run.inputOnce({});
    const QTreeView* view = Targets::tree(run);
    if (!view || !obstacle().isEmpty())
        return Progress::waiting(view ? obstacle() : QStringLiteral("there is no panel"));
    const QRect all = view->viewport()->rect();
    return clickAt(run, *view->viewport(), all.bottomLeft() + QPoint(all.width() / 2, -2));
}

/// Returns where a button takes the mouse.
QPoint placeIn(const QAbstractButton& button, bool isArrow)
{
    const QRect all = button.rect();
    if (isArrow)
        return {all.right() - kArrowMiddle, all.center().y()};
    // A check box reacts where its mark is.
    const bool isWide = button.isCheckable() && all.width() > 2 * all.height();
    return isWide ? QPoint(all.height() / 2, all.center().y()) : all.center();
}

StepType::Run buttonClick(bool isArrow)
{
    return [isArrow](ScriptRun& run, const ScriptStep& step) {
        if (run.phase > 0)
            return run.inputOnce({});
        const auto found = Targets::button(run, step.value("NAME"));
        if (!found.target)
            return Progress::waiting(found.reason);
        if (!found.target->isEnabled())
            return Progress::waiting(
                QStringLiteral("the button \"%1\" is disabled").arg(step.value("NAME")));
        return clickAt(run, *found.target, placeIn(*found.target, isArrow));
    };
}

Progress clickTab(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase > 0)
        return run.inputOnce({});
    const QWidget* front = Targets::dialog();
    const auto bars = (front ? front : &run.window())->findChildren<QTabBar*>();
    for (const QTabBar* bar : bars) {
        for (int tab = 0; tab < bar->count(); ++tab) {
            if (bar->isVisible() && Targets::plain(bar->tabText(tab)) == step.value("NAME"))
                return clickAt(run, *bar, bar->tabRect(tab).center());
        }
    }
    return Progress::waiting(QStringLiteral("there is no tab \"%1\"").arg(step.value("NAME")));
}

Progress clickResult(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase > 0)
        return run.inputOnce({});
    QListView* list = Targets::results();
    if (!list)
        return Progress::waiting(QStringLiteral("no list is open"));
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QModelIndex index = list->model()->index(row, 0);
        if (index.data().toString() != step.value("NAME"))
            continue;
        scrollByWheel(*list, index);
        return clickAt(run, *list->viewport(), list->visualRect(index).center());
    }
    return Progress::waiting(
        QStringLiteral("there is no \"%1\" in the list").arg(step.value("NAME")));
}

Progress pick(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase > 0)
        return run.inputOnce({});
    const Targets::Entry entry = Targets::menuEntry(step.value("ENTRY"));
    if (!entry.menu)
        return Progress::waiting(entry.reason);
    if (!entry.isEnabled)
        return Progress::waiting(
            QStringLiteral("the entry \"%1\" is disabled").arg(step.value("ENTRY")));
    return clickAt(run, *entry.menu, entry.place.center());
}

/// Opens a menu of the window's menu bar.
Progress openMenu(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase > 0)
        return run.inputOnce({});
    QMenuBar* bar = run.window().menuBar();
    for (QAction* action : bar->actions()) {
        if (Targets::plain(action->text()) == step.value("NAME"))
            return clickAt(run, *bar, bar->actionGeometry(action).center());
    }
    return Progress::waiting(QStringLiteral("there is no menu \"%1\"").arg(step.value("NAME")));
}

Progress choose(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase == 0) {
        const auto found = Targets::field(run, step.value("NAME"));
        const auto* combo = qobject_cast<QComboBox*>(found.target);
        if (!combo)
            return Progress::waiting(
                found.target ? QStringLiteral("\"%1\" is no combo box").arg(step.value("NAME"))
                             : found.reason);
        if (!combo->isEnabled())
            return Progress::waiting(QStringLiteral("the combo box is disabled"));
        if (!run.isSettled(*combo, combo->rect().center()))
            return Progress::waiting(settling());
        run.phase = 1;
        run.input().click(*combo, combo->rect().center(), Qt::LeftButton);
    }
    if (run.phase == 1) {
        QListView* list = Targets::results();
        if (!list || !list->isVisible())
            return Progress::waiting(QStringLiteral("the list does not open"));
        QStringList offered;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            const QModelIndex index = list->model()->index(row, 0);
            offered.append(index.data().toString());
            if (offered.constLast() != step.value("ENTRY"))
                continue;
            scrollByWheel(*list, index);
            if (!run.isSettled(*list->viewport(), list->visualRect(index).center()))
                return Progress::waiting(settling());
            run.phase = 2;
            run.input().click(*list->viewport(), list->visualRect(index).center(), Qt::LeftButton);
            return Progress::waiting(QStringLiteral("the input is on its way"));
        }
        return Progress::failed(
            QStringLiteral("there is no \"%1\" in the list:\n  %2")
                .arg(step.value("ENTRY"), offered.join(QStringLiteral("\n  "))));
    }
    return Progress::when(run.input().isDelivered() && !Targets::popup(),
                          QStringLiteral("the list does not close"));
}

/// Returns why the keyboard is in none of the windows, empty if it is in the one in front.
QString keyboardObstacle(ScriptRun& run)
{
    QWidget* front = Targets::dialog() ? Targets::dialog() : &run.window();
    if (front->isActiveWindow() || Targets::popup())
        return {};
    front->activateWindow();
    return QStringLiteral("\"%1\" does not get the keyboard").arg(front->windowTitle());
}

Progress typeText(ScriptRun& run, const ScriptStep& step)
{
    const QString reason = run.phase == 0 ? keyboardObstacle(run) : QString();
    if (!reason.isEmpty())
        return Progress::waiting(reason);
    return run.inputOnce([&] { run.input().type(run.withFolder(step.value("TEXT"))); });
}

Progress pressKeys(ScriptRun& run, const ScriptStep& step)
{
    const QString reason = run.phase == 0 ? keyboardObstacle(run) : QString();
    if (!reason.isEmpty())
        return Progress::waiting(reason);
    return run.inputOnce([&] {
        for (const QString& keys : step.values("KEYS"))
            run.input().press(QKeySequence::fromString(keys, QKeySequence::PortableText));
    });
}

std::optional<ScriptProblem> checkKeys(const ScriptStep& step)
{
    for (const ScriptToken& token : step.all("KEYS")) {
        const QKeySequence keys = QKeySequence::fromString(token.text, QKeySequence::PortableText);
        if (keys.isEmpty() || keys[0] == Qt::Key_unknown)
            return step.problemAt(
                token, QStringLiteral("\"%1\" is no key; Ctrl+A and Return are").arg(token.text));
    }
    return std::nullopt;
}

/// Clicks into a field, selects what it has, and types over it.
Progress fill(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase == 0) {
        const auto found = Targets::field(run, step.value("NAME"));
        if (!found.target)
            return Progress::waiting(found.reason);
        if (!found.target->isEnabled())
            return Progress::waiting(
                QStringLiteral("the field \"%1\" is disabled").arg(step.value("NAME")));
        const QPoint place(8, found.target->height() / 2);
        if (!run.isSettled(*found.target, place))
            return Progress::waiting(settling());
        run.phase = 1;
        run.input().click(*found.target, place, Qt::LeftButton);
        return Progress::waiting(QStringLiteral("the input is on its way"));
    }
    const QString reason = run.phase == 1 ? keyboardObstacle(run) : QString();
    if (!reason.isEmpty() || !run.input().isDelivered())
        return Progress::waiting(reason + QStringLiteral("no window took the input"));
    if (run.phase == 1) {
        run.phase = 2;
        run.input().press(QKeySequence(QStringLiteral("Ctrl+A")));
        if (step.value("TEXT").isEmpty())
            run.input().press(QKeySequence(Qt::Key_Delete));
        run.input().type(run.withFolder(step.value("TEXT")));
        return Progress::waiting(QStringLiteral("the input is on its way"));
    }
    return Progress::done();
}

/// Drops the selected rows. Where drags have a loop of their own, it follows the real mouse alone,
/// so the view gets the events that come out of one.
void drop(QTreeView& view, const QPoint& place)
{
    const QPointer<QTreeView> alive(&view);
    const std::unique_ptr<QMimeData> data(
        view.model()->mimeData(view.selectionModel()->selectedRows()));
    if (!data)
        return;
    QDragEnterEvent enter(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &enter);
    if (!alive)
        return;
    QDragMoveEvent move(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &move);
    if (!alive)
        return;
    if (!move.isAccepted()) {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(view.viewport(), &leave);
        return;
    }
    QDropEvent dropped(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &dropped);
}

/// Selects rows with the mouse, one after the other, and drops them on a row or on no row.
Progress drag(ScriptRun& run, const ScriptStep& step)
{
    const QVector<ScriptToken> rows = step.all("ROW");
    if (run.phase < rows.size()) {
        if (!run.input().isDelivered())
            return Progress::waiting(QStringLiteral("no window took the input"));
        const Targets::Row row = shownRow(run, rows.at(run.phase));
        if (!row.index.isValid())
            return Progress::waiting(row.reason);
        run.input().click(*row.view->viewport(), row.view->visualRect(row.index).center(),
                          Qt::LeftButton, run.phase > 0 ? Qt::ControlModifier : Qt::NoModifier);
        ++run.phase;
        return Progress::waiting(QStringLiteral("the input is on its way"));
    }
    if (run.phase == rows.size()) {
        if (!run.input().isDelivered())
            return Progress::waiting(QStringLiteral("no window took the input"));
        QTreeView* view = Targets::tree(run);
        if (!view)
            return Progress::failed(QStringLiteral("there is no panel"));
        QPoint place = view->viewport()->rect().bottomLeft() + QPoint(20, -2);
        if (!step.token("TARGET").isWord(QStringLiteral("nothing"))) {
            const Targets::Row target = shownRow(run, step.token("TARGET"));
            if (!target.index.isValid())
                return Progress::waiting(target.reason);
            const QRect rect = view->visualRect(target.index);
            place = step.value("onto|below") == QLatin1String("below")
                        ? QPoint(rect.center().x(), rect.bottom())
                        : rect.center();
        }
        ++run.phase;
        run.act([view = QPointer<QTreeView>(view), place] {
            if (view)
                drop(*view, place);
        });
    }
    return Progress::when(run.hasActed(), QStringLiteral("the workbench is busy"));
}

} // namespace

void addInputSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("click row ROW [with] [MODIFIERS]"), rowClick(Qt::LeftButton, 1),
                  checkModifiers});
    registry.add({QStringLiteral("double-click row ROW [with] [MODIFIERS]"),
                  rowClick(Qt::LeftButton, 2), checkModifiers});
    registry.add({QStringLiteral("right-click row ROW [with] [MODIFIERS]"),
                  rowClick(Qt::RightButton, 1), checkModifiers});
    registry.add({QStringLiteral("click empty space"), clickEmptySpace, {}});
    registry.add({QStringLiteral("click NAME"), buttonClick(false), {}});
    registry.add({QStringLiteral("click arrow of NAME"), buttonClick(true), {}});
    registry.add({QStringLiteral("click tab NAME"), clickTab, {}});
    registry.add({QStringLiteral("click result NAME"), clickResult, {}});
    registry.add({QStringLiteral("pick ENTRY"), pick, {}});
    registry.add({QStringLiteral("open menu NAME"), openMenu, {}});
    registry.add({QStringLiteral("choose NAME ENTRY"), choose, {}});
    registry.add({QStringLiteral("type TEXT"), typeText, {}});
    registry.add({QStringLiteral("press KEYS..."), pressKeys, checkKeys});
    registry.add({QStringLiteral("fill NAME TEXT"), fill, {}});
    registry.add({QStringLiteral("drag ROW... onto|below TARGET"), drag, {}});
}
