#include "sdk/validate/Runner.h"

#include "sdk/validate/ChildSystem.h"
#include "sdk/validate/Codes.h"
#include "sdk/validate/Journal.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>

namespace {

constexpr int kOutputLines = 40;
constexpr int kSilences = 10; // that a test may last, whatever it says meanwhile

/// What the lines of a child have said so far.
struct Heard
{
    Result& result;
    QMap<int, QString> pending;
    QString lastCall;
    bool isDone = false;

    void hear(const QByteArray& line)
    {
        const Journal::Line said = Journal::read(line);
        switch (said.kind) {
        case Journal::Line::Kind::Begin:
            lastCall = said.text;
            pending.insert(said.number, said.text);
            break;
        case Journal::Line::Kind::End:
            pending.remove(said.number);
            break;
        case Journal::Line::Kind::Find:
            result.findings.append({said.code, said.text});
            break;
        case Journal::Line::Kind::Skip:
            result.skipReason = said.text;
            break;
        case Journal::Line::Kind::Done:
            isDone = true;
            break;
        case Journal::Line::Kind::Other:
            result.output.append(said.text);
            // Whoever says the same for ever fills no memory.
            if (result.output.size() > kOutputLines)
                result.output.removeFirst();
            break;
        }
    }

    /// The calls that have not come back, the latest first; the latest of all where all have.
    QString callInHand() const
    {
        if (lastCall.isEmpty())
            return QStringLiteral("none, the library was being loaded");
        if (pending.isEmpty())
            return QStringLiteral("%1, which had come back").arg(lastCall);
        QStringList calls;
        for (const QString& call : pending)
            calls.prepend(call);
        return calls.join(QStringLiteral("; within or beside: "));
    }
};

QString repeatCommand(const Options& options, const QString& test)
{
    QStringList words{QCoreApplication::applicationFilePath(),
                      QStringLiteral("--only"),
                      test,
                      QStringLiteral("--seed"),
                      QString::number(options.seed),
                      options.library};
    if (!options.hostPlugin.isEmpty())
        words.append(options.hostPlugin);
    for (QString& word : words)
        word = ChildSystem::quoted(word);
    return words.join(QLatin1Char(' '));
}

QProcessEnvironment environmentFor(const CatalogueEntry& test)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    ChildSystem::addDefaults(environment);
    const bool isChecked = (test.needs & CatalogueEntry::NoChecks) == 0;
    environment.insert(QStringLiteral("TARGETSELECT_CHECK"),
                       isChecked ? QStringLiteral("1") : QStringLiteral("0"));
    // What a thread has freed and may use again would count as used.
    if (!isChecked) {
        environment.insert(QStringLiteral("GLIBC_TUNABLES"),
                           QStringLiteral("glibc.malloc.tcache_count=0"));
    }
    return environment;
}

void readLines(QProcess& process, Heard& heard)
{
    while (process.canReadLine())
        heard.hear(process.readLine());
}

/// Runs the process to its end. Returns false if it had to be ended because it stood still, or went
/// on for ever.
bool runToTheEnd(QProcess& process, Heard& heard, int silenceMs)
{
    const QDeadlineTimer deadline(qint64{silenceMs} * kSilences);
    while (process.state() != QProcess::NotRunning) {
        const bool isHeard = process.waitForReadyRead(silenceMs);
        readLines(process, heard);
        const bool isInTime = !deadline.hasExpired();
        if ((isHeard && isInTime) || process.state() == QProcess::NotRunning)
            continue;
        // Its output is closed, or it stands still. It is given no more time than before.
        if (process.waitForFinished(heard.isDone ? silenceMs : 0))
            break;
        process.kill();
        process.waitForFinished(-1);
        readLines(process, heard);
        return false;
    }
    readLines(process, heard);
    return true;
}

Status statusOf(const Result& result)
{
    for (const Finding& finding : result.findings) {
        if (isFailure(finding.code))
            return Status::Failed;
    }
    if (!result.skipReason.isEmpty())
        return Status::Skipped;
    return result.findings.isEmpty() ? Status::Passed : Status::Warning;
}

void judge(Result& result, const Heard& heard, const QProcess& process)
{
    result.status = statusOf(result);
    const bool isSound = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (heard.isDone && isSound)
        return;
    const QString end = process.exitStatus() == QProcess::CrashExit
                            ? ChildSystem::crashOf(process)
                            : QStringLiteral("the process ended with %1").arg(process.exitCode());
    result.lastCall = heard.callInHand();
    result.status = Status::Crashed;
    result.findings.append(
        {codeText(Code::Crash),
         QStringLiteral("%1%2; last call: %3")
             .arg(end, heard.isDone ? QStringLiteral(" after the test had ended") : QString(),
                  result.lastCall)});
}

Result runTest(const Options& options, const CatalogueEntry& test)
{
    Result result;
    result.name = QString::fromLatin1(test.name);
    result.level = test.level;
    result.title = QString::fromLatin1(test.title);
    if ((test.needs & CatalogueEntry::HostPlugin) != 0 && options.hostPlugin.isEmpty()) {
        result.status = Status::Skipped;
        result.skipReason = QStringLiteral("no host plugin is named");
        return result;
    }

    QProcess process;
    process.setProcessEnvironment(environmentFor(test));
    QStringList arguments{QStringLiteral("--child"), result.name, QStringLiteral("--seed"),
                          QString::number(options.seed), options.library};
    if (!options.hostPlugin.isEmpty())
        arguments.append(options.hostPlugin);
    process.start(QCoreApplication::applicationFilePath(), arguments);

    Heard heard{result, {}, {}, false};
    if (!process.waitForStarted(options.silenceMs)) {
        result.status = Status::Crashed;
        result.findings.append({codeText(Code::Crash), process.errorString()});
    } else if (!runToTheEnd(process, heard, options.silenceMs)) {
        result.status = Status::Failed;
        result.lastCall = heard.callInHand();
        result.findings.append(
            {codeText(Code::Hang), QStringLiteral("nothing new happened for %1 s, or no end came "
                                                  "in ten times as long; last call: %2")
                                       .arg(options.silenceMs / 1000)
                                       .arg(result.lastCall)});
    } else {
        judge(result, heard, process);
    }
    const QString errors = QString::fromLocal8Bit(process.readAllStandardError());
    result.output += errors.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (result.lastCall.isEmpty())
        result.output.clear();
    while (result.output.size() > kOutputLines)
        result.output.removeFirst();
    if (result.status != Status::Passed && result.status != Status::Skipped)
        result.repeat = repeatCommand(options, result.name);
    return result;
}

bool matches(const QStringList& patterns, const QString& name)
{
    for (const QString& pattern : patterns) {
        const QRegularExpression expression(
            QRegularExpression::wildcardToRegularExpression(pattern));
        if (expression.match(name).hasMatch())
            return true;
    }
    return false;
}

} // namespace

QList<CatalogueEntry> chosenTests(const Options& options)
{
    QList<CatalogueEntry> chosen;
    for (const CatalogueEntry& test : catalogue()) {
        const QString name = QString::fromLatin1(test.name);
        if (options.only.isEmpty() ? test.level <= options.level : matches(options.only, name))
            chosen.append(test);
    }
    return chosen;
}

Report run(const Options& options, const std::function<void(const Result&)>& tell)
{
    Report report;
    report.library = options.library;
    report.hostPlugin = options.hostPlugin;
    report.level = options.level;
    report.seed = options.seed;
    const QList<CatalogueEntry> tests = chosenTests(options);
    for (const CatalogueEntry& test : tests) {
        report.results.append(runTest(options, test));
        tell(report.results.constLast());
    }
    return report;
}
