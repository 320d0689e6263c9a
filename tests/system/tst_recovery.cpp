#include "tests/support/ProgramRun.h"
#include "tests/support/WarningTrap.h"
#include "tests/system/Outcome.h"
#include "tests/system/User.h"
#include "tests/system/WorkbenchProgram.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>

#include <functional>

namespace {

QString text(const char* literal)
{
    return QString::fromUtf8(literal);
}

Wanted allProcessors(int count)
{
    return {text("TreeItem"), text("All processors(%1)").arg(count), text("Processors")};
}

Wanted button(const char* name)
{
    return {text("Button"), text(name), text("Workbench")};
}

Wanted logFilter()
{
    return {text("EditableText"), text("Log filter"), {}};
}

/// The workbench with a project of four processors, and what it keeps for a crash.
struct Workbench : WorkbenchProgram
{
    Workbench()
    {
        QFile::copy(text(DAYSWORK_PROJECT), project);
        QFile::setPermissions(project, QFile::ReadOwner | QFile::WriteOwner);
        QSettings settings(path(text("settings/Workbench/workbench.ini")), QSettings::IniFormat);
        settings.setValue(text("autosaveSeconds"), 1);
    }

    void open()
    {
        start({text("--project"), project});
        user.find(allProcessors(4));
    }

    void addProcessor(int count)
    {
        user.pressKeys(text("ctrl+shift+p"));
        user.find(allProcessors(count));
    }

    QStringList copies(const char* pattern = "*.recovery") const
    {
        return QDir(path(text("settings/Workbench/recovery")))
            .entryList({QString::fromUtf8(pattern)}, QDir::Files);
    }

    void waitForCopies(int count)
    {
        user.waitFor(text("%1 copies").arg(count), [&] { return copies().size() == count; });
    }

    /// Waits until this text is to be seen somewhere.
    void waitForText(const QString& part)
    {
        user.waitFor(part, [&] { return look().dump().contains(part); });
    }

    /// Changes the project, and ends without warning when there is a copy of it.
    void crash()
    {
        open();
        addProcessor(5);
        waitForCopies(1);
        kill();
    }

    void quit()
    {
        user.pressKeys(text("ctrl+q"));
        const QByteArray complaints = waitForEnd();
        if (exitCode() != 0 || !complaints.isEmpty())
            throw Stuck(text("it ended with %1: ").arg(exitCode()) + QString::fromUtf8(complaints));
    }

    const QString project = path(text("mine.json"));
    User user{*this};
};

} // namespace

/// The workbench is killed, and started again.
class RecoveryTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldRecoverUnsavedChanges();
    void shouldRefuseADamagedCopy();
    void shouldLeaveTheCopyOfARunningProgram();
    void shouldNotAskWithoutAUser();
    void shouldRememberTheWindow();
    void shouldCopyWholeLines();

private:
    static void run(const std::function<void()>& work);
};

/// A Stuck fails the test.
void RecoveryTest::run(const std::function<void()>& work)
{
    QString failure;
    try {
        work();
    } catch (const Stuck& stuck) {
        failure = QString::fromStdString(stuck.what());
    }
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
}

void RecoveryTest::shouldRecoverUnsavedChanges()
{
    Workbench workbench;
    const QByteArray before = contentOf(workbench.project);
    run([&] {
        workbench.crash();
        QCOMPARE(contentOf(workbench.project), before);
        workbench.start({});
        workbench.waitForText(workbench.project);
        workbench.user.click(button("Recover"));
        workbench.user.find(allProcessors(5));
        workbench.user.find({text("Window"), text("mine.json* - Workbench"), {}});
        QCOMPARE(contentOf(workbench.project), before);
        QCOMPARE(workbench.copies().size(), 1);
        workbench.user.pressKeys(text("ctrl+s"));
        workbench.waitForCopies(0);
        QVERIFY(projectText(workbench.project).contains(text("Processor 5")));
        workbench.user.pressKeys(text("ctrl+alt+z"));
        workbench.quit();
        // The language is remembered.
        workbench.start({});
        workbench.user.find({text("MenuItem"), QStringLiteral("语言(A)"), {}});
        workbench.quit();
    });
    QVERIFY(workbench.copies("*").isEmpty());
}

