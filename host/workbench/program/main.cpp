#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "host/workbench/dialogs/Prompts.h"
#include "host/workbench/program/Console.h"
#include "host/workbench/program/Inspector.h"
#include "host/workbench/program/Options.h"
#include "host/workbench/program/SelfTest.h"
#include "host/workbench/replay/Replay.h"
#include "host/workbench/script/ScriptProgram.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/trace/TraceFile.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/Autosave.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/Language.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/MainWindow.h"
#include "host/workbench/window/WindowSettings.h"
#include "sdk/record/Recorder.h"

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <iostream>
#include <optional>

namespace {

bool isUnattended(const Options& options)
{
    return options.selfTest || !options.tourFolder.isEmpty() || !options.scripts.isEmpty();
}

/// Loads the library and the project of the command line.
void load(const Options& options, MainWindow& window, QStringList& problems)
{
    QString problem;
    if (window.session().library().load(options.library, problem))
        window.openPanel();
    else
        problems.append(problem);
    QString project = options.project;
    if (project.isEmpty() && options.selfTest)
        project = FileCommands::sampleProject();
    if (!project.isEmpty() && !window.files().open(project, problem))
        problems.append(problem);
}

/// Starts the recording if the command line asks for one.
void record(const Options& options, MainWindow& window, QStringList& problems)
{
    CRecorder& recorder = window.session().recorder();
    QObject::connect(&recorder, &CRecorder::failed, &window, [&](const QString& failure) {
        std::cerr << "workbench: " << qPrintable(failure) << '\n';
        if (!isUnattended(options))
            showProblem(&window, failure);
    });
    if (options.recordFile.isEmpty())
        return;
    QString problem;
    if (recorder.open(options.recordFile, problem))
        window.files().addInUse(options.recordFile);
    else
        problems.append(problem);
}

/// Starts the trace file and the inspector if the command line asks for them.
void observe(const Options& options, MainWindow& window, TraceFile& trace, Inspector& inspector,
             QStringList& problems)
{
    QString problem;
    if (!trace.path().isEmpty()) {
        if (trace.open(problem))
            window.files().addInUse(trace.path());
        else
            problems.append(problem);
    }
    QObject::connect(&trace, &TraceFile::failed, &window, [&](const QString& failure) {
        std::cerr << "workbench: " << qPrintable(failure) << '\n';
        if (!isUnattended(options))
            showProblem(&window, failure);
    });
    if (!options.inspectName.isEmpty() && !inspector.listen(options.inspectName, problem))
        problems.append(problem);
}

/// Returns what is to be run: the tour is a script that leaves its pictures in the folder.
ScriptProgram::Files scriptFiles(const Options& options)
{
    if (!options.tourFolder.isEmpty())
        return {{QStringLiteral(":/Workbench/scripts/tour.script")}, options.tourFolder, {}};
    return {options.scripts, options.pictureFolder, options.junitFile};
}

/// Returns the file that the live log is written to.
QString traceFile(const Options& options)
{
    if (options.tourFolder.isEmpty() || !options.traceFile.isEmpty())
        return options.traceFile;
    return QDir(options.tourFolder).filePath(QStringLiteral("trace.txt"));
}

void runUnattended(const Options& options, MainWindow& window, ScriptProgram& scripts,
                   const QStringList& problems)
{
    window.files().setAskBeforeLoss(false);
    if (!problems.isEmpty()) {
        scripts.giveUp(problems.join(QLatin1Char('\n')));
        QApplication::exit(1);
    } else if (options.selfTest) {
        QApplication::exit(runSelfTest(window));
    } else {
        QObject::connect(&scripts, &ScriptProgram::finished, &window,
                         [](int exitCode) { QApplication::exit(exitCode); });
        scripts.start(window);
    }
}

} // namespace

int main(int argc, char** argv)
{
    attachToConsole();
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#ifdef Q_OS_WIN
    // Qt would show 125 per cent as 100, and 150 as 200. X servers tell figures such as 100 dots
    // per inch, which nobody has chosen.
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
#endif
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("workbench"));
    set_custom_software_name(QStringLiteral("Workbench"));
    ApplyHostTheme(application);

    const Options options = parseOptions(QApplication::arguments());
    if (!options.problem.isEmpty()) {
        std::cerr << "workbench: " << qPrintable(options.problem) << '\n';
        return 2;
    }
    const bool unattended = isUnattended(options);
    // A run without a user does not change the user's recent files.
    const QTemporaryDir ownSettings;
    if (unattended)
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, ownSettings.path());

    if (!options.replayFile.isEmpty())
        return runReplay(
            {options.replayFile, options.library, options.keepOpen, options.pictureFolder});
    ScriptProgram scripts(standardSteps(), scriptFiles(options));
    if (const int refused = scripts.load())
        return refused;

    Session session;
    TraceFile trace(session.trace(), traceFile(options));
    Inspector inspector;
    Language language;
    MainWindow window(session, language);
    window.actions()[ActionId::GuiThreadEvents]->setChecked(options.guiThreadEvents);
    QStringList problems;
    observe(options, window, trace, inspector, problems);
    record(options, window, problems);
    const bool isObserved = problems.isEmpty();
    load(options, window, problems);
    if (!unattended)
        WindowSettings::restore(window);
    window.show();
    std::optional<Autosave> autosave; // A run without a user neither writes copies nor asks.
    if (unattended) {
        // Runs in the event loop, so that the panel ends as it does in a host.
        QTimer::singleShot(0, &window, [&] { runUnattended(options, window, scripts, problems); });
    } else {
        if (!problems.isEmpty())
            showProblem(&window, problems.join(QStringLiteral("\n\n")));
        autosave.emplace(window, window.files(), session.store());
        QTimer::singleShot(0, &*autosave, &Autosave::offerRecovery);
    }
    int result = QApplication::exec();
    const bool hasScripts = !options.scripts.isEmpty() || !options.tourFolder.isEmpty();
    if (hasScripts && problems.isEmpty() && !scripts.isFinished()) {
        scripts.giveUp(QStringLiteral("the program was ended before its scripts were"));
        result = ScriptProgram::kFailed;
    }
    if (!unattended)
        WindowSettings::save(window);
    session.trace().flush();
    // The end of the panel is recorded, too.
    if (session.recorder().isOpen())
        session.closePanel();
    const bool isLost = trace.hasFailed() || session.recorder().hasFailed();
    return result == 0 && (!isObserved || isLost) ? 1 : result;
}
