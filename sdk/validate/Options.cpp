#include "sdk/validate/Options.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <cstdio>

namespace {

void print(std::FILE* file, const QString& text)
{
    std::fputs(qPrintable(text), file);
}

/// Returns the number in `text` if it is one from `least` to `most`.
std::optional<quint32> number(const QString& text, quint32 least, quint32 most)
{
    bool isNumber = false;
    const quint32 value = text.toUInt(&isNumber);
    if (!isNumber || value < least || value > most)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<Options> readOptions(const QStringList& arguments, int& exitCode)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Runs the library of the target selection area, and with HOST_PLUGIN a host's handler, "
        "through the contract of its interface.\n"
        "Ends with 0 when nothing failed, with 1 when something did or nothing ran, and with 2 "
        "when it is called wrongly."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption level(QStringLiteral("level"),
                                   QStringLiteral("Run the tests up to this level, 1 to 10 (5)."),
                                   QStringLiteral("number"), QStringLiteral("5"));
    const QCommandLineOption seed(QStringLiteral("seed"),
                                  QStringLiteral("Begin random input with this number (1)."),
                                  QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption only(
        QStringLiteral("only"),
        QStringLiteral("Run the tests whose name matches, whatever their level; * and ? stand for "
                       "what they do in a shell. May be given several times."),
        QStringLiteral("pattern"));
    const QCommandLineOption silence(
        QStringLiteral("timeout"),
        QStringLiteral("End a test that does nothing new for so many seconds (60)."),
        QStringLiteral("seconds"), QStringLiteral("60"));
    const QCommandLineOption junit(QStringLiteral("junit"),
                                   QStringLiteral("Write a report as JUnit XML."),
                                   QStringLiteral("file"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Write a report as JSON."),
                                  QStringLiteral("file"));
    const QCommandLineOption list(QStringLiteral("list"),
                                  QStringLiteral("Print the names of all tests."));
    QCommandLineOption child(QStringLiteral("child"),
                             QStringLiteral("Run this test in this process."),
                             QStringLiteral("test"));
    child.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({level, seed, only, silence, junit, json, list, child});
    parser.addPositionalArgument(QStringLiteral("LIBRARY"),
                                 QStringLiteral("The shared library of the panel."));
    parser.addPositionalArgument(QStringLiteral("HOST_PLUGIN"),
                                 QStringLiteral("A shared library with a host's handler, see "
                                                "Interface/TargetSelectHostPlugin.h."),
                                 QStringLiteral("[HOST_PLUGIN]"));

    exitCode = kWrongUse;
    const auto wrong = [](const QString& what) {
        print(stderr, QStringLiteral("targetselect-validate: %1\n"
                                     "targetselect-validate: see --help\n")
                          .arg(what));
        return std::nullopt;
    };
    if (!parser.parse(arguments))
        return wrong(parser.errorText());
    if (parser.isSet(help)) {
        print(stdout, parser.helpText());
        exitCode = 0;
        return std::nullopt;
    }

    Options options;
    options.list = parser.isSet(list);
    options.only = parser.values(only);
    options.junitFile = parser.value(junit);
    options.jsonFile = parser.value(json);
    options.child = parser.value(child);
    const auto wantedLevel = number(parser.value(level), 1, 10);
    const auto wantedSeed = number(parser.value(seed), 0, 0xFFFFFFFF);
    const auto wantedSilence = number(parser.value(silence), 1, 86400);
    if (!wantedLevel)
        return wrong(QStringLiteral("--level takes 1 to 10, not \"%1\"").arg(parser.value(level)));
    if (!wantedSeed)
        return wrong(QStringLiteral("--seed takes a number, not \"%1\"").arg(parser.value(seed)));
    if (!wantedSilence) {
        return wrong(
            QStringLiteral("--timeout takes seconds, not \"%1\"").arg(parser.value(silence)));
    }
    options.level = static_cast<int>(*wantedLevel);
    options.seed = *wantedSeed;
    options.silenceMs = static_cast<int>(*wantedSilence) * 1000;
    if (options.list)
        return options;

    const QStringList files = parser.positionalArguments();
    if (files.isEmpty() || files.size() > 2)
        return wrong(QStringLiteral("name one library, and at most one host plugin"));
    for (const QString& file : files) {
        if (!QFileInfo(file).isFile())
            return wrong(QStringLiteral("there is no file \"%1\"").arg(file));
    }
    options.library = QFileInfo(files.at(0)).absoluteFilePath();
    if (files.size() == 2)
        options.hostPlugin = QFileInfo(files.at(1)).absoluteFilePath();
    return options;
}
