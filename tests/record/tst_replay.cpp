#include "host/workbench/replay/Recording.h"
#include "sdk/record/TraceReader.h"
#include "sdk/record/TraceValues.h"
#include "tests/support/WarningTrap.h"
#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

ProgramRun replay(const QString& path)
{
    return runWorkbench({QStringLiteral("--replay"), path});
}

/// Returns the number of the line in which `part` begins.
int lineOf(const QByteArray& text, const QByteArray& part)
{
    return text.left(text.indexOf(part)).count('\n') + 1;
}

QByteArray without(const QByteArray& text, const QByteArray& name)
{
    QByteArray kept;
    for (const QByteArray& line : text.split('\n')) {
        if (!line.contains("\"name\":\"" + name + '"') && !line.isEmpty())
            kept += line + '\n';
    }
    return kept;
}

CTraceEntry entry(CTraceEntry::Kind kind, qint64 sequence, const char* name,
                  const QJsonValue& answer = {}, const QJsonObject& arguments = {})
{
    CTraceEntry made;
    made.kind = kind;
    made.sequence = sequence;
    made.name = QLatin1String(name);
    made.answer = answer;
    made.arguments = arguments;
    made.duration = 0;
    return made;
}

/// Returns what is answered after entry number `position`.
QString answerAfter(qint64 position, const char* question, const std::vector<CTraceEntry>& entries)
{
    const Recording recording(entries, false);
    const CTraceEntry* answer =
        recording.answer(Recording::keyOf(QLatin1String(question), {}), position, 0);
    return answer ? answer->answer.toString() : QString();
}

} // namespace

/// A recording of a host that is not the workbench, replayed by the built workbench.
class ReplayTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldRepeatTheSessionOfAnotherHost();
    void shouldKeepAPictureOfThePanel();
    void shouldWriteWholeNames();
    void shouldShowBothSidesOfAnotherRequest();
    void shouldNoticeALostEvent();
    void shouldNoticeAnotherTree();
    void shouldReplayUntilTheHostEnded_data();
    void shouldReplayUntilTheHostEnded();
    void shouldRefuseWhatIsNoRecording_data();
    void shouldRefuseWhatIsNoRecording();
    void shouldRecordInTheWorkbench();
    void shouldNotRecordOverOtherFiles_data();
    void shouldNotRecordOverOtherFiles();
#ifdef Q_OS_UNIX // Windows limits no file.
    void shouldFailWhenTheRecordingEnds();
#endif
    void shouldReplayManyLines();
    void shouldAnswerAlikeWhenTheHostLooksAtThePanel_data();
    void shouldAnswerAlikeWhenTheHostLooksAtThePanel();
    void shouldTakeTheReportedProcessorForTheCurrentOne();
    void shouldKeepTheCurrentProcessorOfAHostThatRefuses();

private:
    QString file(const char* name) const
    {
        return m_folder.filePath(QLatin1String(name));
    }

    const QTemporaryDir m_folder;
    QByteArray m_recording;
};

