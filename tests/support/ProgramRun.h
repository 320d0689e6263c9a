#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>

/// How a program has ended, and what it wrote.
struct ProgramRun
{
    int exitCode = -1; ///< -1 if it did not start, crashed, or did not end in time.
    QString output;
    QString errors;
};

/// Runs a program to its end, with `input` as its standard input. Ends it after `limit`.
ProgramRun runProgram(const QString& program, const QStringList& arguments,
                      const QByteArray& input = {},
                      std::chrono::milliseconds limit = std::chrono::seconds(60));

/// Returns the content of a file; empty if it cannot be read.
QByteArray contentOf(const QString& path);

/// Writes a file. Returns false if that is not possible.
bool writeFile(const QString& path, const QByteArray& content);
