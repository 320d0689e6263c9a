#include "host/workbench/script/ScriptRunner.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace {

constexpr int kTickMs = 2;
constexpr int kMostDialogs = 100;
constexpr double kMsInSecond = 1000;

double seconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.elapsed()) / kMsInSecond;
}

QString caseWord()
{
    return QStringLiteral("case");
}

/// The next script is not to find them, and the program not to wait for them.
void closeDialogs()
{
    for (int count = 0; count < kMostDialogs; ++count) {
        QWidget* open = QApplication::activePopupWidget();
        if (!open)
            open = QApplication::activeModalWidget();
        if (!open)
            break;
        open->hide();
    }
}

bool isCase(const ScriptStep& step)
{
    return StepRegistry::words(*step.type) == caseWord();
}

} // namespace

bool ScriptResult::hasFailed() const
{
    return std::any_of(cases.begin(), cases.end(),
                       [](const ScriptCase& one) { return !one.failure.isEmpty(); });
}

ScriptRunner::ScriptRunner(ScriptRun& run, std::vector<Script> scripts, QObject* parent)
    : QObject(parent)
    , m_run(run)
    , m_scripts(std::move(scripts))
{
}

std::vector<ScriptResult> ScriptRunner::results() const
{
    const std::lock_guard guard(m_mutex);
    return m_results;
}

bool ScriptRunner::hasFailed() const
{
    return std::any_of(m_results.begin(), m_results.end(),
                       [](const ScriptResult& result) { return result.hasFailed(); });
}

void ScriptRunner::start()
{
    if (m_script < m_scripts.size())
        beginScript();
    schedule();
}

/// A fresh timer each time: one that is in its slot does not fire in the event loops below it.
void ScriptRunner::schedule()
{
    QTimer::singleShot(kTickMs, Qt::PreciseTimer, this, &ScriptRunner::tick);
}

void ScriptRunner::tick()
{
    emit ticked();
    if (m_script >= m_scripts.size()) {
        emit finished();
        return;
    }
    schedule();
    if (m_isAsking) {
        // A step runs an event loop of its own.
        if (m_isInStep && seconds(m_stepTime) > limit())
            failStep(QStringLiteral("not after %1 s: it keeps the script waiting").arg(limit()));
        return;
    }
    if (m_step >= script().steps.size()) {
        endScript();
        return;
    }
    if (!m_isInStep)
        beginStep();
    m_isAsking = true;
    const Progress progress = step().type->run(m_run, step());
    m_isAsking = false;
    if (!m_isInStep)
        return; // it was late, and has failed
    if (progress.state() == Progress::State::Done) {
        endStep();
        return;
    }
    if (progress.state() == Progress::State::Failed)
        failStep(progress.reason());
    else if (seconds(m_stepTime) > limit())
        failStep(QStringLiteral("not after %1 s: %2").arg(limit()).arg(progress.reason()));
}

double ScriptRunner::limit() const
{
    return step().within.value_or(m_run.timeout);
}

void ScriptRunner::beginScript()
{
    m_step = 0;
    m_isInStep = false;
    {
        const std::lock_guard guard(m_mutex);
        m_results.push_back({script().name, 0, {}});
    }
    m_run.begin(script());
    if (script().steps.isEmpty() || !isCase(script().steps.constFirst()))
        beginCase(script().name);
}

void ScriptRunner::beginStep()
{
    m_isInStep = true;
    m_run.nextStep();
    m_stepTime.start();
    if (!isCase(step()))
        return;
    endCase({});
    beginCase(step().value("NAME"));
}

void ScriptRunner::endStep()
{
    const std::lock_guard guard(m_mutex);
    ++m_results.back().steps;
    ++m_step;
    m_isInStep = false;
}

void ScriptRunner::failStep(const QString& reason)
{
    const QString message =
        problemText(script().name, {step().line, step().column,
                                    QStringLiteral("%1\n%2").arg(step().text, reason)});
    endCase(message);
    emit stepFailed(message);
    const std::lock_guard guard(m_mutex);
    for (int next = m_step + 1; next < script().steps.size(); ++next) {
        if (isCase(script().steps.at(next)))
            m_results.back().cases.push_back({script().steps.at(next).value("NAME"), 0, true, {}});
    }
    m_step = script().steps.size();
    m_isInStep = false;
}

void ScriptRunner::beginCase(const QString& name)
{
    const std::lock_guard guard(m_mutex);
    m_results.back().cases.push_back({name, 0, false, {}});
    m_caseTime.start();
}

void ScriptRunner::endCase(const QString& failure)
{
    const std::lock_guard guard(m_mutex);
    std::vector<ScriptCase>& cases = m_results.back().cases;
    if (cases.empty())
        return;
    cases.back().seconds = seconds(m_caseTime);
    cases.back().failure = failure;
}

void ScriptRunner::endScript()
{
    if (!m_results.back().hasFailed())
        endCase({});
    closeDialogs();
    emit scriptFinished(m_results.back());
    if (++m_script >= m_scripts.size())
        return;
    beginScript();
    m_run.act([this] { m_run.startOver(); });
}

void addCaseSteps(StepRegistry& registry)
{
    // The runner itself begins the section.
    registry.add({QStringLiteral("case NAME"),
                  [](ScriptRun&, const ScriptStep&) { return Progress::done(); },
                  {}});
}
