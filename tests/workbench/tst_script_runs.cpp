#include "tests/support/WarningTrap.h"
#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// Runs the workbench on a script at its standard input, in the folder of the examples.
ProgramRun run(const QByteArray& script, const QStringList& arguments = {})
{
    return runWorkbench(QStringList{QStringLiteral("--script"), QStringLiteral("-")} + arguments,
                        script);
}

QByteArray start()
{
    return "open \"projects/show.json\"\nexpect shown\n";
}

/// Steps of which the last one fails, and what is told then.
struct Failure
{
    const char* steps;
    const char* expected;
    int line; ///< Of the last step.
};

constexpr Failure kFailures[] = {
    {"expect rows in \"Stage\"\n  Left\n  Wrong\n  Right\nend",
     "they differ in line 2\nexpected:\n  Left\n  Wrong\n  Right\nfound:\n  Left\n  Centre\n", 5},
    {"expect rows in \"Hall\"\nend", "expected:\n  (none)\nfound:\n  Door", 5},
    {"expect row \"Nobody\"", "there is no row \"Nobody\"", 5},
    {"host add processors 254 to root", "there is room for", 5},
    {"host add processors 1 to \"Nowhere\"", "there is no group \"Nowhere\"", 5},
    {"host move \"Left\" to \"Right\"", "there is no group \"Right\"", 5},
    {"host remove \"Left\"\nhost rename \"Left\" \"X\"", "there is no record \"Left\"", 6},
    {"host current \"Stage\"", "the host has no processor \"Stage\"", 5},
    {"set \"Stage\" number 1", "the host has no processor \"Stage\"", 5},
    {"expect no row \"Left\"", "there is a row \"Left\"", 5},
    {"expect row \"Right\" is online", "\"Right\" is not online", 5},
    {"expect row \"Left\" is backup", "\"Left\" is not backup", 5},
    {"expect row \"Stage\" is collapsed", "\"Stage\" is not collapsed", 5},
    {"expect selection \"Door\"", "expected:\n  Door\nfound:\n  Stage", 5},
    {"expect description of \"Left\" \"*Offline*\"", "found:    Processor, Online", 5},
    {"expect field of \"Left\" number 7", "the field is 0", 5},
    {"expect text of \"Device set\" \"Other\"", "found:    Evening show", 5},
    {"expect button \"Add\" disabled", "\"Add\" is not disabled", 5},
    {"expect focus \"Nowhere\"", "the keyboard is in", 5},
    {"expect results\nend", "no list of results is open", 5},
    {"expect dialog \"*\"", "no dialog is open", 5},
    {"expect message \"*\"", "no dialog is open", 5},
    {"reply \"OK\"", "no dialog is open", 5},
    {"expect menu entry \"Delete\" enabled", "no menu is open", 5},
    {"right-click row \"Left\" within 20\nexpect menu entry \"Delete\" disabled", "is not disabled",
     6},
    {"right-click row \"Left\" within 20\npick \"Fly\"",
     "there is no entry \"Fly\" in the menu:", 6},
    {"expect call DeleteProcessors", "the calls are:", 5},
    {"forget calls within 20\nexpect call GetAllProcessorNodes", "the calls are:\n  (none)", 6},
    {"expect no call GetAllProcessorNodes within 20", "GetAllProcessorNodes() = 6 processors", 5},
    {"expect call GetAllProcessorNodes = 7 processors", "the calls are:", 5},
    {"expect unordered call GetNothing", "the calls are:", 5},
    {"expect log \"a line that is not there\"", "the lines are:", 5},
    {"expect event \"99\"", "16 TreeReset()", 5},
    {"expect no panel", "there is a panel", 5},
    {"expect project \"projects/none.json\"", "none.json", 5},
    {"host rename \"Left\" \"Other\" within 20\nexpect project \"show.json\"",
     "the projects differ in line", 6},
    {"click \"Fly\"", "there is no button \"Fly\"", 5},
    {"click row \"Nobody\"", "there is no row \"Nobody\"", 5},
    {"click tab \"Fly\"", "there is no tab \"Fly\"", 5},
    {"open menu \"Fly\"", "there is no menu \"Fly\"", 5},
    {"click result \"Left\"", "no list is open", 5},
    {"command \"Fly\"", "there is no command \"Fly\"", 5},
    {"fill \"Nothing\" \"x\"", "there is no field \"Nothing\"", 5},
    {"choose \"Device set\" \"Matinee\" within 20", "there is no \"Matinee\" in the list:", 5},
    {"host rename \"Nobody\" \"x\"", "there is no record \"Nobody\"", 5},
    {"raise 25 \"Nobody\"", "there is no record \"Nobody\"", 5},
    {"open \"projects/none.json\"", "none.json", 5},
    {"click row \"Left\" within 20\npress Delete within 20\nclick row \"Left\"",
     "is open in front of the tree", 7},
};

} // namespace

