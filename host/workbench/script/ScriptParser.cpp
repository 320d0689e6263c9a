#include "host/workbench/script/ScriptParser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <cstdio>
#include <memory>

namespace {

QString endWord()
{
    return QStringLiteral("end");
}

/// "wait until" and "expect" are one: every expectation waits.
void unifyWaiting(QVector<ScriptToken>& tokens)
{
    if (tokens.size() < 2 || !tokens.at(0).isWord(QStringLiteral("wait"))
        || !tokens.at(1).isWord(QStringLiteral("until")))
        return;
    tokens.removeAt(1);
    tokens.first().text = QStringLiteral("expect");
}

/// Takes "within SECONDS" from the end of the line.
std::optional<ScriptProblem> takeWithin(QVector<ScriptToken>& tokens, ScriptStep& step)
{
    const int at = tokens.size() - 2;
    if (at < 1 || !tokens.at(at).isWord(QStringLiteral("within")))
        return std::nullopt;
    constexpr double kMostSeconds = 3600;
    bool isNumber = false;
    const double seconds = tokens.constLast().text.toDouble(&isNumber);
    if (!isNumber || seconds <= 0 || seconds > kMostSeconds)
        return step.problemAt(tokens.constLast(),
                              QStringLiteral("a number of seconds, at most 3600, is expected"));
    step.within = seconds;
    tokens.resize(at);
    return std::nullopt;
}

class Parser final
{
public:
    Parser(const QStringList& lines, const StepRegistry& registry, QList<ScriptProblem>& problems)
        : m_lines(lines)
        , m_registry(registry)
        , m_problems(problems)
    {
    }

    QList<ScriptStep> steps()
    {
        QList<ScriptStep> all;
        while (m_at < m_lines.size()) {
            ScriptStep step;
            if (read(step))
                all.append(step);
        }
        return all;
    }

private:
    /// Reads the line at m_at, and the block below it. Returns false if it has no valid step.
    bool read(ScriptStep& step)
    {
        const QString& line = m_lines.at(m_at++);
        ScriptProblem problem{m_at, 1, {}};
        auto tokens = scriptTokens(line, problem);
        if (!tokens) {
            m_problems.append(problem);
            return false;
        }
        if (tokens->isEmpty())
            return false;
        step.line = m_at;
        step.column = tokens->constFirst().column;
        step.text = line.trimmed();
        unifyWaiting(*tokens);
        std::optional<ScriptProblem> error = takeWithin(*tokens, step);
        step.type = m_registry.find(*tokens);
        if (!step.type)
            error = unknown(*tokens, step);
        else if (!error)
            error = StepRegistry::assign(*tokens, step);
        if (step.type && step.type->hasBlock && !readBlock(step))
            return false;
        if (!error && step.type->check)
            error = step.type->check(step);
        if (error)
            m_problems.append(*error);
        return !error;
    }

    /// Skips the block of the step that is probably meant.
    ScriptProblem unknown(const QVector<ScriptToken>& tokens, const ScriptStep& step)
    {
        const StepType* near = m_registry.nearest(tokens);
        const QString written =
            tokens.constFirst().kind == ScriptToken::Kind::Word ? step.text : QString();
        QString reason = written.isEmpty()
                             ? QStringLiteral("a step is expected here")
                             : QStringLiteral("there is no such step: %1").arg(written);
        if (near)
            reason += QStringLiteral("; did you mean \"%1\"?").arg(StepRegistry::words(*near));
        if (ScriptStep skipped = step; near && near->hasBlock)
            readBlock(skipped);
        return step.problemAt(tokens.constFirst(), reason);
    }

    bool readBlock(ScriptStep& step)
    {
        step.blockLine = m_at + 1;
        for (; m_at < m_lines.size(); ++m_at) {
            if (m_lines.at(m_at).trimmed() == endWord()) {
                ++m_at;
                return true;
            }
            step.block.append(m_lines.at(m_at));
        }
        m_problems.append(
            {step.line, step.column, QStringLiteral("the lines below have no \"end\"")});
        return false;
    }

    const QStringList& m_lines;
    const StepRegistry& m_registry;
    QList<ScriptProblem>& m_problems;
    int m_at = 0;
};

/// Returns the place of the first byte that is not UTF-8, if there is one.
std::optional<ScriptProblem> badEncoding(const QByteArray& text)
{
    const QList<QByteArray> lines = text.split('\n');
    const QTextCodec* codec = QTextCodec::codecForName("UTF-8");
    for (int at = 0; at < lines.size(); ++at) {
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        const QByteArray& line = lines.at(at);
        codec->toUnicode(line.constData(), line.size(), &state);
        if (state.invalidChars == 0 && state.remainingChars == 0)
            continue;
        // Bytes are fed one by one to find the first wrong one.
        QTextCodec::ConverterState single(QTextCodec::IgnoreHeader);
        int column = 1;
        for (const char byte : line) {
            column += codec->toUnicode(&byte, 1, &single).size();
            if (single.invalidChars > 0)
                break;
        }
        return ScriptProblem{at + 1, std::max(1, column - single.invalidChars),
                             QStringLiteral("this is not UTF-8")};
    }
    return std::nullopt;
}

/// Opens a script for reading; returns null and sets `reason` on failure.
std::unique_ptr<QFile> opened(const QString& path, QString& reason)
{
    auto file = std::make_unique<QFile>(path);
    if (path == QLatin1String("-")) {
        if (file->open(stdin, QIODevice::ReadOnly))
            return file;
    } else if (const QFileInfo info(path); info.exists() && !info.isFile()) {
        // Opening a pipe could block.
        reason = QStringLiteral("it is not a regular file");
        return nullptr;
    } else if (file->open(QIODevice::ReadOnly)) {
        return file;
    }
    reason = file->errorString();
    return nullptr;
}

} // namespace

Script parseScript(const QByteArray& text, const StepRegistry& registry,
                   QList<ScriptProblem>& problems)
{
    Script script;
    if (const auto problem = badEncoding(text)) {
        problems.append(*problem);
        return script;
    }
    QString decoded = QString::fromUtf8(text);
    decoded.remove(QLatin1Char('\r'));
    script.steps = Parser(decoded.split(QLatin1Char('\n')), registry, problems).steps();
    return script;
}

Script loadScript(const QString& path, const StepRegistry& registry, QList<ScriptProblem>& problems)
{
    const bool isInput = path == QLatin1String("-");
    Script script;
    QString reason;
    const auto file = opened(path, reason);
    const QByteArray text = file ? file->read(kMaxScriptSize + 1) : QByteArray();
    if (!file)
        problems.append({0, 0, QStringLiteral("it cannot be read: %1").arg(reason)});
    else if (text.size() > kMaxScriptSize)
        problems.append({0, 0, QStringLiteral("it has more than %1 bytes").arg(kMaxScriptSize)});
    else
        script = parseScript(text, registry, problems);
    script.name = isInput ? QStringLiteral("(standard input)") : QDir::toNativeSeparators(path);
    script.folder = isInput ? QDir::currentPath() : QFileInfo(path).absolutePath();
    return script;
}

QString problemText(const QString& script, const ScriptProblem& problem)
{
    if (problem.line == 0)
        return QStringLiteral("%1: %2").arg(script, problem.reason);
    return QStringLiteral("%1:%2:%3: %4")
        .arg(script)
        .arg(problem.line)
        .arg(problem.column)
        .arg(problem.reason);
}
