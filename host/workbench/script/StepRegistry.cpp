#include "host/workbench/script/StepRegistry.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int kMaxWords = 4;
constexpr int kFarthest = 3; ///< How many letters a step may differ from the one that is proposed.

struct Parameter
{
    QString name;
    QStringList choices; ///< One for a word that stands for itself.
    bool isOptional = false;
    bool isRepeated = false;
};

bool isParameterName(const QString& word)
{
    return !word.isEmpty() && word.at(0).isUpper() && !word.contains(QLatin1Char('|'));
}

bool isStepWord(const QString& word)
{
    return !isParameterName(word) && !word.startsWith(QLatin1Char('['))
           && !word.contains(QLatin1Char('|'));
}

QStringList usageWords(const StepType& type)
{
    return type.usage.split(QLatin1Char(' '));
}

QList<Parameter> parameters(const StepType& type)
{
    QList<Parameter> all;
    const int start = StepRegistry::words(type).count(QLatin1Char(' ')) + 1;
    for (QString word : usageWords(type).mid(start)) {
        Parameter parameter;
        parameter.isOptional = word.startsWith(QLatin1Char('['));
        word.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
        parameter.isRepeated = word.endsWith(QStringLiteral("..."));
        word.remove(QStringLiteral("..."));
        parameter.name = word;
        if (!isParameterName(word))
            parameter.choices = word.split(QLatin1Char('|'));
        all.append(parameter);
    }
    return all;
}

/// Returns why `token` is no argument for `parameter`, empty if it is one.
QString mismatch(const Parameter& parameter, const ScriptToken& token)
{
    const auto expected = [&](const QString& what) {
        return QStringLiteral("%1 is expected, not \"%2\"").arg(what, token.text);
    };
    if (!parameter.choices.isEmpty()) {
        const bool isOne =
            token.kind == ScriptToken::Kind::Word && parameter.choices.contains(token.text);
        return isOne ? QString() : expected(parameter.choices.join(QStringLiteral(" or ")));
    }
    bool isNumber = false;
    if (parameter.name == QLatin1String("COUNT") || parameter.name == QLatin1String("NUMBER")) {
        const int number = token.text.toInt(&isNumber);
        const bool isIn = isNumber && (parameter.name == QLatin1String("NUMBER") || number >= 0);
        return isIn ? QString() : expected(QStringLiteral("a whole number"));
    }
    if (parameter.name == QLatin1String("SECONDS")) {
        const double seconds = token.text.toDouble(&isNumber);
        constexpr double kMostSeconds = 3600;
        return isNumber && seconds > 0 && seconds <= kMostSeconds
                   ? QString()
                   : expected(QStringLiteral("a number of seconds, at most 3600,"));
    }
    return {};
}

/// Returns whether `token` is a word that one of the parameters stands for.
bool isWordOf(const QList<Parameter>& parameters, const ScriptToken& token)
{
    return std::any_of(parameters.begin(), parameters.end(), [&](const Parameter& parameter) {
        return token.kind == ScriptToken::Kind::Word && parameter.choices.contains(token.text);
    });
}

/// Returns how many letters have to be added, left out or changed to make one text the other.
int distance(const QString& one, const QString& other)
{
    QVector<int> row(other.size() + 1);
    for (int at = 0; at < row.size(); ++at)
        row[at] = at;
    for (int first = 1; first <= one.size(); ++first) {
        int diagonal = std::exchange(row[0], first);
        for (int second = 1; second <= other.size(); ++second) {
            const int changed = diagonal + (one.at(first - 1) == other.at(second - 1) ? 0 : 1);
            diagonal = row[second];
            row[second] = std::min({changed, row[second] + 1, row[second - 1] + 1});
        }
    }
    return row.constLast();
}

QString firstWords(const QVector<ScriptToken>& tokens, int count)
{
    QStringList words;
    for (const ScriptToken& token : tokens.mid(0, count)) {
        if (token.kind != ScriptToken::Kind::Word)
            break;
        words.append(token.text);
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

QStringList ScriptStep::values(const char* name) const
{
    QStringList texts;
    for (const ScriptToken& token : all(name))
        texts.append(token.text);
    return texts;
}

void StepRegistry::add(const StepType& type)
{
    m_types.insert(words(type), std::make_shared<const StepType>(type));
}

const StepType* StepRegistry::find(const QVector<ScriptToken>& tokens) const
{
    for (int count = kMaxWords; count > 0; --count) {
        const QString words = firstWords(tokens, count);
        if (const auto type = m_types.value(words))
            return type.get();
    }
    return nullptr;
}

const StepType* StepRegistry::nearest(const QVector<ScriptToken>& tokens) const
{
    QString best;
    int least = kFarthest + 1;
    QStringList all = m_types.keys();
    all.sort();
    for (const QString& words : qAsConst(all)) {
        const QString written = firstWords(tokens, words.count(QLatin1Char(' ')) + 1);
        const int letters = distance(written, words);
        if (letters < least && letters < words.size()) {
            least = letters;
            best = words;
        }
    }
    return m_types.value(best).get();
}

QList<const StepType*> StepRegistry::all() const
{
    QList<const StepType*> types;
    for (const auto& type : m_types)
        types.append(type.get());
    std::sort(types.begin(), types.end(),
              [](const StepType* one, const StepType* other) { return one->usage < other->usage; });
    return types;
}

QString StepRegistry::words(const StepType& type)
{
    QStringList words;
    for (const QString& word : usageWords(type)) {
        if (!isStepWord(word))
            break;
        words.append(word);
    }
    return words.join(QLatin1Char(' '));
}

std::optional<ScriptProblem> StepRegistry::assign(const QVector<ScriptToken>& tokens,
                                                  ScriptStep& step)
{
    const int start = words(*step.type).count(QLatin1Char(' ')) + 1;
    int at = start;
    const QList<Parameter> wanted = parameters(*step.type);
    for (int number = 0; number < wanted.size(); ++number) {
        const Parameter& parameter = wanted.at(number);
        const QList<Parameter> later = wanted.mid(number + 1);
        const int most = parameter.isRepeated ? std::numeric_limits<int>::max() : 1;
        int taken = 0;
        QString reason;
        while (taken < most && at < tokens.size()) {
            // What may be missing or repeated ends where a word behind it stands.
            if ((parameter.isOptional || taken > 0) && isWordOf(later, tokens.at(at)))
                break;
            reason = mismatch(parameter, tokens.at(at));
            if (!reason.isEmpty())
                break;
            step.arguments[parameter.name].append(tokens.at(at++));
            ++taken;
        }
        if (taken > 0 || (parameter.isOptional && (reason.isEmpty() || number + 1 < wanted.size())))
            continue;
        if (at < tokens.size())
            return step.problemAt(tokens.at(at), reason);
        const ScriptToken& last = tokens.constLast();
        return ScriptProblem{
            step.line, last.column,
            QStringLiteral("%1 is missing: %2").arg(parameter.name, step.type->usage)};
    }
    if (at < tokens.size())
        return step.problemAt(
            tokens.at(at),
            QStringLiteral("\"%1\" is too much: %2").arg(tokens.at(at).text, step.type->usage));
    return std::nullopt;
}
