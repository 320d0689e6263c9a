#pragma once

#include "host/workbench/script/ScriptTokens.h"

#include <QHash>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

class ScriptRun;
struct ScriptStep;

/// What a step says when it is asked to proceed.
class Progress final
{
public:
    enum class State { Done, Waiting, Failed };

    static Progress done() { return Progress(State::Done, {}); }

    /// The step is asked again, until its time-out: then it has failed for this reason.
    static Progress waiting(const QString& reason) { return Progress(State::Waiting, reason); }

    /// The step has failed for good.
    static Progress failed(const QString& reason) { return Progress(State::Failed, reason); }

    /// The step is done if `holds`, else it waits.
    static Progress when(bool holds, const QString& reason)
    {
        return holds ? done() : waiting(reason);
    }

    State state() const { return m_state; }
    QString reason() const { return m_reason; }

private:
    Progress(State state, QString reason)
        : m_state(state)
        , m_reason(std::move(reason))
    {
    }

    State m_state;
    QString m_reason;
};

/// A kind of step that scripts know.
struct StepType
{
    /// Proceeds with the step. Called on the GUI thread from a timer until the step is done, also
    /// inside the event loops of dialogs. Must not run an event loop itself: ScriptRun::act() does
    /// what may.
    using Run = std::function<Progress(ScriptRun&, const ScriptStep&)>;

    /// Returns the first error in the arguments, before anything runs.
    using Check = std::function<std::optional<ScriptProblem>(const ScriptStep&)>;

    /// The words of the step and its parameters: small words stand for themselves, `on|off` is a
    /// choice, `NAME` a text, `COUNT`, `NUMBER` and `SECONDS` are numbers; `[NAME]` may be left
    /// out, `NAME...` may be repeated: "host move RECORD... to GROUP".
    QString usage;
    Run run;
    Check check;
    bool hasBlock = false; ///< Lines follow the step, up to a line "end".
};

/// One step of a script.
struct ScriptStep
{
    const StepType* type = nullptr; ///< Owned by the registry.
    int line = 0;
    int column = 0;
    QString text; ///< The line as it is written, without leading spaces.
    QHash<QString, QVector<ScriptToken>> arguments; ///< By the name of the parameter.
    QVector<QString> block;
    int blockLine = 0;            ///< The line of the first line of the block.
    std::optional<double> within; ///< The time-out of this step in seconds.

    bool has(const char* name) const { return arguments.contains(QLatin1String(name)); }
    QVector<ScriptToken> all(const char* name) const
    {
        return arguments.value(QLatin1String(name));
    }
    ScriptToken token(const char* name) const { return all(name).value(0); }

    /// Returns the text of an argument, empty if it is left out.
    QString value(const char* name) const { return token(name).text; }
    QStringList values(const char* name) const;
    int number(const char* name) const { return value(name).toInt(); }

    /// Returns an error at the place of an argument.
    ScriptProblem problemAt(const ScriptToken& token, const QString& reason) const
    {
        return {line, token.column, reason};
    }
};

/// The kinds of steps by their words.
class StepRegistry final
{
public:
    void add(const StepType& type);

    /// Returns the type whose words begin the line; of several, the one with most words. Null if
    /// there is none.
    const StepType* find(const QVector<ScriptToken>& tokens) const;

    /// Returns the type whose words are most like the line, null if none is much like it.
    const StepType* nearest(const QVector<ScriptToken>& tokens) const;

    QList<const StepType*> all() const;

    /// Returns the words with which the steps of `type` begin.
    static QString words(const StepType& type);

    /// Assigns the tokens behind the words of the step to its parameters; returns the first error.
    static std::optional<ScriptProblem> assign(const QVector<ScriptToken>& tokens,
                                               ScriptStep& step);

private:
    QHash<QString, std::shared_ptr<const StepType>> m_types; // by their words
};
