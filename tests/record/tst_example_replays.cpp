#include "sdk/record/TraceReader.h"
#include "tests/support/WarningTrap.h"
#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// Makes the folders from which the panel imported: it exported there before, and the scripts
/// removed them at their end.
void restoreFolders(const QString& recording)
{
    CTraceReader reader;
    QVERIFY2(reader.read(recording), qPrintable(reader.problem()));
    for (const CTraceEntry& entry : reader.entries()) {
        if (entry.name == QLatin1String("ImportIPFile")) {
            const QString path = entry.arguments.value(QLatin1String("path")).toString();
            QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        }
    }
}

} // namespace

/// Each script that comes with the workbench is recorded, and its recording replayed.
class ExampleReplaysTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldReplayARecordedScript_data();
    void shouldReplayARecordedScript();

private:
    const QTemporaryDir m_folder;
};

void ExampleReplaysTest::shouldReplayARecordedScript_data()
{
    QTest::addColumn<QString>("script");
    const QFileInfoList scripts =
        QDir(QStringLiteral(EXAMPLE_SCRIPTS)).entryInfoList({QStringLiteral("*.script")});
    for (const QFileInfo& script : scripts)
        QTest::newRow(qPrintable(script.baseName())) << script.filePath();
    QVERIFY(scripts.size() > 20);
}

void ExampleReplaysTest::shouldReplayARecordedScript()
{
    QFETCH(QString, script);
    const QString path = m_folder.filePath(QStringLiteral("session.jsonl"));
    ProgramRun run =
        runWorkbench({QStringLiteral("--script"), script, QStringLiteral("--record"), path});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    restoreFolders(path);
    run = runWorkbench({QStringLiteral("--replay"), path});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
}

TSA_GUILESS_TEST_MAIN(ExampleReplaysTest)

#include "tst_example_replays.moc"
