// Steps about the faults that the host makes.

#include "host/workbench/project/FaultRule.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/session/Session.h"

namespace {

std::optional<FaultRule> ruleOf(const ScriptStep& step, QString& problem)
{
    return faultOfWords(step.values("RULE"), problem);
}

std::optional<ScriptProblem> checkRule(const ScriptStep& step)
{
    QString problem;
    if (ruleOf(step, problem))
        return std::nullopt;
    return step.problemAt(step.token("RULE"), problem);
}

/// Adds the rule behind those that are there.
Progress addFault(ScriptRun& run, const ScriptStep& step)
{
    QString problem;
    const auto rule = ruleOf(step, problem);
    ProjectStore& store = run.session().store();
    const auto faults = store.read([](const Project& project) { return project.faults; });
    if (!rule || faults.size() >= ProjectRanges::kMaxFaults)
        return Progress::failed(
            rule ? QStringLiteral("there are %1 rules already").arg(ProjectRanges::kMaxFaults)
                 : problem);
    return run.once(
        [&store, faults, added = *rule] { store.setFaults(faults + QList<FaultRule>{added}); });
}

/// Waits until all rules together have struck so often.
Progress expectStrikes(ScriptRun& run, const ScriptStep& step)
{
    qint64 strikes = 0;
    for (const qint64 each : run.session().faults().strikes())
        strikes += each;
    return Progress::when(strikes == step.number("COUNT"),
                          QStringLiteral("faults have struck %1 times").arg(strikes));
}

} // namespace

void addFaultSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("fault RULE..."), addFault, checkRule});
    registry.add({QStringLiteral("no faults"),
                  [](ScriptRun& run, const ScriptStep&) {
                      return run.once([&run] { run.session().store().setFaults({}); });
                  },
                  {}});
    registry.add({QStringLiteral("expect strikes COUNT"), expectStrikes, {}});
}
