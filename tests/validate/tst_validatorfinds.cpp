#include "tests/support/WarningTrap.h"
#include "tests/validate/ValidatorRun.h"

#include <QTest>

/// The validator on libraries and host plugins with one defect each: it finds every one, under its
/// code.
class ValidatorFindsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldFindWhatIsBrokenInALibrary_data();
    void shouldFindWhatIsBrokenInALibrary();
    void shouldFindNothingInAWholeLibrary();
    void shouldFindWhatIsBrokenInAHost_data();
    void shouldFindWhatIsBrokenInAHost();
    void shouldFindNothingInAWholeHost();
    void shouldSkipWhatAHostRefuses();
    void shouldFindAMissingEntryPoint();
    void shouldFindWhatIsNoLibrary();
};

namespace {

void addRow(const char* breakage, const char* only, const char* code, const char* status)
{
    QTest::addRow("%s in %s", breakage, only)
        << QString::fromLatin1(breakage) << QString::fromLatin1(only) << QString::fromLatin1(code)
        << QString::fromLatin1(status);
}

void addColumns()
{
    QTest::addColumn<QString>("breakage");
    QTest::addColumn<QString>("only");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("status");
}

/// Runs one test on the files, and looks for the finding, the status and the exit code.
void expectFinding(const QString& only, const QStringList& files, const QString& code,
                   const QString& status)
{
    const QString limit =
        code == QLatin1String("TSA-V17") ? QStringLiteral("5") : QStringLiteral("60");
    const ValidatorRun run(
        QStringList{QStringLiteral("--only"), only, QStringLiteral("--timeout"), limit} + files);
    QVERIFY2(run.hasEnded(), run.description().constData());
    QVERIFY2(run.codes().contains(code), run.description().constData());
    QCOMPARE(run.onlyTest().value(QLatin1String("status")).toString(), status);
    QCOMPARE(run.exitCode(), status == QLatin1String("warning") ? 0 : 1);
    QVERIFY2(run.output().contains(QStringLiteral("repeat: ")), run.description().constData());
}

} // namespace

void ValidatorFindsTest::shouldFindWhatIsBrokenInALibrary_data()
{
    addColumns();
    addRow("old-version", "symbol.version", "TSA-V03", "failed");
    addRow("accepts-null", "symbol.null", "TSA-V04", "failed");
    addRow("refuses", "symbol.version", "TSA-V04", "failed");
    addRow("nothing", "symbol.others", "TSA-V04", "failed");
    addRow("no-widget", "life.start", "TSA-V05", "failed");
    addRow("no-observer", "life.start", "TSA-V06", "failed");
    addRow("lazy", "operation.detect", "TSA-V07", "failed");
    addRow("ignores-25", "event.25", "TSA-V08", "failed");
    addRow("loses-row", "life.start", "TSA-V09", "failed");
    addRow("loses-events", "storm.threads", "TSA-V09", "failed");
    addRow("always-builds", "misuse.initthread", "TSA-V10", "failed");
    addRow("silent-checks", "misuse.thread", "TSA-V11", "failed");
    addRow("false-alarm", "life.start", "TSA-V12", "failed");
    addRow("immortal", "life.layer", "TSA-V13", "failed");
    addRow("leaks", "leak.panels", "TSA-V14", "failed");
    addRow("warns", "life.start", "TSA-V15", "warning");
    addRow("crashes", "symbol.version", "TSA-V16", "crashed");
    addRow("crashes-in-18", "event.18", "TSA-V16", "crashed");
    addRow("exits", "life.start", "TSA-V16", "crashed");
    addRow("hangs", "life.start", "TSA-V17", "failed");
    addRow("throws", "operation.detect", "TSA-V18", "failed");
}

void ValidatorFindsTest::shouldFindWhatIsBrokenInALibrary()
{
    QFETCH(const QString, breakage);
    QFETCH(const QString, only);
    QFETCH(const QString, code);
    QFETCH(const QString, status);
    expectFinding(only, {ValidatorRun::broken(QStringLiteral("library_") + breakage)}, code,
                  status);
}

/// The broken libraries stand before the whole one. By itself that breaks nothing.
void ValidatorFindsTest::shouldFindNothingInAWholeLibrary()
{
    const QString library = ValidatorRun::broken(QStringLiteral("library_nothing"));
    for (const char* only : {"symbol.version", "symbol.null", "life.start", "life.again",
                             "operation.detect", "event.18", "leak.panels"}) {
        const ValidatorRun run({QStringLiteral("--only"), QString::fromLatin1(only), library});
        QVERIFY2(run.exitCode() == 0 && run.codes().isEmpty(), run.description().constData());
    }
}