void ReplayTest::initTestCase()
{
    const ProgramRun outcome =
        runProgram(QStringLiteral(RECORDED_HOST), {panelLibrary(), file("session.jsonl")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    m_recording = contentOf(file("session.jsonl"));
    QVERIFY(m_recording.contains("\"name\":\"DeleteProcessors\""));
}

void ReplayTest::shouldRepeatTheSessionOfAnotherHost()
{
    const ProgramRun outcome = replay(file("session.jsonl"));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY2(outcome.output.contains(QStringLiteral("recorded requests")),
             qPrintable(outcome.output));
}

/// The recording ends with the end of the panel.
void ReplayTest::shouldKeepAPictureOfThePanel()
{
    const ProgramRun outcome = runWorkbench({QStringLiteral("--replay"), file("session.jsonl"),
                                             QStringLiteral("--pictures"), file("pictures")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    const QImage picture(file("pictures/replay.png"));
    QVERIFY(!picture.isNull());
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height() / 2; ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    // Edges of letters; without the panel there are two or three.
    QVERIFY2(colours.size() > 20, qPrintable(QString::number(colours.size())));
}

void ReplayTest::shouldWriteWholeNames()
{
    CTraceReader reader;
    QVERIFY2(reader.read(file("session.jsonl")), qPrintable(reader.problem()));
    const auto& entries = reader.entries();
    const auto list = std::find_if(entries.begin(), entries.end(), [](const CTraceEntry& entry) {
        return entry.name == QLatin1String("GetAllProcessorNodes");
    });
    QVERIFY(list != entries.end());
    const auto nodes = TraceValues::fromJson(list->answer, qMetaTypeId<QList<ProcessorNode>>())
                           .value<QList<ProcessorNode>>();
    QCOMPARE(nodes.size(), 3);
    QVERIFY(nodes.at(0).name.contains(QStringLiteral("\n{\"seq\":1,")));
    QCOMPARE(nodes.at(1).name, QStringLiteral("\u5c55\u89c8 \U0001F600"));
    QCOMPARE(nodes.at(2).name, QString(QChar(0xD83D)) + QStringLiteral(" half"));
    QCOMPARE(nodes.at(2).hostAttribute8, (qint64{1} << 60) + 2);
    QCOMPARE(nodes.at(2).hostAttribute12, 60.1F);
    // The name with a line in it forges none.
    QVERIFY(std::none_of(entries.begin(), entries.end(), [](const CTraceEntry& entry) {
        return entry.name == QLatin1String("ClearIPList");
    }));
}

void ReplayTest::shouldShowBothSidesOfAnotherRequest()
{
    QByteArray changed = m_recording;
    const int begin = changed.indexOf("\"name\":\"RenameProcessor\"");
    QVERIFY(begin > 0);
    changed.replace("New name\"", "Old name\"");
    QVERIFY(writeFile(file("renamed.jsonl"), changed));
    const ProgramRun outcome = replay(file("renamed.jsonl"));
    QCOMPARE(outcome.exitCode, 1);
    const QStringList expected{
        // The line at its end is the one that counts.
        QStringLiteral("line %1:")
            .arg(lineOf(changed.mid(begin + 1), "\"name\":\"RenameProcessor\"")
                 + lineOf(changed, "\"name\":\"RenameProcessor\"") - 1),
        QStringLiteral("recorded: RenameProcessor {\"id\":"), QStringLiteral("\"Old name\""),
        QStringLiteral("came:     RenameProcessor {\"id\":"), QStringLiteral("\"New name\"")};
    for (const QString& part : expected)
        QVERIFY2(outcome.errors.contains(part), qPrintable(part + outcome.errors));
}

void ReplayTest::shouldNoticeALostEvent()
{
    QVERIFY(writeFile(file("lost.jsonl"), without(m_recording, "TreeReset")));
    const ProgramRun outcome = replay(file("lost.jsonl"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("recorded: "))
                 && outcome.errors.contains(QStringLiteral("came:     ")),
             qPrintable(outcome.errors));
}

void ReplayTest::shouldNoticeAnotherTree()
{
    QByteArray changed = m_recording;
    const int tree = changed.lastIndexOf("\"name\":\"GetProcessorTree\"");
    const int name = changed.indexOf("Fourth", tree);
    QVERIFY(name > tree);
    changed.replace(name, 6, "Fifth!");
    // Long after the last event.
    const int line = changed.lastIndexOf('\n', tree) + 1;
    const int time = changed.indexOf("\"ms\":", line) + 5;
    changed.insert(time, '9');
    QVERIFY(writeFile(file("tree.jsonl"), changed));
    const ProgramRun outcome = replay(file("tree.jsonl"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("Fifth!"))
                 && outcome.errors.contains(QStringLiteral("Fourth")),
             qPrintable(outcome.errors));
}

void ReplayTest::shouldReplayUntilTheHostEnded_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("note");
    const int name = m_recording.indexOf("\"name\":\"RenameProcessor\"");
    const int line = m_recording.lastIndexOf('\n', name) + 1;
    QTest::newRow("inside a line")
        << name
        << QStringLiteral("100%2.jsonl, line ")
               + QString::number(lineOf(m_recording, "\"name\":\"RenameProcessor\""))
               + QStringLiteral(": the recording ends inside this line");
    // The panel asks for more than the host lived to hear.
    QTest::newRow("between a gesture and the request") << line << QString();
}

void ReplayTest::shouldReplayUntilTheHostEnded()
{
    QFETCH(int, size);
    QFETCH(QString, note);
    QVERIFY(writeFile(file("100%2.jsonl"), m_recording.left(size)));
    const ProgramRun outcome = replay(file("100%2.jsonl"));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY2(outcome.errors.contains(note), qPrintable(outcome.errors));
    const QString counts =
        QDir::toNativeSeparators(file("100%2.jsonl")) + QStringLiteral(": the panel made the ");
    QVERIFY2(outcome.output.contains(counts), qPrintable(outcome.output));
}

void ReplayTest::shouldRefuseWhatIsNoRecording_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");
    const QByteArray header = "{\"trace\":\"targetselect-record\",\"version\":1}\n";
    const QByteArray call = "{\"seq\":1,\"ms\":1,\"thread\":\"gui\",\"kind\":\"call\",";
    QTest::newRow("empty") << QByteArray() << QStringLiteral("line 1, column 1: this is not");
    QTest::newRow("something else")
        << QByteArray("{\"a\": 1}\n") << QStringLiteral("line 1, column 1: this is not a");
    QTest::newRow("version") << QByteArray("{\"trace\":\"targetselect-record\",\"version\":2}\n")
                             << QStringLiteral("line 1, column 32: the recording has version 2");
    QTest::newRow("no JSON") << header + "{\"seq\":}\n" << QStringLiteral("line 2, column 9: ");
    QTest::newRow("no operation")
        << header + call + "\"name\":\"Dance\",\"args\":{},\"took\":1,\"cause\":null}\n"
        << QStringLiteral("line 2, column 46: \"name\" is missing or wrong");
    QTest::newRow("no answer")
        << header + call + "\"name\":\"GetIPCount\",\"args\":{},\"took\":1,\"cause\":null}\n"
        << QStringLiteral("\"answer\" is missing or wrong");
    QTest::newRow("absurd time") << header + "{\"seq\":1,\"ms\":1e300,\"thread\":\"gui\"}\n"
                                 << QStringLiteral("\"ms\" is missing or wrong");
    QTest::newRow("nothing") << header << QStringLiteral("there is nothing to replay");
}

void ReplayTest::shouldRefuseWhatIsNoRecording()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    QVERIFY(writeFile(file("broken.jsonl"), text));
    const ProgramRun outcome = replay(file("broken.jsonl"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(problem), qPrintable(outcome.errors));
}

void ReplayTest::shouldRecordInTheWorkbench()
{
    const QString path = file("workbench.jsonl");
    ProgramRun outcome =
        runWorkbench({QStringLiteral("--self-test"), QStringLiteral("--record"), path});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY(contentOf(path).contains("\"name\":\"Destroy\""));
    outcome = replay(path);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

void ReplayTest::shouldNotRecordOverOtherFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a text") << file("mine.txt") << QStringLiteral("is not a recording");
#ifdef Q_OS_UNIX // A device of Windows is no path.
    QTest::newRow("a device") << QStringLiteral("/dev/full")
                              << QStringLiteral("it is not a regular file");
#endif
    QTest::newRow("a folder") << m_folder.path() << QStringLiteral("it is not a regular file");
}

void ReplayTest::shouldNotRecordOverOtherFiles()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    QVERIFY(writeFile(file("mine.txt"), "mine"));
    const ProgramRun outcome =
        runWorkbench({QStringLiteral("--self-test"), QStringLiteral("--record"), path});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(reason), qPrintable(outcome.errors));
    QCOMPARE(contentOf(file("mine.txt")), QByteArray("mine"));
}

