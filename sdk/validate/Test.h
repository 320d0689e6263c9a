#pragma once

#include "sdk/validate/Codes.h"
#include "sdk/validate/Journal.h"
#include "sdk/validate/Options.h"

#include <QString>
#include <QStringList>

/// Ends a test early; what there is to say has been said.
struct Stop
{
};

/// What a test knows and says while it runs in its process.
class Test final
{
public:
    explicit Test(const Options& options)
        : m_options(options)
    {
    }

    const QString& library() const { return m_options.library; }
    const QString& hostPlugin() const { return m_options.hostPlugin; }
    quint32 seed() const { return m_options.seed; }

    /// Notes a finding, and goes on.
    void find(Code code, const QString& text) { Journal::find(codeText(code), text); }

    /// Notes a finding unless `isGood`. Returns `isGood`.
    bool check(bool isGood, Code code, const QString& text)
    {
        if (!isGood)
            find(code, text);
        return isGood;
    }

    /// The same for two texts.
    bool compare(const QString& actual, const QString& expected, Code code, const QString& what)
    {
        return check(actual == expected, code,
                     QStringLiteral("%1: expected %2, got %3").arg(what, expected, actual));
    }

    /// The same as check(), but the test ends with the finding.
    void require(bool isGood, Code code, const QString& text)
    {
        if (!check(isGood, code, text))
            throw Stop();
    }

    /// Ends the test as one that cannot run.
    [[noreturn]] void skip(const QString& reason)
    {
        Journal::skip(reason);
        throw Stop();
    }

    /// Findings of the contract checks with `code` belong to the test.
    void allow(const QString& code) { m_allowed.append(code); }
    const QStringList& allowed() const { return m_allowed; }

private:
    const Options& m_options;
    QStringList m_allowed;
};

/// While one lives, a call is in hand that a crash or a hang is put down to. Any thread.
class Call final
{
public:
    explicit Call(const QString& what)
        : m_number(Journal::begin(what))
    {
    }
    ~Call() { Journal::end(m_number); }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

private:
    int m_number;
};

/// Calls `function`, under the name `what`, and returns what it returns.
template <typename Function>
auto called(const QString& what, Function&& function)
{
    const Call call(what);
    return function();
}
