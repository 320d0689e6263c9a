#pragma once

#include <QProcess>

/// What a user, or the system, does to another program.
namespace ProcessControl {

/// Prepares a program that is to be started for askToEnd().
void prepare(QProcess& process);

/// Asks it to end: by SIGTERM, on Windows by Ctrl+C.
void askToEnd(QProcess& process);

/// Stops its threads where they are, and lets them go on.
void pause(const QProcess& process);
void goOn(const QProcess& process);

} // namespace ProcessControl
