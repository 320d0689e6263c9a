#include "sdk/validate/Codes.h"
#include "tests/support/WarningTrap.h"
#include "tests/validate/ValidatorRun.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

/// How the validator is called, what it writes, how it ends, and that its page says the same.
class ValidatorReportsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseWrongOptions_data();
    void shouldRefuseWrongOptions();
    void shouldExplainItself();
    void shouldListItsTests();
    void shouldFailWhenNothingRan_data();
    void shouldFailWhenNothingRan();
    void shouldChooseByLevelAndPattern();
    void shouldNameTheLastCallOfACrash();
    void shouldRepeatACrash();
    void shouldNameTheOperationOfTheHandlerInACrash();
    void shouldNameTheLastCallOfAHang();
    void shouldWriteWellFormedJUnit();
    void shouldWriteJson();
    void shouldFailWhenAReportCannotBeWritten();
    void shouldReplaceReportsOnly_data();
    void shouldReplaceReportsOnly();
    void shouldGiveEachCodeOnce();
    void shouldHaveAParagraphForEachCode();
    void shouldHaveAParagraphForEachOption();
};

namespace {

QString page()
{
    QFile file(QStringLiteral(TSA_DOCS "/validator.md"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString crashing()
{
    return ValidatorRun::broken(QStringLiteral("library_crashes-in-18"));
}

/// The number of elements of this name in the report; -1 when it is not well formed.
int elements(const QByteArray& xml, const QString& name)
{
    QXmlStreamReader reader(xml);
    int count = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            ++count;
    }
    return reader.hasError() ? -1 : count;
}

} // namespace

void ValidatorReportsTest::shouldRefuseWrongOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("expected");
    const QString library = ValidatorRun::wholeLibrary();
    const auto add = [](const char* name, const QStringList& arguments, const QString& expected) {
        QTest::newRow(name) << arguments << expected;
    };
    add("no library", {}, QStringLiteral("one library"));
    add("three files", {library, library, library}, QStringLiteral("one library"));
    add("missing file", {QStringLiteral("/nowhere.so")}, QStringLiteral("/nowhere.so"));
    add("level 0", {QStringLiteral("--level"), QStringLiteral("0"), library},
        QStringLiteral("1 to 10"));
    add("level 11", {QStringLiteral("--level"), QStringLiteral("11"), library},
        QStringLiteral("1 to 10"));
    add("seed", {QStringLiteral("--seed"), QStringLiteral("x"), library}, QStringLiteral("\"x\""));
    add("timeout", {QStringLiteral("--timeout"), QStringLiteral("0"), library},
        QStringLiteral("seconds"));
    add("unknown option", {QStringLiteral("--fast"), library}, QStringLiteral("fast"));
}

void ValidatorReportsTest::shouldRefuseWrongOptions()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, expected);
    const ValidatorRun run(arguments);
    QVERIFY(run.hasEnded());
    QCOMPARE(run.exitCode(), 2);
    QVERIFY2(run.errors().contains(expected), qPrintable(run.errors()));
    QCOMPARE(run.output(), QString());
}

void ValidatorReportsTest::shouldExplainItself()
{
    const ValidatorRun run({QStringLiteral("--help")});
    QCOMPARE(run.exitCode(), 0);
    QVERIFY(run.output().contains(QStringLiteral("LIBRARY [HOST_PLUGIN]")));
    QVERIFY(!run.output().contains(QStringLiteral("--child")));
}

void ValidatorReportsTest::shouldListItsTests()
{
    const ValidatorRun run({QStringLiteral("--list")});
    QCOMPARE(run.exitCode(), 0);
    const QStringList lines = run.output().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QSet<QString> names;
    QSet<int> levels;
    for (const QString& line : lines) {
        levels.insert(line.leftRef(2).toInt());
        names.insert(line.mid(3).section(QLatin1Char(':'), 0, 0));
    }
    QCOMPARE(names.size(), lines.size());
    for (int level = 1; level <= 10; ++level)
        QVERIFY2(levels.contains(level), qPrintable(QString::number(level)));
}

void ValidatorReportsTest::shouldFailWhenNothingRan_data()
{
    QTest::addColumn<QString>("only");
    QTest::newRow("no such test") << QStringLiteral("nothing");
    QTest::newRow("all skipped") << QStringLiteral("host.*");
}

void ValidatorReportsTest::shouldFailWhenNothingRan()
{
    QFETCH(const QString, only);
    const ValidatorRun run({QStringLiteral("--only"), only, ValidatorRun::wholeLibrary()});
    QCOMPARE(run.exitCode(), 1);
    QVERIFY2(run.output().contains(QStringLiteral("TSA-V32")), run.description().constData());
    QCOMPARE(run.json().value(QLatin1String("good")).toBool(true), false);
    QCOMPARE(elements(run.junit(), QStringLiteral("failure")), 1);
}

