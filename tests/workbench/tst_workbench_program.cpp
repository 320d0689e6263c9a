#include "tests/support/WarningTrap.h"
#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLocalServer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

#include <utility>

namespace {

/// Runs the workbench's self-test with the panel.
ProgramRun selfTest(const QStringList& arguments)
{
    return runWorkbench(QStringList{QStringLiteral("--self-test")} + arguments);
}

/// Runs a script on the project of that path.
ProgramRun runScript(const QByteArray& script, const QString& project,
                     const QStringList& arguments = {})
{
    return runWorkbench(QStringList{QStringLiteral("--script"), QStringLiteral("-"),
                                    QStringLiteral("--project"), project}
                            + arguments,
                        script);
}

/// A project of one processor.
QByteArray projectOf(const char* name)
{
    return QByteArrayLiteral("{\"version\": 1, \"processors\": [{\"id\": "
                             "\"5b2d1f0c-0000-4000-8000-000000001001\", \"name\": \"")
           + name + "\"}]}";
}

} // namespace

/// What the program leaves behind in files, and in its exit code.
class WorkbenchProgramTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldCheckTheSampleByDefault();
    void shouldFailWithNothingToCheck();
    void shouldLeaveAProjectAsItIs_data();
    void shouldLeaveAProjectAsItIs();
    void shouldRefuseOptionsThatDoNotGoTogether_data();
    void shouldRefuseOptionsThatDoNotGoTogether();
#ifdef Q_OS_UNIX // Windows limits no file.
    void shouldFailWhenTheTraceEnds();
#endif
    void shouldLeaveTheSocketOfAnother();
    void shouldLeaveTheLinesOfAnother_data();
    void shouldLeaveTheLinesOfAnother();
    void shouldGoOnWithoutWhatIsRefused();
    void shouldReportWhatIsRefused();
    void shouldHaveTheScaleOfTheDisplay_data();
    void shouldHaveTheScaleOfTheDisplay();
    void shouldRefuseProjects_data();
    void shouldRefuseProjects();
    void shouldRecordAScriptOnAProject();
    void shouldNeverReplaceWhatAnotherProgramWrote();
    void shouldExportTheLog();

private:
    QString file(const char* name) const
    {
        return m_folder.filePath(QLatin1String(name));
    }

    const QTemporaryDir m_folder;
};

void WorkbenchProgramTest::shouldCheckTheSampleByDefault()
{
    const ProgramRun outcome = selfTest({});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

void WorkbenchProgramTest::shouldFailWithNothingToCheck()
{
    QFile project(file("empty.json"));
    QVERIFY(project.open(QIODevice::WriteOnly));
    QVERIFY(project.write("{\"version\": 1}") > 0);
    project.close();
    const ProgramRun outcome = selfTest({QStringLiteral("--project"), project.fileName()});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("there is nothing to check")),
             qPrintable(outcome.errors));
}

void WorkbenchProgramTest::shouldLeaveAProjectAsItIs_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("reason");
    QTest::newRow("trace") << QStringLiteral("--trace") << QStringLiteral("is not a trace");
#ifdef Q_OS_UNIX // A local socket is no file on Windows.
    QTest::newRow("inspector") << QStringLiteral("--inspect") << QStringLiteral("is not a socket");
#endif
}

void WorkbenchProgramTest::shouldLeaveAProjectAsItIs()
{
    QFETCH(QString, option);
    QFETCH(QString, reason);
    const QString project = file("mine.json");
    QFile::remove(project);
    QVERIFY(QFile::copy(sampleProject(), project));
    const QByteArray before = contentOf(project);
    const ProgramRun outcome = selfTest({option, project});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(reason), qPrintable(outcome.errors));
    QCOMPARE(contentOf(project), before);
}

