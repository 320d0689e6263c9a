#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/program/Inspector.h"
#include "host/workbench/program/Options.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/tour/SelfTest.h"
#include "host/workbench/tour/Tour.h"
#include "host/workbench/trace/TraceFile.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/Autosave.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/Language.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/MainWindow.h"
#include "host/workbench/window/WindowSettings.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <iostream>
#include <optional>

namespace {

bool isUnattended(const Options& options)
{
    return options.selfTest || !options.tourFolder.isEmpty();
}

/// Loads the library and the project of the command line; sets `problem` to the first error.
void load(const Options& options, MainWindow& window, QString& problem)
{
    QString loadProblem;
    if (window.session().library().load(options.library, loadProblem))
        window.openPanel();
    if (problem.isEmpty())
        problem = loadProblem;
    QString project = options.project;
    if (project.isEmpty() && options.selfTest)
        project = FileCommands::sampleProject();
    if (problem.isEmpty() && !project.isEmpty())
        window.files().open(project, problem);
}

/// Starts the trace file and the inspector if the command line asks for them.
void observe(const Options& options, MainWindow& window, TraceFile& trace, Inspector& inspector,
             QString& problem)
{
    if (!options.traceFile.isEmpty() && !trace.open(problem))
        return;
    window.files().setTraceFile(options.traceFile);
    window.log().setTraceFile(options.traceFile);
    QObject::connect(&trace, &TraceFile::failed, &window, [&](const QString& failure) {
        std::cerr << "workbench: " << qPrintable(failure) << '\n';
        if (!isUnattended(options))
            showProblem(&window, failure);
    });
    if (!options.inspectName.isEmpty())
        inspector.listen(options.inspectName, problem);
}

int runUnattended(const Options& options, MainWindow& window, const QString& problem)
{
    window.files().setAskBeforeLoss(false);
    if (!problem.isEmpty()) {
        std::cerr << "workbench: " << qPrintable(problem) << '\n';
        return 1;
    }
    return options.selfTest ? runSelfTest(window) : Tour(window, options.tourFolder).run();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("workbench"));
    set_custom_software_name(QStringLiteral("Workbench"));
    ApplyHostTheme(application);

    const Options options = parseOptions(QApplication::arguments());
    const bool unattended = isUnattended(options);
    // A run without a user does not change the user's recent files.
    const QTemporaryDir ownSettings;
    if (unattended)
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, ownSettings.path());

    Session session;
    TraceFile trace(session.trace(), options.traceFile);
    Inspector inspector;
    Language language;
    MainWindow window(session, language);
    window.actions()[ActionId::GuiThreadEvents]->setChecked(options.guiThreadEvents);
    QString problem;
    observe(options, window, trace, inspector, problem);
    const bool isObserved = problem.isEmpty();
    load(options, window, problem);
    if (!unattended)
        WindowSettings::restore(window);
    window.show();
    std::optional<Autosave> autosave; // A run without a user neither writes copies nor asks.
    if (unattended) {
        // Runs in the event loop, so that the panel ends as it does in a host.
        QTimer::singleShot(0, &window,
                           [&] { QApplication::exit(runUnattended(options, window, problem)); });
    } else {
        if (!problem.isEmpty())
            showProblem(&window, problem);
        autosave.emplace(window, window.files(), session.store());
        QTimer::singleShot(0, &*autosave, &Autosave::offerRecovery);
    }
    const int result = QApplication::exec();
    if (!unattended)
        WindowSettings::save(window);
    session.trace().flush();
    return result == 0 && (!isObserved || trace.hasFailed()) ? 1 : result;
}