void ValidatorReportsTest::shouldChooseByLevelAndPattern()
{
    const ValidatorRun byLevel(
        {QStringLiteral("--level"), QStringLiteral("1"), ValidatorRun::wholeLibrary()});
    QVERIFY2(byLevel.exitCode() == 0, byLevel.description().constData());
    const QJsonArray tests = byLevel.json().value(QLatin1String("tests")).toArray();
    QVERIFY(tests.size() >= 4);
    for (const QJsonValue& test : tests)
        QCOMPARE(test.toObject().value(QLatin1String("level")).toInt(), 1);

    const ValidatorRun byPattern({QStringLiteral("--only"), QStringLiteral("event.2?"),
                                  QStringLiteral("--only"), QStringLiteral("symbol.null"),
                                  ValidatorRun::wholeLibrary()});
    QVERIFY2(byPattern.exitCode() == 0, byPattern.description().constData());
    QVERIFY(byPattern.output().contains(QStringLiteral("event.25")));
    QVERIFY(byPattern.output().contains(QStringLiteral("symbol.null")));
    QVERIFY(!byPattern.output().contains(QStringLiteral("event.18")));
}

void ValidatorReportsTest::shouldNameTheLastCallOfACrash()
{
    const ValidatorRun run({QStringLiteral("--only"), QStringLiteral("event.18"),
                            QStringLiteral("--seed"), QStringLiteral("77"), crashing()});
    const QJsonObject test = run.onlyTest();
    QCOMPARE(test.value(QLatin1String("status")).toString(), QStringLiteral("crashed"));
    QCOMPARE(test.value(QLatin1String("lastCall")).toString(),
             QStringLiteral("event 18 on a host's thread"));
    const QString repeat = test.value(QLatin1String("repeat")).toString();
    QVERIFY2(repeat.contains(QStringLiteral("--only event.18 --seed 77 ")), qPrintable(repeat));
}

/// The way to repeat it is a command that does.
void ValidatorReportsTest::shouldRepeatACrash()
{
    const ValidatorRun run({QStringLiteral("--only"), QStringLiteral("event.18"), crashing()});
    const QString repeat = run.onlyTest().value(QLatin1String("repeat")).toString();
    QProcess shell;
#ifdef Q_OS_WIN
    shell.setProgram(QStringLiteral("cmd"));
    shell.setNativeArguments(QStringLiteral("/s /c \"%1\"").arg(repeat));
#else
    shell.setProgram(QStringLiteral("sh"));
    shell.setArguments({QStringLiteral("-c"), repeat});
#endif
    shell.start();
    QVERIFY(shell.waitForFinished(60000));
    QCOMPARE(shell.exitCode(), 1);
    const QString output = QString::fromUtf8(shell.readAllStandardOutput());
    QVERIFY2(output.contains(QStringLiteral("1 crashed")), qPrintable(output));
}

void ValidatorReportsTest::shouldNameTheOperationOfTheHandlerInACrash()
{
    const ValidatorRun run({QStringLiteral("--only"), QStringLiteral("host.delete"),
                            ValidatorRun::wholeLibrary(),
                            ValidatorRun::broken(QStringLiteral("host_crashes"))});
    QCOMPARE(run.onlyTest().value(QLatin1String("lastCall")).toString(),
             QStringLiteral("the handler's DeleteProcessors"));
}

void ValidatorReportsTest::shouldNameTheLastCallOfAHang()
{
    const ValidatorRun run({QStringLiteral("--only"), QStringLiteral("life.start"),
                            QStringLiteral("--timeout"), QStringLiteral("5"),
                            ValidatorRun::broken(QStringLiteral("library_hangs"))});
    QCOMPARE(run.onlyTest().value(QLatin1String("lastCall")).toString(),
             QStringLiteral("Initialize"));
    QVERIFY(run.output().contains(QStringLiteral("TSA-V17 nothing new happened for 5 s")));
}

void ValidatorReportsTest::shouldWriteWellFormedJUnit()
{
    const ValidatorRun good(
        {QStringLiteral("--level"), QStringLiteral("1"), ValidatorRun::wholeLibrary()});
    QVERIFY(elements(good.junit(), QStringLiteral("testcase")) >= 4);
    QCOMPARE(elements(good.junit(), QStringLiteral("failure")), 0);

    const ValidatorRun bad({QStringLiteral("--only"), QStringLiteral("event.1*"), crashing()});
    QVERIFY2(elements(bad.junit(), QStringLiteral("error")) >= 1, bad.junit().constData());
    QCOMPARE(elements(bad.junit(), QStringLiteral("testsuite")), 1);

    const ValidatorRun warning({QStringLiteral("--only"), QStringLiteral("life.start"),
                                ValidatorRun::broken(QStringLiteral("library_warns"))});
    QCOMPARE(elements(warning.junit(), QStringLiteral("system-out")), 1);
    QCOMPARE(elements(warning.junit(), QStringLiteral("failure")), 0);
}

