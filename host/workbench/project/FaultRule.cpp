#include "host/workbench/project/FaultRule.h"

#include "Interface/HostEvents.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace {

constexpr char kAny[] = "*";
constexpr char kEvent[] = "event ";

struct FaultRuleMessages
{
    Q_DECLARE_TR_FUNCTIONS(FaultRule)
};

enum Place : unsigned { Calls = 1, Events = 2, Anywhere = 3 };

struct Named
{
    FaultEffect effect;
    const char* name;
    Place place;
    bool hasTime;
};

constexpr Named kEffects[] = {
    {FaultEffect::Slow, "slow", Calls, true},
    {FaultEffect::DefaultAnswer, "defaultAnswer", Calls, false},
    {FaultEffect::WrongIdentity, "wrongIdentity", Calls, false},
    {FaultEffect::Refusal, "refusal", Calls, false},
    {FaultEffect::Late, "late", Events, true},
    {FaultEffect::Lost, "lost", Events, false},
    {FaultEffect::Twice, "twice", Events, false},
    {FaultEffect::WrongType, "wrongType", Events, false},
    {FaultEffect::GuiThread, "guiThread", Events, false},
    {FaultEffect::OtherThread, "otherThread", Events, false},
    {FaultEffect::HandlerReplaced, "handlerReplaced", Anywhere, false},
    {FaultEffect::PanelDestroyed, "panelDestroyed", Anywhere, false},
};

const Named& named(FaultEffect effect)
{
    return *std::find_if(std::begin(kEffects), std::end(kEffects),
                         [&](const Named& known) { return known.effect == effect; });
}

bool hasIdentity(int type)
{
    return type == qMetaTypeId<QUuid>() || type == qMetaTypeId<ProcessorNode>()
           || type == qMetaTypeId<ProcessorGroupNode>() || type == qMetaTypeId<QList<QUuid>>()
           || type == qMetaTypeId<QList<ProcessorNode>>()
           || type == qMetaTypeId<QList<ProcessorGroupNode>>();
}

bool fits(FaultEffect effect, const Operations::Operation& operation)
{
    // The panel does not ask with these two: it says who it is, and lets the host add entries.
    const bool isAsked = qstrcmp(operation.name, "SetObserver") != 0;
    const int answer = operation.answerType();
    switch (effect) {
    case FaultEffect::DefaultAnswer:
        return answer != QMetaType::Void || Operations::count(operation.outs) > 0;
    case FaultEffect::WrongIdentity:
        return hasIdentity(answer);
    case FaultEffect::Refusal:
        return isAsked && operation.kind == Operations::Kind::Request;
    default:
        return isAsked && (named(effect).place & Calls) != 0;
    }
}

QString eventNumber(const QString& at)
{
    return at.mid(static_cast<int>(qstrlen(kEvent)));
}

std::optional<FaultProblem> checkPlace(const FaultRule& rule)
{
    const Named& effect = named(rule.effect);
    const auto misplaced = [&](const QString& reason) {
        return FaultProblem{"effect", reason.arg(QLatin1String(effect.name), rule.at)};
    };
    if (rule.isOfEvents()) {
        bool isNumber = false;
        const uint number = eventNumber(rule.at).toUInt(&isNumber);
        if (eventNumber(rule.at) != QLatin1String(kAny)
            && !(isNumber && number <= HostEvents::kLastNumber))
            return FaultProblem{
                "at", FaultRuleMessages::tr("an event from 0 to %1, or event *, is expected")
                          .arg(HostEvents::kLastNumber)};
        if ((effect.place & Events) == 0)
            return misplaced(FaultRuleMessages::tr("%1 does not apply to %2"));
        return std::nullopt;
    }
    if (rule.at == QLatin1String(kAny)) {
        if ((effect.place & Calls) == 0)
            return misplaced(FaultRuleMessages::tr("%1 applies to events, not to %2"));
        return std::nullopt;
    }
    const Operations::Operation* operation = Operations::find(qPrintable(rule.at));
    if (!operation)
        return FaultProblem{
            "at", FaultRuleMessages::tr(
                      "%1 is no operation of the handler, and no event such as \"event 25\"")
                      .arg(rule.at)};
    if (!fits(rule.effect, *operation))
        return misplaced(FaultRuleMessages::tr("%1 does not apply to %2"));
    return std::nullopt;
}

/// Reads the words of a rule one after the other.
class Words final
{
public:
    explicit Words(const QStringList& words)
        : m_words(words)
    {
    }

    bool isAtEnd() const { return m_next >= m_words.size(); }
    QString take() { return m_words.value(m_next++); }

    /// Takes `word` if it comes next.
    bool takeWord(const char* word)
    {
        const bool isNext = m_words.value(m_next) == QLatin1String(word);
        m_next += isNext ? 1 : 0;
        return isNext;
    }

