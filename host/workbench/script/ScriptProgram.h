#pragma once

#include "host/workbench/script/ScriptParser.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/ScriptRunner.h"
#include "host/workbench/script/Watchdog.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

/// Runs the scripts of the command line and tells what became of them: on the standard streams, in
/// pictures, as JUnit XML. GUI thread.
class ScriptProgram final : public QObject
{
    Q_OBJECT

public:
    static constexpr int kFailed = 1;

    /// Nothing was run: a script or a file is not as it has to be.
    static constexpr int kRefused = 2;

    struct Files
    {
        QStringList scripts;
        QString pictures; ///< A folder, created if need be; empty for none.
        QString junit;    ///< Empty for none.
    };

    ScriptProgram(StepRegistry registry, const Files& files, QObject* parent = nullptr);

    /// Reads the scripts. Returns 0, or the exit code after messages to the standard error stream.
    int load();

    /// Runs them in `window`, which must outlive this object. Emits finished() at the end.
    void start(MainWindow& window);

    /// Ends the scripts that are not finished: says `reason`, and writes the report with it.
    void giveUp(const QString& reason);

    bool isFinished() const { return m_isFinished; }

signals:
    void finished(int exitCode);

private:
    void tell(const ScriptResult& result) const;
    void keepFailure(const QString& message);
    void end();

    StepRegistry m_registry;
    Files m_files;
    std::vector<Script> m_scripts;
    std::unique_ptr<ScriptRun> m_run;
    std::unique_ptr<ScriptRunner> m_runner;
    std::unique_ptr<Watchdog> m_watchdog;
    bool m_isFinished = false;
};