/// What the program makes of scripts.
class ScriptRunsTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldRunAScript();
    void shouldFailTruly_data();
    void shouldFailTruly();
    void shouldAnswerDialogsInDialogs();
    void shouldRunNothingOfAWrongScript();
    void shouldKeepPictureAndLogOfAFailure();
    void shouldGoOnWithTheNextScript();
    void shouldReportCases();
    void shouldLeaveOtherFilesAlone();
    void shouldReplaceItsOwnPicturesOnly();
    void shouldEndUnderADialog();
    void shouldFailWhenTheProgramIsQuit();
    void shouldEndWhenItFailsInADetection();
    void shouldSaveOverProjectsOnly();
    void shouldFindNothingInADeletion_data();
    void shouldFindNothingInADeletion();

private:
    QString fileOf(const Failure& failure) const
    {
        return m_folder.filePath(QStringLiteral("%1.script").arg(&failure - kFailures));
    }

    const QTemporaryDir m_folder;
    ProgramRun m_failures;
};

void ScriptRunsTest::shouldRunAScript()
{
    const ProgramRun outcome = run(start());
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY(outcome.output.contains(QStringLiteral("(standard input): 2 steps done")));
}

/// One program runs them all: each is reported, whatever became of the ones before.
void ScriptRunsTest::initTestCase()
{
    QVERIFY(QDir::setCurrent(QStringLiteral(EXAMPLE_SCRIPTS)));
    QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_SCRIPTS "/projects/show.json"),
                        m_folder.filePath(QStringLiteral("show.json"))));
    QStringList arguments;
    for (const Failure& failure : kFailures) {
        arguments << QStringLiteral("--script") << fileOf(failure);
        QVERIFY(writeFile(fileOf(failure),
                          QByteArray("open \"show.json\"\nclick row \"Stage\"\nexpect shown\n"
                                     "timeout 0.02\n")
                              + failure.steps));
    }
    m_failures = run("expect panel\n", arguments);
}

void ScriptRunsTest::shouldFailTruly_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("line");
    for (const Failure& failure : kFailures)
        QTest::newRow(failure.steps)
            << fileOf(failure) << QString::fromUtf8(failure.expected) << failure.line;
}

void ScriptRunsTest::shouldFailTruly()
{
    QFETCH(QString, file);
    QFETCH(QString, expected);
    QFETCH(int, line);
    QCOMPARE(m_failures.exitCode, 1);
    const QString place =
        QStringLiteral("workbench: %1:%2:1: ").arg(QDir::toNativeSeparators(file)).arg(line);
    QString told =
        m_failures.errors.section(place, 1, 1).section(QStringLiteral("workbench: "), 0, 0);
    told.remove(QLatin1Char('\r')); // of Windows' line ends
    QVERIFY2(!told.isEmpty(), qPrintable(place + m_failures.errors));
    QVERIFY2(told.contains(expected), qPrintable(told));
}

void ScriptRunsTest::shouldAnswerDialogsInDialogs()
{
    const ProgramRun outcome = run(start()
                                   + "click \"IP address management...\"\n"
                                     "expect dialog \"IP address management\"\n"
                                     "click \"Add\"\n"
                                     "pick \"Add an IP address...\"\n"
                                     "expect dialog \"Add IP\"\n"
                                     "fill \"IP address\" \"192.168.0.10\"\n"
                                     "click \"OK\"\n"
                                     "expect message \"*used*\"\n"
                                     "reply \"OK\"\n"
                                     "expect dialog \"Add IP\"\n"
                                     "reply \"Cancel\"\n"
                                     "expect dialog \"IP address management\"\n"
                                     "close\n"
                                     "expect no dialog\n"
                                     "expect row \"Left\"\n");
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

void ScriptRunsTest::shouldRunNothingOfAWrongScript()
{
    const QTemporaryDir folder;
    const ProgramRun outcome =
        run(start() + "save \"" + folder.filePath(QStringLiteral("a.json")).toUtf8()
            + "\"\nexpect rwo \"Left\"\n");
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.contains(QStringLiteral("(standard input):4:1: there is no such step")),
             qPrintable(outcome.errors));
    QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("a.json"))));
    QCOMPARE(run("# nothing\n").exitCode, 2);
}

