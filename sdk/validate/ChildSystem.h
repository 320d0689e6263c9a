#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// What each system does in its own way with the processes in which tests run.
namespace ChildSystem {

/// Returns the command line of this process, its name included.
QStringList arguments(int argc, char** argv);

/// Has a crash end this process without a dialog of the system.
void crashWithoutDialog();

/// Adds what a process without a display needs.
void addDefaults(QProcessEnvironment& environment);

/// Returns an argument as it is written in the system's shell. A path has the system's separators.
QString quoted(const QString& argument);

/// Returns what has ended a process that did not end by itself.
QString crashOf(const QProcess& process);

} // namespace ChildSystem
