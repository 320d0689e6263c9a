#include "host/workbench/script/ScriptRun.h"

#include "host/widgets/HostTheme.h"
#include "host/workbench/session/PictureFile.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QWindow>

namespace {

/// How often a place has to be found unchanged.
constexpr int kSettledTicks = 2;

} // namespace

ScriptRun::ScriptRun(MainWindow& window, const QString& pictures, QObject* parent)
    : QObject(parent)
    , m_window(window)
    , m_pictures(pictures)
    , m_log(window.session().trace())
{
    connect(&session().store(), &ProjectStore::changed, this, &ScriptRun::learnNames);
    learnNames();
}

Session& ScriptRun::session()
{
    return m_window.session();
}

void ScriptRun::begin(const Script& script)
{
    m_folder = script.folder;
    timeout = kTimeoutSeconds;
    m_window.files().setAskBeforeLoss(false);
    m_log.clear();
    callMark = 0;
    forgotten = 0;
}

void ScriptRun::startOver()
{
    Actions& actions = m_window.actions();
    actions[ActionId::ClosePanel]->trigger();
    actions[ActionId::English]->trigger();
    actions[ActionId::NewProject]->trigger();
    m_window.log().filterField()->clear();
    actions[ActionId::OpenPanel]->trigger();
    // The library keeps this mode from panel to panel.
    if (actions[ActionId::SetReadOnly]->isChecked())
        actions[ActionId::SetReadOnly]->trigger();
    // Without a window manager, nobody else does when a dialog closes.
    m_window.activateWindow();
}

void ScriptRun::nextStep()
{
    phase = 0;
    memory.clear();
    m_settledTicks = 0;
    m_hasActed = false;
    m_input.forget();
}

void ScriptRun::act(const std::function<void()>& action)
{
    m_hasActed = false;
    QMetaObject::invokeMethod(
        this,
        [this, action] {
            m_hasActed = true;
            action();
        },
        Qt::QueuedConnection);
}

Progress ScriptRun::once(const std::function<void()>& action)
{
    if (phase == 0) {
        phase = 1;
        act(action);
    }
    return Progress::when(m_hasActed, QStringLiteral("the workbench is busy"));
}

Progress ScriptRun::inputOnce(const std::function<void()>& send)
{
    if (phase == 0) {
        phase = 1;
        send();
        return Progress::waiting(QStringLiteral("the input is on its way"));
    }
    return Progress::when(m_input.isDelivered(), QStringLiteral("no window took the input"));
}

bool ScriptRun::isSettled(const QWidget& target, const QPoint& place)
{
    const QWindow* window = target.window()->windowHandle();
    const QPoint global = target.mapToGlobal(place);
    if (m_target != &target || m_targetPlace != global || !window || !window->isExposed())
        m_settledTicks = 0;
    m_target = &target;
    m_targetPlace = global;
    return m_settledTicks++ >= kSettledTicks;
}

QString ScriptRun::filePath(const QString& name) const
{
    const QString path = withFolder(name);
    return QDir::cleanPath(QDir(m_folder).absoluteFilePath(path));
}

QString ScriptRun::withFolder(const QString& text) const
{
    QString result = text;
    return result.replace(QStringLiteral("{temp}"), m_temp.path());
}

QUuid ScriptRun::identity(const QString& name)
{
    const QUuid written = QUuid::fromString(name);
    return written.isNull() ? m_names.value(name) : written;
}

/// A picture of the window with the open dialog in front of it.
QString ScriptRun::takePicture(const QString& name)
{
    m_log.end();
    QPixmap picture = m_window.grab();
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        QPainter painter(&picture);
        const QRect frame =
            dialog->rect().translated(m_window.rect().center() - dialog->rect().center());
        painter.drawPixmap(frame.topLeft(), dialog->grab());
        painter.setPen(hostColors().line);
        painter.drawRect(frame.adjusted(-1, -1, 0, 0));
    }
    QString file = name;
    file.replace(QLatin1Char(' '), QLatin1Char('-'));
    file.remove(QLatin1Char(',')).replace(QLatin1Char('/'), QLatin1Char('-'));
    const QString path = QDir(m_pictures)
                             .filePath(QStringLiteral("%1-%2.png")
                                           .arg(m_pictureCount + 1, 2, 10, QLatin1Char('0'))
                                           .arg(file));
    QString problem;
    if (savePicture(picture, path, problem))
        ++m_pictureCount;
    return problem;
}

void ScriptRun::takePictureAside(const QString& name)
{
    const QString problem = takePicture(name);
    if (!problem.isEmpty())
        m_lostPictures.append(problem);
}

/// Names of records that go stay known, for the calls that were about them.
void ScriptRun::learnNames()
{
    const Project project = session().store().snapshot();
    for (const ProcessorGroupNode& group : project.groups)
        m_names.insert(group.name, group.id);
    for (const ProcessorNode& node : project.processors)
        m_names.insert(node.name, node.id);
}