void ValidatorReportsTest::shouldWriteJson()
{
    const ValidatorRun run({QStringLiteral("--only"), QStringLiteral("event.1*"),
                            QStringLiteral("--only"), QStringLiteral("host.open"), crashing()});
    const QJsonObject report = run.json();
    QCOMPARE(report.value(QLatin1String("good")).toBool(true), false);
    QCOMPARE(report.value(QLatin1String("library")).toString(),
             QFileInfo(crashing()).absoluteFilePath());
    const QJsonObject counts = report.value(QLatin1String("counts")).toObject();
    QVERIFY(counts.value(QLatin1String("crashed")).toInt() >= 1);
    QCOMPARE(counts.value(QLatin1String("skipped")).toInt(), 1);
    int sum = 0;
    for (const QJsonValue& count : counts)
        sum += count.toInt();
    QCOMPARE(report.value(QLatin1String("tests")).toArray().size(), sum);
}

void ValidatorReportsTest::shouldFailWhenAReportCannotBeWritten()
{
    const ValidatorRun run({QStringLiteral("--junit"), QStringLiteral("/nowhere/report.xml"),
                            QStringLiteral("--only"), QStringLiteral("symbol.null"),
                            ValidatorRun::wholeLibrary()});
    QCOMPARE(run.exitCode(), 2);
    QVERIFY2(run.errors().contains(QStringLiteral("/nowhere/report.xml")),
             qPrintable(run.errors()));
}

void ValidatorReportsTest::shouldReplaceReportsOnly_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("JUnit") << QStringLiteral("--junit");
    QTest::newRow("JSON") << QStringLiteral("--json");
}

void ValidatorReportsTest::shouldReplaceReportsOnly()
{
    QFETCH(QString, option);
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report"));
    const QStringList arguments{QStringLiteral("--only"), QStringLiteral("symbol.null"), option,
                                report, ValidatorRun::wholeLibrary()};
    for (int time = 0; time < 2; ++time) {
        const ValidatorRun run(arguments);
        QVERIFY2(run.exitCode() == 0, run.description().constData());
    }
    QVERIFY(writeFile(report, "mine"));
    const ValidatorRun run(arguments);
    QCOMPARE(run.exitCode(), 2);
    QVERIFY2(run.errors().contains(QStringLiteral("is not a report of this program")),
             qPrintable(run.errors()));
    QCOMPARE(run.output(), QString());
    QCOMPARE(contentOf(report), QByteArray("mine"));
}

void ValidatorReportsTest::shouldGiveEachCodeOnce()
{
    QSet<QString> codes;
    for (int number = 1; number <= kCodes; ++number) {
        const QString code = codeText(static_cast<Code>(number));
        QVERIFY2(QRegularExpression(QStringLiteral("^TSA-V\\d\\d$")).match(code).hasMatch(),
                 qPrintable(code));
        codes.insert(code);
    }
    QCOMPARE(codes.size(), kCodes);
    QVERIFY(isFailure(QStringLiteral("TSA-E18")));
    QVERIFY(!isFailure(QStringLiteral("TSA-W23")));
}

void ValidatorReportsTest::shouldHaveAParagraphForEachCode()
{
    const QStringList sections = page().split(QStringLiteral("\n### TSA-"));
    QCOMPARE(sections.size(), kCodes + 1);
    for (int number = 1; number <= kCodes; ++number) {
        const auto code = static_cast<Code>(number);
        const QString head =
            codeText(code).mid(4) + QLatin1Char(' ') + codeTitle(code) + QLatin1Char('\n');
        const QString& section = sections.at(number);
        QVERIFY2(section.startsWith(head), qPrintable(head));
        QVERIFY2(section.contains(QStringLiteral("Cause: ")), qPrintable(head));
        QVERIFY2(section.contains(QStringLiteral("Remedy: ")), qPrintable(head));
    }
}

void ValidatorReportsTest::shouldHaveAParagraphForEachOption()
{
    const ValidatorRun run({QStringLiteral("--help")});
    const QString text = page();
    auto options = QRegularExpression(QStringLiteral("--([a-z]+)")).globalMatch(run.output());
    QVERIFY(options.hasNext());
    while (options.hasNext()) {
        const QString option = options.next().captured();
        QVERIFY2(text.contains(QLatin1Char('`') + option), qPrintable(option));
    }
}

TSA_GUILESS_TEST_MAIN(ValidatorReportsTest)
#include "tst_validatorreports.moc"
