// Steps about dialogs, messages and menus.

#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/script/Targets.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QWindow>

namespace {

QString shownDialog()
{
    const QWidget* open = Targets::dialog();
    return open ? QStringLiteral("\"%1\" is open:\n  %2")
                      .arg(open->windowTitle(), Targets::messages().join(QStringLiteral("\n  ")))
                : QStringLiteral("no dialog is open");
}

Progress expectDialog(ScriptRun&, const ScriptStep& step)
{
    const QWidget* open = Targets::dialog();
    return Progress::when(open && Targets::matches(step.value("TITLE"), open->windowTitle()),
                          shownDialog());
}

Progress expectMessage(ScriptRun&, const ScriptStep& step)
{
    for (const QString& text : Targets::messages()) {
        if (Targets::matches(step.value("TEXT"), text))
            return Progress::done();
    }
    return Progress::waiting(shownDialog());
}

Progress expectNoDialog(ScriptRun&, const ScriptStep&)
{
    return Progress::when(!Targets::dialog(), shownDialog());
}

/// Presses a button of the open dialog, which has to close then.
Progress answer(ScriptRun& run, const ScriptStep& step)
{
    if (run.phase == 0) {
        QWidget* open = Targets::dialog();
        if (!open)
            return Progress::waiting(shownDialog());
        const auto found = Targets::button(run, step.value("BUTTON"));
        if (!found.target || !found.target->isEnabled())
            return Progress::waiting(found.target ? QStringLiteral("the button is disabled")
                                                  : found.reason);
        const QPoint place = found.target->rect().center();
        if (!run.isSettled(*found.target, place))
            return Progress::waiting(QStringLiteral("the dialog is being laid out"));
        run.phase = 1;
        run.memory = QVariant::fromValue(QPointer<QWidget>(open));
        run.input().click(*found.target, place, Qt::LeftButton);
        return Progress::waiting(QStringLiteral("the input is on its way"));
    }
    const auto open = run.memory.value<QPointer<QWidget>>();
    return Progress::when(run.input().isDelivered() && (!open || !open->isVisible()),
                          QStringLiteral("the dialog stays open; ") + shownDialog());
}

Progress closeDialog(ScriptRun& run, const ScriptStep&)
{
    QWidget* open = Targets::popup() ? Targets::popup() : Targets::dialog();
    if (run.phase == 0 && !open)
        return Progress::waiting(QStringLiteral("no dialog or menu is open"));
    return run.once([open = QPointer<QWidget>(open)] {
        // As the title bar does.
        if (open && open->windowHandle())
            open->windowHandle()->close();
    });
}

Progress expectEntry(ScriptRun&, const ScriptStep& step)
{
    const Targets::Entry entry = Targets::menuEntry(step.value("ENTRY"));
    const QString state = step.value("enabled|disabled|missing");
    if (state == QLatin1String("missing")) {
        const bool isOpen = qobject_cast<QMenu*>(Targets::popup()) != nullptr;
        return Progress::when(
            isOpen && !entry.menu,
            isOpen ? QStringLiteral("there is an entry \"%1\"").arg(step.value("ENTRY"))
                   : entry.reason);
    }
    if (!entry.menu)
        return Progress::waiting(entry.reason);
    return Progress::when(entry.isEnabled == (state == QLatin1String("enabled")),
                          QStringLiteral("the entry is not %1").arg(state));
}

} // namespace

void addDialogSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("expect dialog TITLE"), expectDialog, {}});
    registry.add({QStringLiteral("expect message TEXT"), expectMessage, {}});
    registry.add({QStringLiteral("expect no dialog"), expectNoDialog, {}});
    registry.add({QStringLiteral("reply BUTTON"), answer, {}});
    registry.add({QStringLiteral("close"), closeDialog, {}});
    registry.add(
        {QStringLiteral("expect menu entry ENTRY enabled|disabled|missing"), expectEntry, {}});
}