    template <typename Number, typename Read>
    bool takeNumber(const char* name, Number& number, const Read& read)
    {
        if (!takeWord(name))
            return true;
        return read(take(), number);
    }

private:
    const QStringList& m_words;
    int m_next = 0;
};

bool readWhole(const QString& text, qint32& number)
{
    bool isNumber = false;
    number = text.toInt(&isNumber);
    return isNumber;
}

bool readNatural(const QString& text, quint32& number)
{
    bool isNumber = false;
    number = text.toUInt(&isNumber);
    return isNumber;
}

bool readFraction(const QString& text, float& number)
{
    bool isNumber = false;
    number = text.toFloat(&isNumber);
    return isNumber;
}

} // namespace

bool FaultRule::isOfEvents() const
{
    return at.startsWith(QLatin1String(kEvent));
}

bool FaultRule::isAbout(const Operations::Operation& operation) const
{
    return !isOfEvents() && (at == QLatin1String(kAny) || at == QLatin1String(operation.name))
           && fits(effect, operation);
}

bool FaultRule::isAbout(quint32 event) const
{
    return isOfEvents()
           && (eventNumber(at) == QLatin1String(kAny) || eventNumber(at).toUInt() == event);
}

bool operator==(const FaultRule& one, const FaultRule& other)
{
    const auto all = [](const FaultRule& rule) {
        return std::tie(rule.at, rule.call, rule.probability, rule.seed, rule.effect,
                        rule.milliseconds, rule.enabled);
    };
    return all(one) == all(other);
}

QList<FaultEffect> allFaultEffects()
{
    QList<FaultEffect> effects;
    for (const Named& known : kEffects)
        effects.append(known.effect);
    return effects;
}

QString faultEffectName(FaultEffect effect)
{
    return QLatin1String(named(effect).name);
}

std::optional<FaultEffect> faultEffectOfName(const QString& name)
{
    const auto* const found =
        std::find_if(std::begin(kEffects), std::end(kEffects),
                     [&](const Named& known) { return name == QLatin1String(known.name); });
    return found == std::end(kEffects) ? std::nullopt : std::optional(found->effect);
}

bool faultEffectHasTime(FaultEffect effect)
{
    return named(effect).hasTime;
}

std::optional<FaultProblem> checkFaultRule(const FaultRule& rule)
{
    if (rule.call < 0)
        return FaultProblem{"call", FaultRuleMessages::tr("a whole number from 0 is expected")};
    // Also refuses what is not a number.
    if (!(rule.probability >= 0 && rule.probability <= 1))
        return FaultProblem{"probability",
                            FaultRuleMessages::tr("a number from 0 to 1 is expected")};
    if (rule.milliseconds < 0 || rule.milliseconds > FaultRule::kMostMs)
        return FaultProblem{"milliseconds",
                            FaultRuleMessages::tr("a whole number from 0 to %1 is expected")
                                .arg(FaultRule::kMostMs)};
    return checkPlace(rule);
}

QString faultText(const FaultRule& rule)
{
    QString text = rule.at;
    if (rule.call > 0)
        text += QStringLiteral(" call %1").arg(rule.call);
    else if (rule.probability < 1)
        text += QStringLiteral(" probability %1 seed %2")
                    .arg(static_cast<double>(rule.probability))
                    .arg(rule.seed);
    text += QLatin1Char(' ') + faultEffectName(rule.effect);
    if (faultEffectHasTime(rule.effect))
        text += QStringLiteral(" %1").arg(rule.milliseconds);
    return text;
}

std::optional<FaultRule> faultOfWords(const QStringList& words, QString& problem)
{
    Words rest(words);
    FaultRule rule;
    rule.at = rest.take();
    if (rule.at == QLatin1String("event"))
        rule.at += QLatin1Char(' ') + rest.take();
    const bool areNumbers = rest.takeNumber("call", rule.call, readWhole)
                            && rest.takeNumber("probability", rule.probability, readFraction)
                            && rest.takeNumber("seed", rule.seed, readNatural);
    const auto effect = faultEffectOfName(rest.take());
    if (!areNumbers || !effect) {
        problem = FaultRuleMessages::tr(
            "a rule such as \"GetProcessorNode call 3 slow 2000\" is expected");
        return std::nullopt;
    }
    rule.effect = *effect;
    if (faultEffectHasTime(*effect) && !rest.isAtEnd()
        && !readWhole(rest.take(), rule.milliseconds))
        rule.milliseconds = -1;
    const auto found = checkFaultRule(rule);
    if (found || !rest.isAtEnd()) {
        problem =
            found ? FaultRuleMessages::tr("%1: %2").arg(QLatin1String(found->field), found->reason)
                  : FaultRuleMessages::tr("nothing is expected behind %1").arg(faultText(rule));
        return std::nullopt;
    }
    return rule;
}
