#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// How a test ended.
enum class Status { Passed, Warning, Skipped, Failed, Crashed };

/// Returns the word for `status` in every kind of report.
inline QString statusText(Status status)
{
    switch (status) {
    case Status::Passed:
        return QStringLiteral("passed");
    case Status::Warning:
        return QStringLiteral("warning");
    case Status::Skipped:
        return QStringLiteral("skipped");
    case Status::Failed:
        return QStringLiteral("failed");
    case Status::Crashed:
        break;
    }
    return QStringLiteral("crashed");
}

/// One thing that a test found.
struct Finding
{
    QString code; ///< "TSA-V08", or a code of the contract checks.
    QString text; ///< What was expected and what came.
};

/// What came of one test.
struct Result
{
    QString name;
    int level = 0;
    QString title;
    Status status = Status::Passed;
    QList<Finding> findings;
    QString skipReason;
    QString lastCall;   ///< Of a test that crashed or hung.
    QString repeat;     ///< The command that runs this test alone, unless it passed.
    QStringList output; ///< The last lines that a test that crashed or hung wrote.
};

/// What came of a run.
struct Report
{
    QString library;
    QString hostPlugin;
    int level = 0;
    quint32 seed = 0;
    QList<Result> results;

    int count(Status status) const
    {
        int number = 0;
        for (const Result& result : results)
            number += result.status == status ? 1 : 0;
        return number;
    }

    /// Returns whether no test had anything to say, not even that it passed.
    bool isEmpty() const { return count(Status::Skipped) == results.size(); }

    bool isGood() const
    {
        return !isEmpty() && count(Status::Failed) == 0 && count(Status::Crashed) == 0;
    }
};