void ScriptRunsTest::shouldKeepPictureAndLogOfAFailure()
{
    const QTemporaryDir folder;
    const ProgramRun outcome = run(
        start() + "picture \"at first\"\nclick row \"Left\"\nexpect row \"Nobody\" within 0.1\n",
        {QStringLiteral("--pictures"), folder.path()});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files),
             (QStringList{QStringLiteral("01-at-first.png"), QStringLiteral("02-failure.png"),
                          QStringLiteral("failure-log.txt")}));
    const QString log =
        QString::fromUtf8(contentOf(folder.filePath(QStringLiteral("failure-log.txt"))));
    QVERIFY2(log.contains(QStringLiteral("there is no row \"Nobody\"")), qPrintable(log));
    QVERIFY2(log.contains(QStringLiteral("GetAllProcessorNodes() = 6 processors")),
             qPrintable(log));
}

void ScriptRunsTest::shouldGoOnWithTheNextScript()
{
    // The first one leaves everything changed, and fails in a dialog.
    const ProgramRun outcome =
        run("command \"Open sample\"\nexpect shown\nread-only on\n"
            "command \"Handler answers\"\nlanguage Chinese\nexpect row \"Nobody\" within 0.1\n",
            {QStringLiteral("--script"), QStringLiteral("rename.script"),
             QStringLiteral("--script"), QStringLiteral("groups.script")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.output.contains(QStringLiteral("(standard input): 5 steps done")),
             qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(QStringLiteral("rename.script: 28 steps done"))
                 && outcome.output.contains(QStringLiteral("groups.script: 26 steps done"))
                 && !outcome.errors.contains(QStringLiteral(".script:")),
             qPrintable(outcome.errors));
}

void ScriptRunsTest::shouldReportCases()
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report.xml"));
    const ProgramRun outcome = run("case \"one\"\n" + start()
                                       + "case \"two\"\ntimeout 0.1\nexpect row \"Nobody\"\ncase "
                                         "\"three\"\nexpect row \"Left\"\n",
                                   {QStringLiteral("--junit"), report});
    QCOMPARE(outcome.exitCode, 1);
    const QString xml = QString::fromUtf8(contentOf(report));
    QVERIFY2(xml.contains(QStringLiteral("tests=\"3\" failures=\"1\" skipped=\"1\"")),
             qPrintable(xml));
    QVERIFY2(xml.contains(QStringLiteral("message=\"(standard input):6:1: expect row "
                                         "&quot;Nobody&quot;\"")),
             qPrintable(xml));
}

void ScriptRunsTest::shouldLeaveOtherFilesAlone()
{
    const QTemporaryDir folder;
    const QString mine = folder.filePath(QStringLiteral("mine.txt"));
    QVERIFY(writeFile(mine, "mine"));
    const ProgramRun outcome = run(start(), {QStringLiteral("--junit"), mine});
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.contains(QStringLiteral("is not a report")),
             qPrintable(outcome.errors));
    QCOMPARE(contentOf(mine), QByteArray("mine"));
}

