#include "tests/support/ProgramRun.h"
#include "tests/support/WarningTrap.h"

#include <QFile>
#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// Runs the workbench's self-test with the panel.
ProgramRun selfTest(const QStringList& arguments)
{
    return runProgram(QStringLiteral(WORKBENCH_PROGRAM),
                      QStringList{QStringLiteral("--self-test"), QStringLiteral("--library"),
                                  QStringLiteral(WORKBENCH_PANEL_LIBRARY)}
                          + arguments);
}

} // namespace

/// What the program leaves behind in files, and in its exit code.
class WorkbenchProgramTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldCheckTheSampleByDefault();
    void shouldFailWithNothingToCheck();
    void shouldLeaveItsProjectAsItIs_data();
    void shouldLeaveItsProjectAsItIs();
    void shouldRefuseOptionsThatDoNotGoTogether_data();
    void shouldRefuseOptionsThatDoNotGoTogether();
#ifdef Q_OS_UNIX // Windows limits no file.
    void shouldFailWhenTheTraceEnds();
#endif
    void shouldLeaveTheSocketOfAnother();

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

void WorkbenchProgramTest::shouldLeaveItsProjectAsItIs_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("reason");
    QTest::newRow("trace") << QStringLiteral("--trace") << QStringLiteral("is not a trace");
#ifdef Q_OS_UNIX // A local socket is no file on Windows.
    QTest::newRow("inspector") << QStringLiteral("--inspect") << QStringLiteral("is not a socket");
#endif
}

void WorkbenchProgramTest::shouldLeaveItsProjectAsItIs()
{
    QFETCH(QString, option);
    QFETCH(QString, reason);
    const QString project = file("mine.json");
    QFile::remove(project);
    QVERIFY(QFile::copy(QStringLiteral(WORKBENCH_PROJECTS "/sample.json"), project));
    const QByteArray before = contentOf(project);
    const ProgramRun outcome = selfTest({QStringLiteral("--project"), project, option, project});
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
#ifdef Q_OS_WIN
    add("--record x --trace X", " is named for two purposes");
#endif
}

void WorkbenchProgramTest::shouldRefuseOptionsThatDoNotGoTogether()
{
    QFETCH(QString, options);
    QFETCH(QString, reason);
    const ProgramRun outcome =
        runProgram(QStringLiteral(WORKBENCH_PROGRAM), options.split(QLatin1Char(' ')));
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.contains(reason), qPrintable(outcome.errors));
}

#ifdef Q_OS_UNIX
void WorkbenchProgramTest::shouldFailWhenTheTraceEnds()
{
    // A full disk: the trace of a self-test has more than the 512 bytes that it may have.
    const ProgramRun outcome = runProgram(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("trap '' XFSZ; ulimit -f 1; exec \"$@\""),
         QStringLiteral("sh"), QStringLiteral(WORKBENCH_PROGRAM), QStringLiteral("--self-test"),
         QStringLiteral("--library"), QStringLiteral(WORKBENCH_PANEL_LIBRARY),
         QStringLiteral("--trace"), file("trace.txt")});
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

TSA_GUILESS_TEST_MAIN(WorkbenchProgramTest)

#include "tst_workbench_program.moc"
