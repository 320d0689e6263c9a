#include "tests/support/ProgramRun.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

class WarningTrapTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldFailARunWithUnexpectedWarnings_data();
    void shouldFailARunWithUnexpectedWarnings();
};

void WarningTrapTest::shouldFailARunWithUnexpectedWarnings_data()
{
    QTest::addColumn<QString>("function"); // empty for all
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("silent") << "shouldInform" << 0 << "";
    QTest::newRow("warning") << "shouldWarn:here" << 1
                             << "unexpected warning in shouldWarn(here): this is unexpected";
    QTest::newRow("warning of another thread")
        << "shouldWarn:on another thread" << 1
        << "unexpected warning in shouldWarn(on another thread): this is unexpected";
    QTest::newRow("taken warning") << "shouldTakeItsWarning" << 0 << "";
    QTest::newRow("warning before a taken one")
        << "" << 1 << "unexpected warning in shouldWarn(here): this is unexpected";
    QTest::newRow("failure") << "shouldFail" << 1 << "";
}

void WarningTrapTest::shouldFailARunWithUnexpectedWarnings()
{
    QFETCH(QString, function);
    QFETCH(int, exitCode);
    QFETCH(QString, complaint);
    const ProgramRun run = runProgram(QStringLiteral(WARNING_PROGRAM),
                                      function.isEmpty() ? QStringList() : QStringList(function));
    QVERIFY2(run.output.contains(complaint), qPrintable(run.output));
    QCOMPARE(run.output.contains(QStringLiteral("unexpected warning")), !complaint.isEmpty());
    QCOMPARE(run.exitCode, exitCode);
}

TSA_GUILESS_TEST_MAIN(WarningTrapTest)
#include "tst_warningtrap.moc"