void ScriptRunsTest::shouldReplaceItsOwnPicturesOnly()
{
    const QTemporaryDir folder;
    const QStringList names{QStringLiteral("01-view.png"), QStringLiteral("02-failure.png"),
                            QStringLiteral("failure-log.txt")};
    const QByteArray script = start() + "picture \"view\"\nexpect row \"Nobody\" within 0.1\n";
    const QStringList arguments{QStringLiteral("--pictures"), folder.path()};
    for (int time = 0; time < 2; ++time) {
        const ProgramRun outcome = run(script, arguments);
        QVERIFY2(!outcome.errors.contains(QStringLiteral("cannot be written")),
                 qPrintable(outcome.errors));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), names);
    }

    // A picture of somebody else's, and a text. The step fails, and so does its picture's.
    QVERIFY(QImage(1, 1, QImage::Format_RGB32).save(folder.filePath(names.at(0))));
    QFile log(folder.filePath(names.at(2)));
    QVERIFY(log.open(QIODevice::WriteOnly | QIODevice::Truncate) && log.write("mine") == 4);
    log.close();
    const ProgramRun outcome = run(script, arguments);
    QCOMPARE(outcome.exitCode, 1);
    for (const QString& name : {names.at(0), names.at(2)})
        QVERIFY2(
            outcome.errors.contains(name + QStringLiteral(" cannot be written: what is there")),
            qPrintable(outcome.errors));
    QCOMPARE(QImage(folder.filePath(names.at(0))).width(), 1);
    QCOMPARE(contentOf(log.fileName()), QByteArray("mine"));
}

void ScriptRunsTest::shouldEndUnderADialog()
{
    // The question keeps the panel in an event loop when the script ends.
    const ProgramRun outcome =
        run(start() + "click row \"Left\"\npress Delete\nexpect message \"*\"\n",
            {QStringLiteral("--script"), QStringLiteral("rename.script")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    const ProgramRun last =
        run("open \"projects/show.json\"\ncommand \"Handler answers\"\nexpect dialog \"*\"\n");
    QVERIFY2(last.exitCode == 0, qPrintable(last.errors));
}

void ScriptRunsTest::shouldFailWhenTheProgramIsQuit()
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report.xml"));
    const ProgramRun outcome =
        run("command \"Quit\"\nexpect row \"Nobody\"\n", {QStringLiteral("--junit"), report});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("was ended before its scripts were")),
             qPrintable(outcome.errors));
    QVERIFY2(contentOf(report).contains("failures=\"1\""), contentOf(report).constData());
}

void ScriptRunsTest::shouldEndWhenItFailsInADetection()
{
    // The detection would take minutes.
    const ProgramRun outcome =
        run(start()
            + "answer detectPauseMs 10000\ntimeout 0.1\ncommand \"Detect devices\"\n"
              "expect row \"Nobody\"\n");
    QCOMPARE(outcome.exitCode, 1);
}

void ScriptRunsTest::shouldSaveOverProjectsOnly()
{
    const QTemporaryDir folder;
    const QString mine = folder.filePath(QStringLiteral("mine.txt"));
    QVERIFY(writeFile(mine, "mine"));
    ProgramRun outcome = run(start() + "save \"" + mine.toUtf8() + "\"\n");
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("it is no project")),
             qPrintable(outcome.errors));
    QCOMPARE(contentOf(mine), QByteArray("mine"));

    const QString recording = folder.filePath(QStringLiteral("session.jsonl"));
    outcome = run(start() + "save \"" + recording.toUtf8() + "\"\n",
                  {QStringLiteral("--record"), recording});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("writes something else there")),
             qPrintable(outcome.errors));
    QVERIFY(contentOf(recording).startsWith("{\"trace\""));

    const QString project = folder.filePath(QStringLiteral("mine.json"));
    const QByteArray twice = "save \"" + project.toUtf8() + "\"\n";
    outcome = run(start() + twice + start() + twice);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

void ScriptRunsTest::shouldFindNothingInADeletion_data()
{
    QTest::addColumn<QByteArray>("reply");
    for (const char* reply : {"whenRaised", "beforeReturn", "afterReturn", "secondLater"})
        QTest::newRow(reply) << QByteArray(reply);
}

/// The panel moves on from the current row when the host has removed its processor.
void ScriptRunsTest::shouldFindNothingInADeletion()
{
    QFETCH(QByteArray, reply);
    qputenv("TARGETSELECT_CHECK", "1");
    const ProgramRun outcome = run(start() + "answer hostReply \"" + reply + "\"\n"
                                   + "click row \"Left\"\n"
                                     "press Delete\n"
                                     "reply \"Yes\"\n"
                                     "expect call DeleteProcessors\n"
                                     "expect call ReportSelection\n");
    qunsetenv("TARGETSELECT_CHECK");
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY2(!outcome.errors.contains(QStringLiteral("TSA-")), qPrintable(outcome.errors));
}

TSA_GUILESS_TEST_MAIN(ScriptRunsTest)

#include "tst_script_runs.moc"
