// Steps about the live log: the calls of the panel and the lines of the host's log.

#include "host/workbench/events/Notifier.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/script/Targets.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/trace/ShortIds.h"

#include <QRegularExpression>

namespace {

/// Ticks in which what was queued so far gets its turn.
constexpr int kSettleTicks = 5;

/// Returns the pattern of an argument as the log has it.
QString argumentPattern(ScriptRun& run, const ScriptToken& token)
{
    switch (token.kind) {
    case ScriptToken::Kind::Record:
        return QRegularExpression::escape(shortId(run.identity(token.text)));
    case ScriptToken::Kind::Text:
        return QRegularExpression::escape(QLatin1Char('"') + run.withFolder(token.text)
                                          + QLatin1Char('"'));
    case ScriptToken::Kind::List: {
        QList<QUuid> ids;
        QStringList texts;
        for (const ScriptToken& item : token.items) {
            texts.append(item.text);
            if (item.kind == ScriptToken::Kind::Record)
                ids.append(run.identity(item.text));
        }
        return QRegularExpression::escape(ids.size() == texts.size()
                                              ? shortIds(ids)
                                              : QLatin1Char('[') + texts.join(QStringLiteral(", "))
                                                    + QLatin1Char(']'));
    }
    case ScriptToken::Kind::Word:
        break;
    }
    return token.text == QLatin1String("*") ? QStringLiteral(".*")
                                            : QRegularExpression::escape(token.text);
}

/// Returns the pattern of the call that a step is about. Without arguments, any are meant; "none"
/// stands for a call without arguments.
QRegularExpression callPattern(ScriptRun& run, const ScriptStep& step)
{
    QStringList arguments;
    for (const ScriptToken& token : step.all("ARGUMENT"))
        arguments.append(argumentPattern(run, token));
    QString inside =
        arguments.isEmpty() ? QStringLiteral(".*") : arguments.join(QStringLiteral(", "));
    if (step.token("ARGUMENT").isWord(QStringLiteral("none")))
        inside.clear();
    QStringList answers;
    for (const ScriptToken& token : step.all("ANSWER"))
        answers.append(argumentPattern(run, token));
    const QString answer = answers.isEmpty()
                               ? QStringLiteral("( = .*)?")
                               : QStringLiteral(" = ") + answers.join(QLatin1Char(' '));
    return QRegularExpression(
        QRegularExpression::anchoredPattern(QRegularExpression::escape(step.value("OPERATION"))
                                            + QStringLiteral("\\(") + inside + QStringLiteral("\\)")
                                            + answer),
        QRegularExpression::DotMatchesEverythingOption);
}

int findCall(ScriptRun& run, const ScriptStep& step, int from)
{
    const QRegularExpression pattern = callPattern(run, step);
    return run.log().find(TraceEntry::Kind::Call, from,
                          [&](const QString& text) { return pattern.match(text).hasMatch(); });
}

QString callsSince(ScriptRun& run, int from)
{
    return QStringLiteral("the calls are:\n") + run.log().lastLines(TraceEntry::Kind::Call, from);
}

/// Looks behind the call that the step before has found, so that these steps tell an order.
Progress expectCall(ScriptRun& run, const ScriptStep& step)
{
    const int found = findCall(run, step, run.callMark);
    if (found >= 0) {
        run.callMark = found + 1;
        return Progress::done();
    }
    return Progress::waiting(callsSince(run, run.callMark));
}

/// Leaves the place where the next "expect call" begins as it is.
Progress expectUnorderedCall(ScriptRun& run, const ScriptStep& step)
{
    return Progress::when(findCall(run, step, run.forgotten) >= 0, callsSince(run, run.forgotten));
}

/// Waits until the panel is at rest.
Progress expectNoCall(ScriptRun& run, const ScriptStep& step)
{
    if (!run.session().notifier().isIdle() || run.phase < kSettleTicks) {
        ++run.phase;
        return Progress::waiting(QStringLiteral("events are not delivered"));
    }
    return findCall(run, step, run.callMark) < 0 ? Progress::done()
                                                 : Progress::failed(callsSince(run, run.callMark));
}

Progress expectLine(ScriptRun& run, const ScriptStep& step, TraceEntry::Kind kind)
{
    const QString wanted = step.value("TEXT");
    const int found = run.log().find(kind, run.forgotten, [&](const QString& text) {
        return text.contains(wanted) || Targets::matches(wanted, text);
    });
    return Progress::when(found >= 0, QStringLiteral("the lines are:\n")
                                          + run.log().lastLines(kind, run.forgotten));
}

} // namespace

void addCallSteps(StepRegistry& registry)
{
    registry.add(
        {QStringLiteral("expect call OPERATION [ARGUMENT...] [=] [ANSWER...]"), expectCall, {}});
    registry.add({QStringLiteral("expect unordered call OPERATION [ARGUMENT...] [=] [ANSWER...]"),
                  expectUnorderedCall,
                  {}});
    registry.add({QStringLiteral("expect no call OPERATION [ARGUMENT...] [=] [ANSWER...]"),
                  expectNoCall,
                  {}});
    registry.add({QStringLiteral("forget calls"),
                  [](ScriptRun& run, const ScriptStep&) {
                      run.callMark = run.log().end();
                      run.forgotten = run.callMark;
                      return Progress::done();
                  },
                  {}});
    registry.add({QStringLiteral("expect log TEXT"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return expectLine(run, step, TraceEntry::Kind::Log);
                  },
                  {}});
    registry.add({QStringLiteral("expect finding TEXT"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return expectLine(run, step, TraceEntry::Kind::Finding);
                  },
                  {}});
    registry.add({QStringLiteral("expect event TEXT"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return expectLine(run, step, TraceEntry::Kind::Event);
                  },
                  {}});
}
