// Steps that use the workbench's own window: its commands, the language, pictures.

#include "Interface/TargetSelectAreaInterface.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/MainWindow.h"
#include "host/workbench/window/RecordsPanel.h"

#include <QAction>
#include <QPointer>

namespace {

/// Ticks that leave the window time to lay itself out and to paint.
constexpr int kQuietTicks = 3;

QAction* actionCalled(ScriptRun& run, const QString& name)
{
    return name.isEmpty() ? nullptr : run.window().findChild<QAction*>(name);
}

/// Triggers an action; with `on`, only if it is not in that state.
Progress trigger(ScriptRun& run, QAction* action, std::optional<bool> on = std::nullopt)
{
    if (run.phase == 0 && !action->isEnabled())
        return Progress::waiting(
            QStringLiteral("the command \"%1\" is disabled").arg(action->objectName()));
    if (run.phase == 0 && on && action->isChecked() == *on)
        return Progress::done();
    return run.once([action] { action->trigger(); });
}

Progress command(ScriptRun& run, const ScriptStep& step)
{
    QAction* action = actionCalled(run, step.value("NAME"));
    if (!action)
        return Progress::failed(
            QStringLiteral("there is no command \"%1\" in the menus").arg(step.value("NAME")));
    return trigger(run, action);
}

StepType::Run switchOf(ActionId id)
{
    return [id](ScriptRun& run, const ScriptStep& step) {
        return trigger(run, run.window().actions()[id],
                       step.value("on|off") == QLatin1String("on"));
    };
}

Progress events(ScriptRun& run, const ScriptStep& step)
{
    return trigger(run, run.window().actions()[ActionId::GuiThreadEvents],
                   step.value("gui|notify") == QLatin1String("gui"));
}

Progress language(ScriptRun& run, const ScriptStep& step)
{
    const bool isChinese = step.value("English|Chinese") == QLatin1String("Chinese");
    return trigger(run, run.window().actions()[isChinese ? ActionId::Chinese : ActionId::English]);
}

/// A step that calls an operation of the panel.
StepType::Run
layerCall(const std::function<void(ITargetSelectAreaInterface&, const ScriptStep&)>& operation)
{
    return [operation](ScriptRun& run, const ScriptStep& step) {
        if (run.phase == 0 && !run.session().layer())
            return Progress::waiting(QStringLiteral("there is no panel"));
        return run.once([&run, &step, operation] {
            if (ITargetSelectAreaInterface* layer = run.session().layer())
                operation(*layer, step);
        });
    };
}

Progress hostSelect(ScriptRun& run, const ScriptStep& step)
{
    QList<QUuid> ids;
    for (const QString& name : step.values("RECORD")) {
        ids.append(run.identity(name));
        if (ids.constLast().isNull())
            return Progress::waiting(QStringLiteral("there is no record \"%1\"").arg(name));
    }
    run.window().records().select(ids);
    return Progress::done();
}

/// Waits until the window has painted what happened so far.
Progress picture(ScriptRun& run, const ScriptStep& step)
{
    if (!run.takesPictures())
        return Progress::done();
    if (run.phase++ < kQuietTicks) {
        run.log().end();
        return Progress::waiting(QStringLiteral("the window paints"));
    }
    const QString problem = run.takePicture(step.value("NAME"));
    return problem.isEmpty() ? Progress::done() : Progress::failed(problem);
}

/// Takes the picture in the middle of the next detection. The step itself is done before, because
/// scripts do not go on inside the call that detects.
Progress pictureOfDetection(ScriptRun& run, const ScriptStep& step)
{
    if (!run.takesPictures())
        return Progress::done();
    auto* once = new QObject(&run);
    QObject::connect(&run.session(), &Session::detectionProceeded, once,
                     [&run, once, name = step.value("NAME")](int done, int total) {
                         if (done != total / 2)
                             return;
                         run.takePictureAside(name);
                         once->deleteLater();
                     });
    return Progress::done();
}

} // namespace

void addWindowSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("command NAME"), command, {}});
    registry.add({QStringLiteral("read-only on|off"), switchOf(ActionId::SetReadOnly), {}});
    registry.add({QStringLiteral("events on gui|notify"), events, {}});
    registry.add({QStringLiteral("language English|Chinese"), language, {}});
    registry.add({QStringLiteral("lock NUMBER on|off"),
                  layerCall([](auto& layer, const ScriptStep& step) {
                      layer.SetOperationLock(step.number("NUMBER"),
                                             step.value("on|off") == QLatin1String("on"));
                  }),
                  {}});
    registry.add({QStringLiteral("apply lock NUMBER"),
                  layerCall([](auto& layer, const ScriptStep& step) {
                      layer.ApplyOperationLock(step.number("NUMBER"));
                  }),
                  {}});
    registry.add({QStringLiteral("host select [RECORD...]"), hostSelect, {}});
    registry.add({QStringLiteral("picture NAME"), picture, {}});
    registry.add({QStringLiteral("picture of detection NAME"), pictureOfDetection, {}});
    registry.add({QStringLiteral("timeout SECONDS"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      run.timeout = step.value("SECONDS").toDouble();
                      return Progress::done();
                  },
                  {}});
    registry.add(
        {QStringLiteral("start over"),
         [](ScriptRun& run, const ScriptStep&) { return run.once([&run] { run.startOver(); }); },
         {}});
}