void WorkbenchProgramTest::shouldRefuseOptionsThatDoNotGoTogether_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("reason");
    const auto add = [](const char* options, const char* reason) {
        QTest::newRow(options) << QString::fromLatin1(options) << QString::fromLatin1(reason);
    };
    add("stray.script", "\"stray.script\" belongs to no option");
    add("--script a.script b.script", "\"b.script\" belongs to no option");
    add("--self-test --script a", "--script and --self-test do not go together");
    add("--tour d --script a", "--tour and --script do not go together");
    add("--replay r --self-test", "--self-test and --replay do not go together");
    add("--replay r --record q", "--record does not go with --replay");
    add("--replay r --trace t", "--trace does not go with --replay");
    add("--replay=", "--replay has no name");
    add("--record=", "--record has no name");
    add("--junit j", "--junit goes with --script only");
    add("--record x --trace ./x", "x is named for two purposes");
    add("--project x --trace ./x", "x is named for two purposes");
    add("--script x --script y --junit y", "y is named for two purposes");
    add("--trace a --trace b", "--trace is given more than once");
    add("--project a --project b", "--project is given more than once");
#ifdef Q_OS_WIN
    add("--record x --trace X", " is named for two purposes");
#endif
}

void WorkbenchProgramTest::shouldRefuseOptionsThatDoNotGoTogether()
{
    QFETCH(QString, options);
    QFETCH(QString, reason);
    const ProgramRun outcome = runProgram(workbenchProgram(), options.split(QLatin1Char(' ')));
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.contains(reason), qPrintable(outcome.errors));
}

#ifdef Q_OS_UNIX
void WorkbenchProgramTest::shouldFailWhenTheTraceEnds()
{
    const ProgramRun outcome = runWorkbenchOnAFullDisk(
        {QStringLiteral("--self-test"), QStringLiteral("--trace"), file("trace.txt")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(file("trace.txt") + QStringLiteral(" cannot be written: ")),
             qPrintable(outcome.errors));
}
#endif

void WorkbenchProgramTest::shouldLeaveTheSocketOfAnother()
{
    QLocalServer first;
    QVERIFY(first.listen(file("inspector")));
    const ProgramRun outcome = selfTest({QStringLiteral("--inspect"), file("inspector")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("another program listens there")),
             qPrintable(outcome.errors));
#ifdef Q_OS_UNIX // A local socket is no file on Windows.
    QVERIFY(QFile::exists(file("inspector")));
#endif
}

void WorkbenchProgramTest::shouldLeaveTheLinesOfAnother_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("trace") << QStringLiteral("--trace");
    QTest::newRow("recording") << QStringLiteral("--record");
}

/// As long as the other one runs: a crash locks nothing.
void WorkbenchProgramTest::shouldLeaveTheLinesOfAnother()
{
    QFETCH(QString, option);
    const QString path = file("lines of" + option.toUtf8());
    QProcess first;
    first.start(workbenchProgram(), withPanel({option, path}));
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(path).size() > 0, 30000);
    const QByteArray start = contentOf(path);
    ProgramRun second = selfTest({option, path});
    QCOMPARE(second.exitCode, 1);
    QVERIFY2(
        second.errors.contains(QDir::toNativeSeparators(path)
                               + QStringLiteral(" cannot be written: it is being written already")),
        qPrintable(second.errors));
    QVERIFY(contentOf(path).startsWith(start));

    first.kill();
    QVERIFY(first.waitForFinished());
    second = selfTest({option, path});
    QVERIFY2(second.exitCode == 0, qPrintable(second.errors));
}

/// For a user, who is told.
void WorkbenchProgramTest::shouldGoOnWithoutWhatIsRefused()
{
    QVERIFY(writeFile(file("one.json"), projectOf("One")));
    QVERIFY(writeFile(file("mine.txt"), "mine"));
    QVERIFY(writeFile(file("mine too.txt"), "mine"));
    QProcess program;
    program.start(workbenchProgram(), withPanel({QStringLiteral("--project"), file("one.json"),
                                                 QStringLiteral("--trace"), file("mine.txt"),
                                                 QStringLiteral("--record"), file("mine too.txt"),
                                                 QStringLiteral("--inspect"), file("inspector")}));
    QString shown;
    const auto isShown = [&] {
        shown = QString::fromUtf8(inspectWorkbench(file("inspector")));
        return shown.contains(QStringLiteral("is not a recording"));
    };
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), 30000);
    QVERIFY2(shown.contains(QStringLiteral("is not a trace")), qPrintable(shown));
    QVERIFY2(shown.contains(QStringLiteral("All processors(1)")), qPrintable(shown));
    program.kill();
    QVERIFY(program.waitForFinished());
    QCOMPARE(contentOf(file("mine.txt")), QByteArray("mine"));
    QCOMPARE(contentOf(file("mine too.txt")), QByteArray("mine"));
}

