#include "host/workbench/program/Options.h"

#include "host/workbench/session/PanelLibrary.h"
#include "host/workbench/window/SameFile.h"

#include <QCommandLineParser>

namespace {

/// Returns the names of the options among `names` that are set.
QStringList setOf(const QCommandLineParser& parser, const QStringList& names)
{
    QStringList set;
    for (const QString& name : names) {
        if (parser.isSet(name))
            set.append(QStringLiteral("--") + name);
    }
    return set;
}

/// Returns what is wrong with the options together, empty for nothing: none is ignored silently.
QString problemOf(const QCommandLineParser& parser)
{
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("\"%1\" belongs to no option")
            .arg(parser.positionalArguments().constFirst());
    const QStringList files{QStringLiteral("project"), QStringLiteral("library"),
                            QStringLiteral("tour"),    QStringLiteral("script"),
                            QStringLiteral("junit"),   QStringLiteral("pictures"),
                            QStringLiteral("trace"),   QStringLiteral("inspect"),
                            QStringLiteral("record"),  QStringLiteral("replay")};
    for (const QString& name : files) {
        if (parser.isSet(name) && parser.values(name).contains(QString()))
            return QStringLiteral("--%1 has no name").arg(name);
        if (parser.values(name).size() > 1 && name != QLatin1String("script"))
            return QStringLiteral("--%1 is given more than once").arg(name);
    }
    const QStringList runs = setOf(parser, {QStringLiteral("tour"), QStringLiteral("script"),
                                            QStringLiteral("self-test"), QStringLiteral("replay")});
    if (runs.size() > 1)
        return runs.join(QStringLiteral(" and ")) + QStringLiteral(" do not go together");
    if (parser.isSet(QStringLiteral("replay"))) {
        const QStringList others =
            setOf(parser, {QStringLiteral("project"), QStringLiteral("junit"),
                           QStringLiteral("trace"), QStringLiteral("inspect"),
                           QStringLiteral("record"), QStringLiteral("gui-thread-events")});
        if (!others.isEmpty())
            return others.first() + QStringLiteral(" does not go with --replay");
    }
    if (parser.isSet(QStringLiteral("junit")) && !parser.isSet(QStringLiteral("script")))
        return QStringLiteral("--junit goes with --script only");
    QStringList named =
        parser.values(QStringLiteral("project")) + parser.values(QStringLiteral("script"));
    for (const char* writing : {"trace", "record", "junit"}) {
        const QString file = parser.value(QLatin1String(writing));
        for (const QString& other : qAsConst(named)) {
            if (isSameFile(file, other))
                return QStringLiteral("%1 is named for two purposes").arg(file);
        }
        named.append(file);
    }
    return {};
}

} // namespace

Options parseOptions(const QStringList& arguments)
{
    const QCommandLineOption project(QStringLiteral("project"), QStringLiteral("Open <file>."),
                                     QStringLiteral("file"));
    const QCommandLineOption library(QStringLiteral("library"),
                                     QStringLiteral("Load the panel from <file> instead of %1.")
                                         .arg(PanelLibrary::defaultPath()),
                                     QStringLiteral("file"), PanelLibrary::defaultPath());
    const QCommandLineOption guiThread(QStringLiteral("gui-thread-events"),
                                       QStringLiteral("Raise events on the GUI thread."));
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        QStringLiteral("Show what the program does, leave pictures and the call trace in <folder>, "
                       "and quit."),
        QStringLiteral("folder"));
    const QCommandLineOption script(
        QStringLiteral("script"),
        QStringLiteral("Run the steps in <file>, - for the standard input, and quit. Several are "
                       "run one after the other."),
        QStringLiteral("file"));
    const QCommandLineOption junit(QStringLiteral("junit"),
                                   QStringLiteral("Write the results of scripts to <file> as XML."),
                                   QStringLiteral("file"));
    const QCommandLineOption pictures(
        QStringLiteral("pictures"),
        QStringLiteral("Save the pictures of scripts, and how a replay ended, in <folder>."),
        QStringLiteral("folder"));
    const QCommandLineOption selfTest(
        QStringLiteral("self-test"),
        QStringLiteral("Check that the panel loads and shows the project, or the sample without "
                       "one, and quit."));
    const QCommandLineOption trace(QStringLiteral("trace"),
                                   QStringLiteral("Write the live log to <file>, too."),
                                   QStringLiteral("file"));
    const QCommandLineOption inspect(
        QStringLiteral("inspect"),
        QStringLiteral("Tell programs that connect to local socket <name> what is to be seen."),
        QStringLiteral("name"));
    const QCommandLineOption record(
        QStringLiteral("record"),
        QStringLiteral("Record the panel's session in <file>, for --replay."),
        QStringLiteral("file"));
    const QCommandLineOption replay(
        QStringLiteral("replay"),
        QStringLiteral("Repeat the recording <file>, and quit: with 1 at the first request of the "
                       "panel that is not the recorded one."),
        QStringLiteral("file"));
    const QCommandLineOption keepOpen(QStringLiteral("keep-open"),
                                      QStringLiteral("Show how a replay ended, and do not quit."));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A host application to develop against: docks the panel, holds a project, "
                       "raises events and shows what the panel asks."));
    parser.addHelpOption();
    parser.addOptions(
        {project, library, guiThread, tour, script, junit, pictures, selfTest, trace, inspect});
    parser.addOptions({record, replay, keepOpen});
    parser.process(arguments);

    Options options;
    options.project = parser.value(project);
    options.library = parser.value(library);
    options.guiThreadEvents = parser.isSet(guiThread);
    options.tourFolder = parser.value(tour);
    options.scripts = parser.values(script);
    options.junitFile = parser.value(junit);
    options.pictureFolder = parser.value(pictures);
    options.selfTest = parser.isSet(selfTest);
    options.traceFile = parser.value(trace);
    options.inspectName = parser.value(inspect);
    options.recordFile = parser.value(record);
    options.replayFile = parser.value(replay);
    options.keepOpen = parser.isSet(keepOpen);
    options.problem = problemOf(parser);
    return options;
}
