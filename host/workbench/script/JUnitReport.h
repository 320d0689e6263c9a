#pragma once

#include "host/workbench/script/ScriptRunner.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// Returns the results as JUnit XML: a suite for each script, a case for each of its sections.
QByteArray junitXml(const std::vector<ScriptResult>& results);

/// The file that the results are written to.
class JUnitReport final
{
public:
    explicit JUnitReport(const QString& path)
        : m_path(path)
    {
    }

    /// Returns whether a report can be written there; otherwise sets `problem`. Only a file that
    /// does not exist, is empty, or holds an earlier report is replaced.
    bool check(QString& problem) const;

    /// Replaces the file atomically. Returns false and sets `problem` on failure.
    bool write(const std::vector<ScriptResult>& results, QString& problem) const;

private:
    QString problemText(const QString& reason) const;

    QString m_path;
};
