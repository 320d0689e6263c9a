#pragma once

#include "sdk/relay/Operations.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>

/// What goes wrong when a rule strikes.
enum class FaultEffect : qint32 {
    Slow,            ///< The call takes `milliseconds` longer.
    DefaultAnswer,   ///< The host answers with a default-constructed value, and is not asked.
    WrongIdentity,   ///< Another identity stands in the answer.
    Refusal,         ///< The host refuses the request and does nothing of it.
    Late,            ///< The event comes `milliseconds` later, behind others.
    Lost,            ///< The event does not come.
    Twice,           ///< The event comes twice.
    WrongType,       ///< The event comes with an argument that the panel cannot read.
    GuiThread,       ///< The event comes on the GUI thread.
    OtherThread,     ///< The event comes on a thread of its own.
    HandlerReplaced, ///< The host assigns another handler, without Reconnect().
    PanelDestroyed,  ///< The host destroys the panel.
};

/// A fault that the host makes on purpose: where, which time, and what happens.
///
/// As a text, in scripts and in the log: `GetProcessorNode call 3 slow 2000`, `event 25
/// probability 0.5 seed 7 lost`.
struct FaultRule
{
    static constexpr qint32 kMostMs = 60000;

    /// An operation of the handler, an event such as "event 25", or all of them, "*" and
    /// "event *".
    QString at = QStringLiteral("*");
    qint32 call = 0;       ///< Strikes this one only, counted from 1; 0 goes by the probability.
    float probability = 1; ///< From 0 to 1.
    quint32 seed = 1;      ///< Of the random numbers of this rule.
    FaultEffect effect = FaultEffect::Slow;
    qint32 milliseconds = 2000; ///< Of Slow and Late.
    bool enabled = true;

    /// Returns whether the rule is about events.
    bool isOfEvents() const;

    /// Returns whether the rule is about this operation, and its effect can happen there.
    bool isAbout(const Operations::Operation& operation) const;

    /// Returns whether the rule is about the event of this number.
    bool isAbout(quint32 event) const;
};

bool operator==(const FaultRule& one, const FaultRule& other);
inline bool operator!=(const FaultRule& one, const FaultRule& other)
{
    return !(one == other);
}

/// Returns all effects, in the order of the enumeration.
QList<FaultEffect> allFaultEffects();

/// Returns the name in project files and scripts, such as "wrongIdentity".
QString faultEffectName(FaultEffect effect);

/// Returns the effect of that name, if there is one.
std::optional<FaultEffect> faultEffectOfName(const QString& name);

/// Returns whether the effect needs the milliseconds of its rule.
bool faultEffectHasTime(FaultEffect effect);

/// What is wrong with a rule.
struct FaultProblem
{
    const char* field; ///< As in a project file.
    QString reason;
};

/// Returns what is wrong with `rule`, if anything.
std::optional<FaultProblem> checkFaultRule(const FaultRule& rule);

/// Returns the rule as a text.
QString faultText(const FaultRule& rule);

/// Returns the rule that stands in `words`; sets `problem` if there is none.
std::optional<FaultRule> faultOfWords(const QStringList& words, QString& problem);

/// Calls `visit(name, field)` for each field, under its name in a project file.
template <typename Rule, typename Visitor>
void visitFaultFields(Rule& rule, Visitor& visit)
{
    visit("at", rule.at);
    visit("call", rule.call);
    visit("probability", rule.probability);
    visit("seed", rule.seed);
    visit("effect", rule.effect);
    visit("milliseconds", rule.milliseconds);
    visit("enabled", rule.enabled);
}
