#include "host/workbench/project/JsonLocator.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QVector>

#include <algorithm>

namespace {

/// Scans a text that a parser has already accepted, so it only checks that it does not run past the
/// end.
class Scanner final
{
public:
    Scanner(const QByteArray& json, int offset)
        : m_json(json)
        , m_offset(offset)
    {
        skipSpace();
    }

    int offset() const { return m_offset; }
    char current() const { return m_offset < m_json.size() ? m_json.at(m_offset) : '\0'; }

    void step()
    {
        ++m_offset;
        skipSpace();
    }

    /// Skips a value of any kind and the white space after it.
    void skipValue()
    {
        int depth = 0;
        do {
            const char character = current();
            if (character == '"') {
                skipString();
            } else if (character == '{' || character == '[') {
                ++depth;
                step();
            } else if (character == '}' || character == ']') {
                --depth;
                step();
            } else if (character == ',' || character == ':') {
                step();
            } else {
                skipWord();
            }
        } while (depth > 0 && m_offset < m_json.size());
    }

    /// Skips a string and returns its decoded value.
    QString takeString()
    {
        const int start = m_offset;
        skipString();
        const QByteArray literal = m_json.mid(start, m_offset - start);
        return QJsonDocument::fromJson('[' + literal + ']').array().at(0).toString();
    }

private:
    void skipSpace()
    {
        while (m_offset < m_json.size() && QByteArray(" \t\r\n").contains(m_json.at(m_offset)))
            ++m_offset;
    }

    void skipString()
    {
        ++m_offset;
        while (m_offset < m_json.size() && m_json.at(m_offset) != '"')
            m_offset += m_json.at(m_offset) == '\\' ? 2 : 1;
        step();
    }

    void skipWord()
    {
        while (m_offset < m_json.size() && !QByteArray(",:]} \t\r\n").contains(m_json.at(m_offset)))
            ++m_offset;
        skipSpace();
    }

    const QByteArray& m_json;
    int m_offset;
};

std::optional<int> locateMember(const QByteArray& json, int object, const QString& key)
{
    Scanner scanner(json, object);
    scanner.step();
    while (scanner.current() == '"') {
        const bool isIt = scanner.takeString() == key;
        scanner.step(); // the colon
        if (isIt)
            return scanner.offset();
        scanner.skipValue();
        if (scanner.current() == ',')
            scanner.step();
    }
    return std::nullopt;
}

std::optional<int> locateElement(const QByteArray& json, int array, int number)
{
    Scanner scanner(json, array);
    scanner.step();
    for (int at = 0; scanner.current() != ']' && scanner.current() != '\0'; ++at) {
        if (at == number)
            return scanner.offset();
        scanner.skipValue();
        if (scanner.current() == ',')
            scanner.step();
    }
    return std::nullopt;
}

std::optional<int> locateStep(const QByteArray& json, int offset, const QString& step)
{
    if (offset < json.size() && json.at(offset) == '{')
        return locateMember(json, offset, step);
    bool isNumber = false;
    const int number = step.toInt(&isNumber);
    if (isNumber && offset < json.size() && json.at(offset) == '[')
        return locateElement(json, offset, number);
    return std::nullopt;
}

/// What has been seen in an object whose end is still to come; nothing for an array.
using Members = std::optional<QSet<QString>>;

} // namespace

TextPosition textPosition(const QByteArray& text, int offset)
{
    const QByteArray before = text.left(std::max(offset, 0));
    const int lineStart = before.lastIndexOf('\n') + 1;
    return {before.count('\n') + 1, QString::fromUtf8(before.mid(lineStart)).size() + 1};
}

std::optional<JsonMember> locateRepeatedMember(const QByteArray& json)
{
    QVector<Members> open;
    Scanner scanner(json, 0);
    bool isKey = false;
    while (scanner.current() != '\0') {
        const char character = scanner.current();
        const int offset = scanner.offset();
        if (character == '{' || character == '[') {
            open.append(character == '{' ? Members(QSet<QString>()) : std::nullopt);
            isKey = character == '{';
            scanner.step();
        } else if (character == '}' || character == ']') {
            open.removeLast();
            isKey = false;
            scanner.step();
        } else if (character == ',') {
            isKey = !open.isEmpty() && open.constLast().has_value();
            scanner.step();
        } else if (isKey) {
            const QString key = scanner.takeString();
            if (open.constLast()->contains(key))
                return JsonMember{key, offset};
            open.last()->insert(key);
            isKey = false;
        } else if (character == ':') {
            scanner.step();
        } else {
            scanner.skipValue();
        }
    }
    return std::nullopt;
}

int locateJsonValue(const QByteArray& json, const QStringList& path)
{
    int offset = Scanner(json, 0).offset();
    for (const QString& step : path) {
        const auto next = locateStep(json, offset, step);
        if (!next)
            break;
        offset = *next;
    }
    return offset;
}
