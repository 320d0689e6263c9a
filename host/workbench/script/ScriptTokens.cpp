#include "host/workbench/script/ScriptTokens.h"

namespace {

constexpr int kHexDigits = 4;
constexpr int kHexBase = 16;
constexpr int kMaxNesting = 8;

class Splitter final
{
public:
    Splitter(const QString& line, ScriptProblem& problem)
        : m_line(line)
        , m_problem(problem)
    {
    }

    std::optional<QVector<ScriptToken>> all()
    {
        QVector<ScriptToken> tokens;
        while (skipSpace()) {
            if (m_line.at(m_at) == QLatin1Char('#'))
                break;
            ScriptToken token;
            if (!read(token))
                return std::nullopt;
            tokens.append(token);
        }
        return tokens;
    }

private:
    bool isAtEnd() const { return m_at >= m_line.size(); }
    bool isAt(char character) const
    {
        return !isAtEnd() && m_line.at(m_at) == QLatin1Char(character);
    }

    bool skipSpace()
    {
        while (!isAtEnd() && m_line.at(m_at).isSpace())
            ++m_at;
        return !isAtEnd();
    }

    bool report(int at, const QString& reason)
    {
        m_problem.column = at + 1;
        m_problem.reason = reason;
        return false;
    }

    bool read(ScriptToken& token)
    {
        token.column = m_at + 1;
        if (isAt('"')) {
            token.kind = ScriptToken::Kind::Text;
            return readText(token.text) && readEnd();
        }
        if (isAt('[')) {
            token.kind = ScriptToken::Kind::List;
            return readList(token);
        }
        if (isAt('@')) {
            ++m_at;
            token.kind = ScriptToken::Kind::Record;
            if (isAt('"'))
                return readText(token.text) && readEnd();
            readWord(token.text);
            return !token.text.isEmpty()
                   || report(token.column - 1,
                             QStringLiteral("the name of a record is expected after @"));
        }
        readWord(token.text);
        // A comma or a bracket where none can be is no word, either.
        if (token.text.isEmpty())
            return report(m_at, QStringLiteral("\"%1\" is not expected here").arg(m_line.at(m_at)));
        return true;
    }

    void readWord(QString& word)
    {
        const QString ends = m_nesting > 0 ? QStringLiteral("\",[]") : QStringLiteral("\"]");
        while (!isAtEnd() && !m_line.at(m_at).isSpace() && !ends.contains(m_line.at(m_at)))
            word.append(m_line.at(m_at++));
    }

    /// A text ends with a space, so that a forgotten quotation mark is noticed where it is.
    bool readEnd()
    {
        const bool isEnd =
            isAtEnd() || m_line.at(m_at).isSpace() || (m_nesting > 0 && (isAt(',') || isAt(']')));
        return isEnd || report(m_at, QStringLiteral("a space is expected after the text"));
    }

    bool readText(QString& text)
    {
        const int start = m_at++;
        while (!isAtEnd() && !isAt('"')) {
            if (isAt('\\')) {
                if (!readEscape(text))
                    return false;
            } else {
                text.append(m_line.at(m_at++));
            }
        }
        if (isAtEnd())
            return report(start, QStringLiteral("the text has no end: a \" is missing"));
        ++m_at;
        return true;
    }

    bool readEscape(QString& text)
    {
        const int start = m_at++;
        const QChar kind = isAtEnd() ? QChar() : m_line.at(m_at++);
        if (kind == QLatin1Char('"') || kind == QLatin1Char('\\')) {
            text.append(kind);
        } else if (kind == QLatin1Char('n')) {
            text.append(QLatin1Char('\n'));
        } else if (kind == QLatin1Char('t')) {
            text.append(QLatin1Char('\t'));
        } else if (kind == QLatin1Char('u')) {
            bool isNumber = false;
            const QString digits = m_line.mid(m_at, kHexDigits);
            const ushort unit = digits.toUShort(&isNumber, kHexBase);
            if (!isNumber || digits.size() != kHexDigits)
                return report(start, QStringLiteral("four hexadecimal digits are expected after "
                                                    "\\u"));
            text.append(QChar(unit));
            m_at += kHexDigits;
        } else {
            return report(start, QStringLiteral("only \\\" \\\\ \\n \\t and \\u are known"));
        }
        return true;
    }

    bool readList(ScriptToken& list)
    {
        const int start = m_at++;
        if (++m_nesting > kMaxNesting)
            return report(start, QStringLiteral("lists are nested too deeply"));
        while (skipSpace() && !isAt(']')) {
            ScriptToken item;
            if (!read(item))
                return false;
            list.items.append(item);
            skipSpace();
            if (isAt(','))
                ++m_at;
        }
        if (isAtEnd())
            return report(start, QStringLiteral("the list has no end: a ] is missing"));
        ++m_at;
        --m_nesting;
        return true;
    }

    const QString& m_line;
    ScriptProblem& m_problem;
    int m_at = 0;
    int m_nesting = 0;
};

} // namespace

std::optional<QVector<ScriptToken>> scriptTokens(const QString& line, ScriptProblem& problem)
{
    return Splitter(line, problem).all();
}