#ifdef Q_OS_UNIX
void ReplayTest::shouldFailWhenTheRecordingEnds()
{
    const ProgramRun outcome = runWorkbenchOnAFullDisk(
        {QStringLiteral("--self-test"), QStringLiteral("--record"), file("full.jsonl")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(file("full.jsonl") + QStringLiteral(" cannot be written: ")),
             qPrintable(outcome.errors));
}
#endif

/// As many lines as a day of a busy host has: states of processors, and what the panel asks then.
void ReplayTest::shouldReplayManyLines()
{
    constexpr int lines = 10000;
    QByteArray text =
        m_recording.left(m_recording.indexOf("\"kind\":\"input\",\"name\":\"press\""));
    text.truncate(text.lastIndexOf('\n') + 1);
    CTraceReader reader;
    QVERIFY(writeFile(file("start.jsonl"), text) && reader.read(file("start.jsonl")));
    CTraceEntry entry = reader.entries().back();
    entry.kind = CTraceEntry::Kind::Event;
    entry.name = QStringLiteral("MonitorStateChanged");
    entry.thread = QStringLiteral("notify 9");
    entry.answer = QJsonValue(QJsonValue::Undefined);
    entry.outs = {};
    entry.cause = 0;
    entry.duration = 1000;
    entry.arguments = TraceValues::eventArguments(Events::make(37, {}));
    for (int number = 0; number < lines; ++number) {
        ++entry.sequence;
        entry.time += 2000;
        text += entry.toJson() + '\n';
    }
    QVERIFY(writeFile(file("long.jsonl"), text));
    const ProgramRun outcome = replay(file("long.jsonl"));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

void ReplayTest::shouldAnswerAlikeWhenTheHostLooksAtThePanel_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("answer");
    QTest::newRow("a look") << QStringLiteral("GetProcessorTree") << QStringLiteral("new");
    QTest::newRow("a change") << QStringLiteral("DetectDevices") << QStringLiteral("old");
}

/// The host looked at the tree before the panel had read the project anew; in the replay it does so
/// afterwards.
void ReplayTest::shouldAnswerAlikeWhenTheHostLooksAtThePanel()
{
    QFETCH(const QString, call);
    QFETCH(const QString, answer);
    using Kind = CTraceEntry::Kind;
    const char* const question = "GetAllProcessorNodes";
    QCOMPARE(
        answerAfter(2, question,
                    {entry(Kind::Call, 1, question, QStringLiteral("old")),
                     entry(Kind::Event, 2, "TreeReset"), entry(Kind::Layer, 3, qPrintable(call)),
                     entry(Kind::Call, 4, question, QStringLiteral("new"))}),
        answer);
}

/// The recorded panel did not ask again, as it was still inside its report when the event came.
void ReplayTest::shouldTakeTheReportedProcessorForTheCurrentOne()
{
    using Kind = CTraceEntry::Kind;
    const char* const question = "GetCurrentProcessorId";
    const auto afterReport = [&](const QJsonArray& processors) {
        return answerAfter(2, question,
                           {entry(Kind::Call, 1, question, QStringLiteral("former")),
                            entry(Kind::Call, 2, "ReportSelection", {},
                                  {{QStringLiteral("focus"), QStringLiteral("reported")},
                                   {QStringLiteral("processors"), processors}}),
                            entry(Kind::Event, 3, "CurrentProcessorChanged")});
    };
    QCOMPARE(afterReport({QStringLiteral("reported")}), QStringLiteral("reported"));
    // A group is no processor.
    QCOMPARE(afterReport({}), QStringLiteral("former"));
}

void ReplayTest::shouldKeepTheCurrentProcessorOfAHostThatRefuses()
{
    using Kind = CTraceEntry::Kind;
    const char* const question = "GetCurrentProcessorId";
    const QJsonObject report{
        {QStringLiteral("focus"), QStringLiteral("reported")},
        {QStringLiteral("processors"), QJsonArray{QStringLiteral("reported")}}};
    for (const char* answer : {"former", "reported"}) {
        const QString current = QLatin1String(answer);
        QCOMPARE(
            answerAfter(2, question,
                        {entry(Kind::Call, 1, question, QStringLiteral("former")),
                         entry(Kind::Call, 2, "ReportSelection", {}, report),
                         entry(Kind::Input, 3, "click"), entry(Kind::Call, 4, question, current)}),
            current);
    }
}

TSA_GUILESS_TEST_MAIN(ReplayTest)

#include "tst_replay.moc"
