#pragma once

#include "host/workbench/script/StepRegistry.h"

#include <QByteArray>
#include <QList>
#include <QString>

constexpr qint64 kMaxScriptSize = 1024LL * 1024;

/// The steps of one file.
struct Script
{
    QString name;   ///< As it is shown in messages.
    QString folder; ///< The folder that relative file names start from.
    QList<ScriptStep> steps;
};

/// Reads a script: UTF-8, one step a line. Adds every error to `problems`. The registry must
/// outlive the steps.
Script parseScript(const QByteArray& text, const StepRegistry& registry,
                   QList<ScriptProblem>& problems);

/// Reads a script from a file, or from the standard input for "-". A file that cannot be read, has
/// more than kMaxScriptSize bytes, or is no regular file, is one of the `problems`, at line 0.
Script loadScript(const QString& path, const StepRegistry& registry,
                  QList<ScriptProblem>& problems);

/// Returns "tour.script:3:7: reason"; without the place for line 0.
QString problemText(const QString& script, const ScriptProblem& problem);
