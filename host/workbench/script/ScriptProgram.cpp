#include "host/workbench/script/ScriptProgram.h"

#include "host/workbench/script/JUnitReport.h"
#include "host/workbench/session/OwnFile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace {

constexpr int kLogLinesKept = 200;

/// How long the GUI thread may be away from its event loop.
constexpr std::chrono::minutes kStuckAfter(2);

void complain(const QString& message)
{
    std::cerr << "workbench: " << message.toLocal8Bit().constData() << '\n';
}

/// Tells the log of a failure from other files.
QString logStart()
{
    return QStringLiteral("Failure of a script of the workbench\n\n");
}

/// Returns whether there is the log of a failure.
bool isLog(const QString& path)
{
    const QByteArray start = logStart().toUtf8();
    QFile former(path);
    return former.open(QIODevice::ReadOnly) && former.read(start.size()) == start;
}

} // namespace

ScriptProgram::ScriptProgram(StepRegistry registry, const Files& files, QObject* parent)
    : QObject(parent)
    , m_registry(std::move(registry))
    , m_files(files)
{
}

int ScriptProgram::load()
{
    QList<ScriptProblem> problems;
    int all = 0;
    for (const QString& path : qAsConst(m_files.scripts)) {
        problems.clear();
        m_scripts.push_back(loadScript(path, m_registry, problems));
        for (const ScriptProblem& problem : qAsConst(problems))
            complain(problemText(m_scripts.back().name, problem));
        all += problems.size();
        if (problems.isEmpty() && m_scripts.back().steps.isEmpty()) {
            complain(QStringLiteral("%1: it has no steps").arg(m_scripts.back().name));
            ++all;
        }
    }
    QString problem;
    if (!m_files.junit.isEmpty() && !JUnitReport(m_files.junit).check(problem)) {
        complain(problem);
        ++all;
    }
    if (!m_files.pictures.isEmpty() && !QDir().mkpath(m_files.pictures)) {
        complain(
            QStringLiteral("%1 cannot be written").arg(QDir::toNativeSeparators(m_files.pictures)));
        ++all;
    }
    return all == 0 ? 0 : kRefused;
}

void ScriptProgram::start(MainWindow& window)
{
    m_run = std::make_unique<ScriptRun>(window, m_files.pictures);
    m_runner = std::make_unique<ScriptRunner>(*m_run, std::move(m_scripts));
    connect(m_runner.get(), &ScriptRunner::scriptFinished, this, &ScriptProgram::tell);
    connect(m_runner.get(), &ScriptRunner::stepFailed, this, &ScriptProgram::keepFailure);
    connect(m_runner.get(), &ScriptRunner::finished, this, &ScriptProgram::end);
    // A thread that is stuck cannot be ended in any other way.
    m_watchdog = std::make_unique<Watchdog>(kStuckAfter, [this] {
        giveUp(QStringLiteral("the GUI thread has not come back to its event loop for %1 s")
                   .arg(std::chrono::seconds(kStuckAfter).count()));
        std::_Exit(kFailed);
    });
    connect(m_runner.get(), &ScriptRunner::ticked, this, [this] { m_watchdog->alive(); });
    m_runner->start();
}

void ScriptProgram::tell(const ScriptResult& result) const
{
    double seconds = 0;
    for (const ScriptCase& one : result.cases)
        seconds += one.seconds;
    std::cout << "workbench: " << result.name.toLocal8Bit().constData() << ": " << result.steps
              << " steps done in " << seconds << " s"
              << (result.hasFailed() ? ", then one failed" : "") << std::endl;
}

/// Says what failed, and keeps what was there to be seen.
void ScriptProgram::keepFailure(const QString& message)
{
    complain(message);
    if (!m_run->takesPictures())
        return;
    m_run->takePictureAside(QStringLiteral("failure"));
    const QString path = QDir(m_run->pictureFolder()).filePath(QStringLiteral("failure-log.txt"));
    if (!isFree(path, [&] { return isLog(path); })) {
        complain(QStringLiteral("%1 cannot be written: what is there is not the log of a failure")
                     .arg(QDir::toNativeSeparators(path)));
        return;
    }
    QSaveFile log(path);
    const QByteArray text =
        (logStart() + message + QStringLiteral("\n\n")
         + m_run->log().tail(kLogLinesKept).join(QLatin1Char('\n')) + QLatin1Char('\n'))
            .toUtf8();
    if (!log.open(QIODevice::WriteOnly) || log.write(text) != text.size() || !log.commit())
        complain(log.errorString());
}

void ScriptProgram::giveUp(const QString& reason)
{
    complain(reason);
    if (m_files.junit.isEmpty())
        return;
    std::vector<ScriptResult> results =
        m_runner ? m_runner->results() : std::vector<ScriptResult>();
    ScriptCase end;
    end.name = QStringLiteral("end");
    end.failure = reason;
    ScriptResult rest;
    rest.name = QStringLiteral("workbench");
    rest.cases.push_back(end);
    results.push_back(rest);
    QString problem;
    if (!JUnitReport(m_files.junit).write(results, problem))
        complain(problem);
}

void ScriptProgram::end()
{
    m_isFinished = true;
    m_watchdog.reset();
    const QStringList lost = m_run->lostPictures();
    for (const QString& problem : lost)
        complain(problem);
    int exitCode = m_runner->hasFailed() || !lost.isEmpty() ? kFailed : 0;
    if (m_run->pictureCount() > 0)
        std::cout << "workbench: " << m_run->pictureCount() << " pictures are in "
                  << m_run->pictureFolder().toLocal8Bit().constData() << std::endl;
    QString problem;
    if (!m_files.junit.isEmpty()
        && !JUnitReport(m_files.junit).write(m_runner->results(), problem)) {
        complain(problem);
        exitCode = kFailed;
    }
    emit finished(exitCode);
}
