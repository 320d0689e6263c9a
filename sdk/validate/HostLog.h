#pragma once

#include <QString>
#include <QStringList>

/// What the library, the handler and Qt write while a test runs. Any thread.
namespace HostLog {

/// Collects the records of the host's log (AppendLog) and Qt's warnings from now on.
void install();

/// Returns the records so far.
QStringList records();

/// Returns the records of the contract checks with this code, such as "TSA-E13".
QStringList withCode(const QString& code);

/// Returns the codes of the contract checks so far, each once.
QStringList codes();

/// Returns Qt's warnings so far, other than those that stand in the host's log too.
QStringList warnings();

} // namespace HostLog