/// An earlier report would tell of a success.
void WorkbenchProgramTest::shouldReportWhatIsRefused()
{
    QVERIFY(writeFile(file("one.json"), projectOf("One")));
    QVERIFY(writeFile(file("mine.txt"), "mine"));
    const QStringList report{QStringLiteral("--junit"), file("report.xml")};
    ProgramRun outcome = runScript("expect shown\n", file("one.json"), report);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY(!contentOf(file("report.xml")).contains("<failure"));
    outcome = runScript("expect shown\n", file("one.json"),
                        report + QStringList{QStringLiteral("--trace"), file("mine.txt")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("is not a trace")), qPrintable(outcome.errors));
    QVERIFY(contentOf(file("report.xml")).contains("is not a trace"));
}

void WorkbenchProgramTest::shouldHaveTheScaleOfTheDisplay_data()
{
    QTest::addColumn<int>("dotsPerInch");
    QTest::addColumn<QSize>("size");
    QTest::newRow("100 per cent") << 96 << QSize(1280, 800);
    QTest::newRow("200 per cent") << 192 << QSize(2560, 1600);
#ifdef Q_OS_WIN
    QTest::newRow("125 per cent") << 120 << QSize(1600, 1000);
    QTest::newRow("150 per cent") << 144 << QSize(1920, 1200);
    QTest::newRow("175 per cent") << 168 << QSize(2240, 1400);
#else
    QTest::newRow("what an X server tells by itself") << 100 << QSize(1280, 800);
#endif
}

void WorkbenchProgramTest::shouldHaveTheScaleOfTheDisplay()
{
    QFETCH(int, dotsPerInch);
    QFETCH(QSize, size);
    const QString script = file("picture.script");
    QVERIFY(writeFile(script, "expect shown\npicture \"window\"\n"));
    const QDir pictures(file("pictures"));
    qputenv("QT_FONT_DPI", QByteArray::number(dotsPerInch));
    const ProgramRun outcome = runWorkbench(
        {QStringLiteral("--script"), script, QStringLiteral("--pictures"), pictures.path()});
    qunsetenv("QT_FONT_DPI");
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    const QStringList files = pictures.entryList(QDir::Files);
    QCOMPARE(files.size(), 1);
    QCOMPARE(QImage(pictures.filePath(files.first())).size(), size);
}

void WorkbenchProgramTest::shouldRefuseProjects_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");
    QTest::newRow("field twice")
        << QByteArray("{\"version\": 1,\n \"ipList\": [],\n \"ipList\": []}")
        << QStringLiteral("line 3, column 2: ipList: this field occurs twice");
    QTest::newRow("out of range") << QByteArray(
        "{\"version\": 1,\n \"answers\": {\"detectPauseMs\": 10001}}")
                                  << QStringLiteral("line 2, column 31: answers.detectPauseMs: ");
    QTest::newRow("time-out out of range")
        << QByteArray("{\"version\": 1,\n \"network\": {\"probeTimeoutMs\": 10}}")
        << QStringLiteral("line 2, column 32: network.probeTimeoutMs: ");
    QTest::newRow("a name of 15 MB")
        << projectOf(QByteArray(15000000, 'x').constData())
        << QStringLiteral("processors[0].name: the name has more than 4096 characters");
    QByteArray groups;
    for (int number = 0; number < 20000; ++number)
        groups += QStringLiteral("%1{\"id\": \"%2\"}")
                      .arg(number > 0 ? QStringLiteral(",") : QString(),
                           QUuid(static_cast<uint>(number) + 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)
                               .toString(QUuid::WithoutBraces))
                      .toLatin1();
    QTest::newRow("20,000 groups")
        << "{\"version\": 1, \"groups\": [" + groups + "]}"
        << QStringLiteral("groups[1000]: a project holds at most 1000 groups");
}

