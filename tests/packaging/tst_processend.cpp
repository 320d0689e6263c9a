#include "tests/support/ProgramRun.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

/// A host's process ends as it wants to, whatever threads are inside the library.
class ProcessEndTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldLeaveTheHostItsExitCode_data();
    void shouldLeaveTheHostItsExitCode();
};

void ProcessEndTest::shouldLeaveTheHostItsExitCode_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"return", "exit", "exit-at-once", "exit-in-change", "quit", "unload"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void ProcessEndTest::shouldLeaveTheHostItsExitCode()
{
    QFETCH(QString, way);
    const ProgramRun run = runProgram(QStringLiteral(ENDING_HOST), {way});
    QVERIFY2(run.exitCode == 42, qPrintable(run.errors));
    QCOMPARE(run.errors, QString());
}

TSA_GUILESS_TEST_MAIN(ProcessEndTest)
#include "tst_processend.moc"
