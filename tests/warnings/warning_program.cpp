#include "tests/support/WarningTrap.h"

#include <QTest>

#include <thread>

/// Test functions that warn, for tst_warningtrap. Each of them passes by itself.
class WarningProgram final : public QObject
{
    Q_OBJECT

private slots:
    void shouldInform();
    void shouldWarn_data();
    void shouldWarn();
    void shouldTakeItsWarning();
    void shouldFail();
};

void WarningProgram::shouldInform()
{
    qDebug("this is debugged");
    qInfo("this is told");
    QVERIFY(true);
}

void WarningProgram::shouldWarn_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("here") << false;
    QTest::newRow("on another thread") << true;
}

void WarningProgram::shouldWarn()
{
    QFETCH(bool, foreign);
    if (foreign)
        std::thread([] { qWarning("this is unexpected"); }).join();
    else
        qWarning("this is unexpected");
    QVERIFY(true);
}

void WarningProgram::shouldTakeItsWarning()
{
    qWarning("this is expected");
    qCritical("so is this");
    QCOMPARE(WarningTrap::take(),
             QStringList({QStringLiteral("this is expected"), QStringLiteral("so is this")}));
}

void WarningProgram::shouldFail()
{
    QVERIFY(false);
}

TSA_APPLESS_TEST_MAIN(WarningProgram)
#include "warning_program.moc"
