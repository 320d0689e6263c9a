#pragma once

#include <QString>
#include <QVector>

#include <optional>

/// A word of a script's line, a text in quotation marks, or a list in square brackets.
struct ScriptToken
{
    enum class Kind { Word, Text, Record, List };

    Kind kind = Kind::Word;
    QString text;   ///< Of a text, without its quotation marks and escapes; of a record, its name.
    int column = 1; ///< Counted from 1.
    QVector<ScriptToken> items; ///< Of a list.

    /// Returns whether this is the word `word`, without quotation marks.
    bool isWord(const QString& word) const { return kind == Kind::Word && text == word; }
};

/// An error in a script, at a place that is counted from 1.
struct ScriptProblem
{
    int line = 0;
    int column = 0;
    QString reason;
};

/// Splits a line: words, texts such as `"Stage \"1\"\n"`, the identities of records such as
/// `@"Stage 1"`, lists such as `[@"A", @"B"]`. A `#` begins a comment. On failure returns nothing
/// and sets column and reason of `problem`.
std::optional<QVector<ScriptToken>> scriptTokens(const QString& line, ScriptProblem& problem);