void ValidatorFindsTest::shouldFindWhatIsBrokenInAHost_data()
{
    addColumns();
    addRow("opens-nothing", "host.open", "TSA-V20", "failed");
    addRow("opens-empty", "host.open", "TSA-V20", "failed");
    addRow("unattached", "host.add", "TSA-V21", "failed");
    addRow("two-names", "host.records", "TSA-V22", "failed");
    addRow("knows-all", "host.unknown", "TSA-V23", "failed");
    addRow("repeats", "host.lists", "TSA-V24", "failed");
    addRow("null-identity", "host.lists", "TSA-V24", "failed");
    addRow("null-identity", "host.open", "TSA-E19", "failed");
    addRow("hides-groups", "host.lists", "TSA-V25", "failed");
    addRow("tells-otherwise", "host.add", "TSA-V26", "failed");
    addRow("misplaces", "host.add", "TSA-V27", "failed");
    addRow("lazy", "host.renamegroup", "TSA-V27", "failed");
    addRow("keeps-deleted", "host.delete", "TSA-V27", "failed");
    addRow("keeps-deleted", "host.delete", "TSA-E21", "failed");
    addRow("tells-early", "host.add", "TSA-V28", "failed");
    addRow("throws", "host.add", "TSA-V29", "failed");
    addRow("gui-thread-only", "host.threads", "TSA-V30", "failed");
    addRow("uneven-lists", "host.counts", "TSA-V31", "failed");
    addRow("slow", "host.add", "TSA-W23", "warning");
    addRow("crashes", "host.delete", "TSA-V16", "crashed");
    addRow("hangs", "host.group", "TSA-V17", "failed");
}

void ValidatorFindsTest::shouldFindWhatIsBrokenInAHost()
{
    QFETCH(const QString, breakage);
    QFETCH(const QString, only);
    QFETCH(const QString, code);
    QFETCH(const QString, status);
    expectFinding(
        only,
        {ValidatorRun::wholeLibrary(), ValidatorRun::broken(QStringLiteral("host_") + breakage)},
        code, status);
}

void ValidatorFindsTest::shouldFindNothingInAWholeHost()
{
    const ValidatorRun run({QStringLiteral("--only"), QStringLiteral("host.*"),
                            ValidatorRun::wholeLibrary(),
                            ValidatorRun::broken(QStringLiteral("host_nothing"))});
    QVERIFY2(run.exitCode() == 0, run.description().constData());
    QVERIFY2(!run.output().contains(QStringLiteral("TSA-V")), run.description().constData());
}

void ValidatorFindsTest::shouldSkipWhatAHostRefuses()
{
    for (const char* only : {"host.add", "host.delete", "host.group", "host.move",
                             "host.renamegroup", "host.ungroup"}) {
        const ValidatorRun run({QStringLiteral("--only"), QString::fromLatin1(only),
                                ValidatorRun::wholeLibrary(),
                                ValidatorRun::broken(QStringLiteral("host_declines"))});
        const QString status = run.onlyTest().value(QLatin1String("status")).toString();
        QVERIFY2(status == QLatin1String("skipped"), run.description().constData());
    }
    const ValidatorRun rename({QStringLiteral("--only"), QStringLiteral("host.rename"),
                               ValidatorRun::wholeLibrary(),
                               ValidatorRun::broken(QStringLiteral("host_declines"))});
    QVERIFY2(rename.exitCode() == 0 && rename.codes().isEmpty(), rename.description().constData());
}

void ValidatorFindsTest::shouldFindAMissingEntryPoint()
{
    const QString hollow = ValidatorRun::broken(QStringLiteral("hollow"));
    expectFinding(QStringLiteral("symbol.entry"), {hollow}, QStringLiteral("TSA-V02"),
                  QStringLiteral("failed"));
    expectFinding(QStringLiteral("host.open"), {ValidatorRun::wholeLibrary(), hollow},
                  QStringLiteral("TSA-V19"), QStringLiteral("failed"));
}

void ValidatorFindsTest::shouldFindWhatIsNoLibrary()
{
    const QString text = QStringLiteral(TSA_DOCS "/testing.md");
    expectFinding(QStringLiteral("symbol.entry"), {text}, QStringLiteral("TSA-V01"),
                  QStringLiteral("failed"));
    expectFinding(QStringLiteral("host.open"), {ValidatorRun::wholeLibrary(), text},
                  QStringLiteral("TSA-V19"), QStringLiteral("failed"));
}

TSA_GUILESS_TEST_MAIN(ValidatorFindsTest)
#include "tst_validatorfinds.moc"
