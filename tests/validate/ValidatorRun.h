#pragma once

#include "tests/support/ProgramRun.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// One run of the validator, as somebody starts it by hand.
class ValidatorRun final
{
public:
    /// Starts it with `arguments` and waits for its end.
    explicit ValidatorRun(const QStringList& arguments);

    /// Returns the library of this build, and those that are broken.
    static QString wholeLibrary();
    static QString broken(const QString& name);

    bool hasEnded() const { return m_run.exitCode >= 0; }
    int exitCode() const { return m_run.exitCode; }
    const QString& output() const { return m_run.output; }
    const QString& errors() const { return m_run.errors; }

    /// Returns the JSON report, empty if there is none.
    QJsonObject json() const;

    /// Returns the JUnit report.
    QByteArray junit() const;

    /// Returns the report of the one test that ran.
    QJsonObject onlyTest() const;

    /// Returns the codes that the run found.
    QStringList codes() const;

    /// Returns what there is to say about a run that went otherwise.
    QByteArray description() const;

private:
    QString m_folder;
    ProgramRun m_run;
};