void RecoveryTest::shouldRefuseADamagedCopy()
{
    Workbench workbench;
    run([&] {
        workbench.crash();
        const QString path =
            workbench.path(text("settings/Workbench/recovery/")) + workbench.copies().first();
        const QByteArray damaged = contentOf(path).left(2000);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(damaged) == damaged.size());
        file.close();
        workbench.start({});
        workbench.user.click(button("Recover"));
        workbench.waitForText(text(", line "));
        workbench.waitForText(text(".damaged"));
        workbench.user.click(button("OK"));
        QCOMPARE(contentOf(path + text(".damaged")), damaged);
        QVERIFY(workbench.copies().isEmpty());
        workbench.quit();
    });
    QCOMPARE(workbench.copies("*"), QStringList(workbench.copies("*.damaged")));
}

void RecoveryTest::shouldLeaveTheCopyOfARunningProgram()
{
    Workbench first;
    Workbench second;
    second.shareSettings(first);
    run([&] {
        first.open();
        first.addProcessor(5);
        first.waitForCopies(1);
        const QStringList copies = first.copies();
        second.open();
        // The second window takes the keys: nothing is asked.
        second.user.pressKeys(text("ctrl+q"));
        second.waitForEnd();
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(first.copies(), copies);
        first.kill();
    });
}

void RecoveryTest::shouldNotAskWithoutAUser()
{
    Workbench workbench;
    run([&] {
        workbench.crash();
        const QStringList left = workbench.copies("*");
        const QString settings = workbench.path(text("settings/Workbench/workbench.ini"));
        const QByteArray kept = contentOf(settings);
        workbench.start({text("--self-test")});
        workbench.waitForEnd();
        QCOMPARE(workbench.exitCode(), 0);
        QCOMPARE(workbench.copies("*"), left);
        QCOMPARE(contentOf(settings), kept);
    });
}

void RecoveryTest::shouldRememberTheWindow()
{
    Workbench workbench;
    const QString name = text("a[*] & <b>b.json");
    QVERIFY(QFile::rename(workbench.project, workbench.path(name)));
    run([&] {
        workbench.start({text("--project"), workbench.path(name)});
        workbench.user.find({text("Window"), name + text(" - Workbench"), {}});
        workbench.user.writeInto(logFilter(), text("Report -Painting"));
        workbench.user.pressKeys(text("ctrl+4"));
        workbench.user.find({text("Table"), text("Faults"), {}});
        workbench.quit();
        workbench.start({});
        workbench.user.find({text("Table"), text("Faults"), {}});
        workbench.user.waitFor(text("the filter"), [&] {
            const auto filter = workbench.look().find(logFilter());
            return filter && filter->value == text("Report -Painting");
        });
        workbench.quit();
    });
}

void RecoveryTest::shouldCopyWholeLines()
{
    Workbench workbench;
    run([&] {
        workbench.open();
        workbench.user.click(allProcessors(4));
        workbench.user.writeInto(logFilter(), text("ReportSelection"));
        workbench.user.click({text("Table"), text("Live log"), {}});
        workbench.user.pressKeys(text("ctrl+a"));
        workbench.user.pressKeys(text("ctrl+c"));
        workbench.user.click(logFilter());
        workbench.user.pressKeys(text("ctrl+a"));
        workbench.user.pressKeys(text("ctrl+v"));
        const QRegularExpression line(
            text("^[\\d:.]+\tcall\tGUI\tReportSelection\\(.*\\)\t[\\d.]+ ms"));
        QString pasted;
        workbench.user.waitFor(text("the line"), [&] {
            const auto filter = workbench.look().find(logFilter());
            pasted = filter ? filter->value : QString();
            return line.match(pasted).hasMatch();
        });
        workbench.quit();
    });
}

TSA_TEST_MAIN(RecoveryTest)

#include "tst_recovery.moc"
