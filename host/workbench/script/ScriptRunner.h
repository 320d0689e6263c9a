#pragma once

#include "host/workbench/script/ScriptParser.h"
#include "host/workbench/script/ScriptRun.h"

#include <QElapsedTimer>
#include <QObject>

#include <mutex>
#include <vector>

/// What became of a named section of a script, or of a script without sections.
struct ScriptCase
{
    QString name;
    double seconds = 0;
    bool isSkipped = false; ///< Not run, because an earlier step of the script failed.
    QString failure;        ///< Empty if all went well; begins with file, line and column.
};

/// What became of a script.
struct ScriptResult
{
    QString name;
    int steps = 0; ///< That were done.
    std::vector<ScriptCase> cases;

    bool hasFailed() const;
};

/// Runs scripts one after the other, step by step by a timer, so that it goes on while a dialog or
/// the host keeps its caller. A step that is not done in time ends its script. GUI thread, unless a
/// function says otherwise.
class ScriptRunner final : public QObject
{
    Q_OBJECT

public:
    /// `run` must outlive this object.
    ScriptRunner(ScriptRun& run, std::vector<Script> scripts, QObject* parent = nullptr);

    void start();

    /// Any thread.
    std::vector<ScriptResult> results() const;
    bool hasFailed() const;

signals:
    /// Emitted all the time, as long as the event loop runs.
    void ticked();

    /// Emitted after each script.
    void scriptFinished(const ScriptResult& result);

    /// Emitted after a failed step, before its dialogs are closed.
    void stepFailed(const QString& message);

    void finished();

private:
    const Script& script() const { return m_scripts.at(m_script); }
    const ScriptStep& step() const { return script().steps.at(m_step); }
    double limit() const;
    void schedule();
    void tick();
    void beginScript();
    void beginStep();
    void endStep();
    void failStep(const QString& reason);
    void beginCase(const QString& name);
    void endCase(const QString& failure);
    void endScript();

    ScriptRun& m_run;
    std::vector<Script> m_scripts;
    mutable std::mutex m_mutex;
    std::vector<ScriptResult> m_results; // changed on the GUI thread, under m_mutex
    std::size_t m_script = 0;
    int m_step = 0;
    bool m_isInStep = false;
    bool m_isAsking = false;
    QElapsedTimer m_stepTime;
    QElapsedTimer m_caseTime;
};

/// Adds the step that begins a named section.
void addCaseSteps(StepRegistry& registry);
