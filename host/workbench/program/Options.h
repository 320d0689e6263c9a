#pragma once

#include <QString>
#include <QStringList>

/// The command line.
struct Options
{
    QString project; ///< Empty for none.
    QString library;
    bool guiThreadEvents = false;
    QString tourFolder; ///< Empty for no tour.
    bool selfTest = false;
    QString traceFile;   ///< Empty for none.
    QString inspectName; ///< Empty for no inspector.
};

/// Reads the command line; `arguments` begins with the program's name. Prints the help and ends the
/// process when that is asked for; ends it with a message when there is something unknown.
Options parseOptions(const QStringList& arguments);