void WorkbenchProgramTest::shouldRefuseProjects()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, reason);
    QVERIFY(writeFile(file("refused.json"), json));
    const ProgramRun outcome = selfTest({QStringLiteral("--project"), file("refused.json")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(reason), qPrintable(outcome.errors));
    QVERIFY(contentOf(file("refused.json")) == json);
}

void WorkbenchProgramTest::shouldRecordAScriptOnAProject()
{
    QVERIFY(writeFile(file("one.json"), projectOf("One")));
    ProgramRun outcome = runScript("click row \"One\"\npress F2\ntype \"Two\"\npress Return\n"
                                   "expect row \"Two\"\n",
                                   file("one.json"),
                                   {QStringLiteral("--record"), file("session.jsonl"),
                                    QStringLiteral("--trace"), file("session.txt")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(contentOf(file("one.json")), projectOf("One"));
    QVERIFY(contentOf(file("session.txt")).contains("RenameProcessor"));
    QVERIFY(contentOf(file("session.jsonl")).contains("\"name\":\"RenameProcessor\""));
    outcome = runWorkbench({QStringLiteral("--replay"), file("session.jsonl")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

/// The script takes a picture whenever this test has to play the other program.
void WorkbenchProgramTest::shouldNeverReplaceWhatAnotherProgramWrote()
{
    const QByteArray script = "open \"shared.json\"\n"
                              "expect shown\n"
                              "host rename \"One\" \"Mine\"\n"
                              "picture \"opened\"\n"
                              "click \"Compare...\"\n"
                              "expect dialog \"*\"\n"
                              "close\n"
                              "click \"Keep\"\n"
                              "expect row \"Mine\"\n"
                              "picture \"kept\"\n"
                              "click \"Reload\"\n"
                              "expect row \"Three\"\n"
                              "host rename \"Three\" \"Mine again\"\n"
                              "picture \"reloaded\"\n"
                              "expect button \"Reload\" enabled\n"
                              "command \"Save\"\n"
                              "expect message \"*Save the project all the same?*\"\n"
                              "reply \"Cancel\"\n"
                              "expect row \"Mine again\"\n";
    QVERIFY(writeFile(file("shared.json"), projectOf("One")));
    QVERIFY(writeFile(file("shared.script"), script));
    QProcess program;
    program.start(workbenchProgram(), withPanel({QStringLiteral("--script"), file("shared.script"),
                                                 QStringLiteral("--pictures"), file("pictures")}));
    const std::pair<const char*, const char*> changes[] = {
        {"01-opened.png", "Two"}, {"02-kept.png", "Three"}, {"03-reloaded.png", "Four"}};
    for (const auto& [picture, name] : changes) {
        const QString taken = file("pictures/") + QLatin1String(picture);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(taken) || program.state() == QProcess::NotRunning,
                                 30000);
        QVERIFY(writeFile(file("shared.json"), projectOf(name)));
    }
    QVERIFY(program.waitForFinished());
    QVERIFY2(program.exitCode() == 0, program.readAllStandardError().constData());
    QCOMPARE(contentOf(file("shared.json")), projectOf("Four"));
}

void WorkbenchProgramTest::shouldExportTheLog()
{
    QVERIFY(writeFile(file("one.json"), projectOf("One")));
    const auto exported = [this](const char* name) {
        return "click \"Export...\"\nexpect dialog \"*\"\nfill \"fileNameEdit\" \""
               + file(name).toUtf8() + "\"\npress Return\nexpect no dialog\n";
    };
    const ProgramRun outcome = runScript("expect shown\nclick row \"One\"\n" + exported("log.txt")
                                             + "click \"Painting\"\n" + exported("all.txt"),
                                         file("one.json"));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    const QString log = QString::fromUtf8(contentOf(file("log.txt")));
    const QRegularExpression timed(
        QStringLiteral("\tcall\tGUI\tReportSelection[^\n]*\t[\\d.]+ ms\n"));
    QVERIFY2(log.contains(timed), qPrintable(log));
    QVERIFY2(!log.contains(QStringLiteral("ShowProcessorMoreButton")), qPrintable(log));
    QVERIFY(contentOf(file("all.txt")).contains("ShowProcessorMoreButton"));
}

TSA_GUILESS_TEST_MAIN(WorkbenchProgramTest)

#include "tst_workbench_program.moc"
