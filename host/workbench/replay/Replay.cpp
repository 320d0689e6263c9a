#include "host/workbench/replay/Replay.h"

#include "host/workbench/replay/ReplayWindow.h"
#include "host/workbench/session/PictureFile.h"
#include "sdk/record/TraceReader.h"

#include <QApplication>
#include <QDir>

#include <iostream>

namespace {

struct ReplayMessages
{
    Q_DECLARE_TR_FUNCTIONS(Replay)
};

int refuse(const QString& problem)
{
    std::cerr << "workbench: " << qPrintable(problem) << '\n';
    return 1;
}

QString counts(const QString& path, const Recording& recording)
{
    return ReplayMessages::tr("%1: the panel made the %2 recorded requests (%3 events, calls and "
                              "gestures, %4 questions)")
        .arg(QDir::toNativeSeparators(path), QString::number(recording.requests().size()),
             QString::number(recording.drivers().size()),
             QString::number(recording.questionCount()));
}

/// Returns what is to be known of questions that the recording has no answer to, empty for none.
QString unansweredText(const QStringList& questions)
{
    if (questions.isEmpty())
        return {};
    return ReplayMessages::tr(
               "%1 questions were not recorded and got default answers; the first: %2")
        .arg(QString::number(questions.size()), questions.constFirst());
}

QString differenceText(const QString& path, const Difference& difference)
{
    const QString place = difference.line > 0 ? ReplayMessages::tr("line %1").arg(difference.line)
                                              : ReplayMessages::tr("end");
    return ReplayMessages::tr("%1, %2: the replay differs\n  recorded: %3\n  came:     %4")
        .arg(QDir::toNativeSeparators(path), place, difference.recorded, difference.came);
}

/// Saves "replay.png" in `folder`, and returns whether that was possible, or not wanted.
bool takePicture(ReplayWindow& window, const QString& folder)
{
    if (folder.isEmpty())
        return true;
    QString problem;
    QDir().mkpath(folder);
    if (savePicture(window.grab(), QDir(folder).filePath(QStringLiteral("replay.png")), problem))
        return true;
    std::cerr << "workbench: " << qPrintable(problem) << '\n';
    return false;
}

} // namespace

int runReplay(const ReplayOptions& options)
{
    CTraceReader reader;
    if (!reader.read(options.recording))
        return refuse(reader.problem());
    if (!reader.note().isEmpty())
        std::cerr << "workbench: " << qPrintable(reader.note()) << '\n';
    const auto recording =
        std::make_shared<const Recording>(reader.entries(), !reader.note().isEmpty());
    if (recording->drivers().empty())
        return refuse(ReplayMessages::tr("%1: there is nothing to replay").arg(options.recording));
    ReplayWindow window;
    QString problem;
    if (!window.library().load(options.library, problem))
        return refuse(problem);
    window.setKeepsPicture(options.keepOpen || !options.pictures.isEmpty());
    window.showText(ReplayMessages::tr("Replaying %1").arg(options.recording));
    window.show();
    int result = 1;
    bool isOver = false;
    ReplayPlayer player(recording, window);
    QObject::connect(&player, &ReplayPlayer::finished, &window, [&] {
        const std::optional<Difference> difference = player.progress().difference();
        result = difference ? 1 : 0;
        isOver = true;
        QString text = difference ? differenceText(options.recording, *difference)
                                  : counts(options.recording, *recording);
        const QString note = unansweredText(player.progress().unanswered());
        if (!note.isEmpty())
            text += QLatin1Char('\n') + note;
        (difference ? std::cerr << "workbench: " : std::cout) << qPrintable(text) << std::endl;
        window.showText(text);
        if (!takePicture(window, options.pictures))
            result = 1;
        if (!options.keepOpen)
            QCoreApplication::exit(result);
    });
    player.start();
    QApplication::exec();
    if (!isOver)
        std::cerr << "workbench: "
                  << qPrintable(ReplayMessages::tr("the replay was ended before its end")) << '\n';
    window.close();
    return result;
}
