#pragma once

#include <QString>
#include <QStringList>

/// The options of the command line.
struct Options
{
    QString project; ///< Empty for none.
    QString library;
    bool guiThreadEvents = false;
    QString tourFolder;    ///< Empty for no tour.
    QStringList scripts;   ///< Files, "-" for the standard input; empty for none.
    QString junitFile;     ///< Empty for none.
    QString pictureFolder; ///< Of scripts or a replay; empty for none.
    bool selfTest = false;
    QString traceFile;   ///< Empty for none.
    QString inspectName; ///< Empty for no inspector.
    QString recordFile;  ///< Empty for none.
    QString replayFile;  ///< Empty for none.
    bool keepOpen = false;
    QString problem; ///< Why nothing can be done, empty for nothing.
};

/// Parses the command line; the first one of `arguments` is the name of the program. Exits after
/// printing the help if it is asked for, and with a message if an argument is unknown.
Options parseOptions(const QStringList& arguments);
