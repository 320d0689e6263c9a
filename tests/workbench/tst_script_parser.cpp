#include "host/workbench/script/JUnitReport.h"
#include "host/workbench/script/ScriptParser.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/script/Watchdog.h"
#include "tests/support/WarningTrap.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <atomic>
#include <chrono>
#include <future>

using namespace std::chrono_literals;

/// Reading scripts, and writing their results.
class ScriptParserTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadStepsWithTheirArguments();
    void shouldReadBlocks();
    void shouldReadTimeOuts();
    void shouldTellWhatIsWrong_data();
    void shouldTellWhatIsWrong();
    void shouldTellEveryError();
    void shouldRefuseWhatIsNotUtf8();
    void shouldRefuseWhatIsTooLarge();
    void shouldRefuseWhatIsNoFile();
    void shouldTakeFurtherSteps();
    void shouldDescribeEveryStep();
    void shouldWriteValidXml();
    void shouldReplaceReportsOnly();
    void shouldNoticeAStuckThread();
    void shouldLeaveALivelyThreadAlone();

private:
    Script parse(const QByteArray& text)
    {
        m_problems.clear();
        return parseScript(text, m_steps, m_problems);
    }

    QString file(const QString& name, const QByteArray& content)
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
                   ? file.fileName()
                   : QString();
    }

    const StepRegistry m_steps = standardSteps();
    QList<ScriptProblem> m_problems;
    const QTemporaryDir m_folder;
};

void ScriptParserTest::shouldReadStepsWithTheirArguments()
{
    const Script script =
        parse("# first\n\n  click row \"A \\\"b\\\"\\\\\\n\\u00e4\" with Ctrl+Shift # last\n"
              "expect call Move @\"A b\" [@X, @\"Y\"] 3 = true\n");
    QVERIFY(m_problems.isEmpty());
    QCOMPARE(script.steps.size(), 2);
    const ScriptStep& click = script.steps.at(0);
    QCOMPARE(click.line, 3);
    QCOMPARE(click.column, 3);
    QCOMPARE(click.value("ROW"), QStringLiteral("A \"b\"\\\n\u00e4"));
    QCOMPARE(click.value("MODIFIERS"), QStringLiteral("Ctrl+Shift"));
    const ScriptStep& call = script.steps.at(1);
    QCOMPARE(call.value("OPERATION"), QStringLiteral("Move"));
    const QVector<ScriptToken> arguments = call.all("ARGUMENT");
    QCOMPARE(arguments.size(), 3);
    QCOMPARE(arguments.at(0).kind, ScriptToken::Kind::Record);
    QCOMPARE(arguments.at(1).items.size(), 2);
    QCOMPARE(arguments.at(1).items.at(1).text, QStringLiteral("Y"));
    QCOMPARE(call.value("ANSWER"), QStringLiteral("true"));
}

void ScriptParserTest::shouldReadBlocks()
{
    const Script script = parse("expect rows\n  A\n    # no comment\nend\ntype \"x\"\n");
    QVERIFY(m_problems.isEmpty());
    QCOMPARE(script.steps.size(), 2);
    QCOMPARE(script.steps.at(0).block,
             (QVector<QString>{QStringLiteral("  A"), QStringLiteral("    # no comment")}));
    QCOMPARE(script.steps.at(1).line, 5);
}

void ScriptParserTest::shouldReadTimeOuts()
{
    const Script script = parse("wait until row \"A\" is online within 2.5\r\nexpect idle\r\n");
    QVERIFY(m_problems.isEmpty());
    QCOMPARE(StepRegistry::words(*script.steps.at(0).type), QStringLiteral("expect row"));
    QCOMPARE(script.steps.at(0).within.value_or(0), 2.5);
    QVERIFY(!script.steps.at(1).within);
}

void ScriptParserTest::shouldTellWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const QByteArray& text, int line, int column,
                        const char* reason) {
        QTest::newRow(name) << text << line << column << QString::fromUtf8(reason);
    };
    row("no such step", "\n  expct rwo \"A\"", 2, 3, "did you mean \"expect row\"?");
    row("nothing like it", "fetch coffee", 1, 1, "there is no such step: fetch coffee");
    row("a text first", "\"click\"", 1, 1, "a step is expected here");
    row("no end of a text", "type \"abc", 1, 6, "a \" is missing");
    row("text and more", "type \"abc\"d", 1, 11, "a space is expected");
    row("escape", "type \"a\\x\"", 1, 8, "are known");
    row("escape of a character", "type \"a\\u12\"", 1, 8, "four hexadecimal digits");
    row("no end of a list", "expect call A [@B, C", 1, 15, "a ] is missing");
    row("a bracket", "type ]", 1, 6, "is not expected here");
    row("no record", "expect call A @", 1, 15, "the name of a record is expected");
    row("missing argument", "click row", 1, 7, "ROW is missing");
    row("surplus argument", "expect idle now", 1, 13, "\"now\" is too much");
    row("choice", "language German", 1, 10, "English or Chinese is expected");
    row("choice in quotation marks", "read-only \"on\"", 1, 11, "on or off is expected");
    row("number", "host add processors many to root", 1, 21, "a whole number is expected");
    row("negative count", "host add processors -1 to root", 1, 21, "a whole number is expected");
    row("no count", "host add processors 0 to root", 1, 21, "from 1 to 255");
    row("large count", "host add processors 1000 to root", 1, 21, "from 1 to 255");
    row("huge count", "host add processors 9999999999 to root", 1, 21, "a whole number");
    row("name of a group", "host add group \"\"", 1, 16, "not empty");
    row("new name", "host rename A \" \"", 1, 15, "not empty");
    row("long name", "host rename A \"" + QByteArray(4097, 'x') + "\"", 1, 15, "more than 4096");
    row("long text", "set A hostText14 \"" + QByteArray(4097, 'x') + "\"", 1, 18, "more than 4096");
    row("state", "expect row A is nice", 1, 17, "is expected, not \"nice\"");
    row("key", "press Ctrl+Foo", 1, 7, "is no key");
    row("modifier", "click row A with Hyper", 1, 18, "not \"Hyper\"");
    row("no modifier", "click row A with", 1, 13, "after \"with\"");
    row("field", "set A nmae \"x\"", 1, 7, "this field is not known");
    row("type of a field", "set A number \"7\"", 1, 14, "a whole number");
    row("identity", "set A id \"x\"", 1, 7, "cannot be set");
    row("answer", "answer nameMaxBytes 99999", 1, 21, "from 0 to 4096");
    row("event", "raise 400", 1, 7, "there is no event \"400\"");
    row("name of an event", "raise Event", 1, 7, "there is no event \"Event\"");
    row("no argument of an event", "raise 25", 1, 7, "the event takes one argument");
    row("argument of an event", "raise 16 A", 1, 7, "the event takes no argument");
    row("type of an argument", "raise 25 A as thing", 1, 15, "none or number");
    row("number of an event", "raise 25 x as number", 1, 10, "a whole number is expected");
    row("half a thread", "raise 16 on", 1, 1, "\"on gui\" or \"on notify\"");
    row("time-out", "timeout 0", 1, 9, "a number of seconds");
    row("time-out of a step", "expect idle within x", 1, 20, "a number of seconds");
    row("no end of a block", "expect idle\nexpect rows\n  A\n", 2, 1, "have no \"end\"");
    row("tab in a block", "expect rows\n  A\n \tB\nend", 3, 2, "indented by spaces");
    row("text in a block", "expect rows\n  \"A\nend", 2, 3, "a \" is missing");
    row("odd indentation", "expect rows\n  A\n   B\nend", 3, 4, "two spaces for each level");
    row("two levels at once", "expect rows\n  A\n      B\nend", 3, 7, "two spaces for each level");
    row("less than the first", "expect rows\n  A\n\n B\nend", 4, 2, "two spaces for each level");
    row("below a processor", "expect rows\nA\n  B\n    C\nend", 4, 5, "two spaces for each level");
    row("levels of a list", "expect results\n  A\n    B\nend", 3, 5, "two spaces for each level");
    row("two texts in a block", "expect rows\n  \"A\" \"B\"\nend", 2, 7, "one name");
}

void ScriptParserTest::shouldTellWhatIsWrong()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(QString, reason);
    parse(text);
    QCOMPARE(m_problems.size(), 1);
    const ScriptProblem& problem = m_problems.first();
    QVERIFY2(problem.reason.contains(reason), qPrintable(problem.reason));
    QCOMPARE(problem.line, line);
    QCOMPARE(problem.column, column);
}

void ScriptParserTest::shouldTellEveryError()
{
    // The block of a step that is misspelt is no step.
    parse("expct rows\n  A\n  B\nend\npress Foo\nexpect idle\ntype \"x\n");
    QCOMPARE(m_problems.size(), 3);
    QCOMPARE(problemText(QStringLiteral("a.script"), m_problems.at(1)),
             QStringLiteral("a.script:5:7: \"Foo\" is no key; Ctrl+A and Return are"));
    QCOMPARE(m_problems.at(2).line, 7);
}

void ScriptParserTest::shouldRefuseWhatIsNotUtf8()
{
    parse("type \"\xC3\xA4\"\ntype \"ab\xFFzz\"\n");
    QCOMPARE(m_problems.size(), 1);
    QCOMPARE(m_problems.first().line, 2);
    QCOMPARE(m_problems.first().column, 9);
    QCOMPARE(m_problems.first().reason, QStringLiteral("this is not UTF-8"));
}

void ScriptParserTest::shouldRefuseWhatIsTooLarge()
{
    loadScript(file(QStringLiteral("large.script"), QByteArray(10 << 20, '\n')), m_steps,
               m_problems = {});
    QCOMPARE(m_problems.size(), 1);
    QVERIFY(m_problems.first().reason.contains(QStringLiteral("more than 1048576 bytes")));
}

void ScriptParserTest::shouldRefuseWhatIsNoFile()
{
    loadScript(m_folder.path(), m_steps, m_problems = {});
    QCOMPARE(m_problems.size(), 1);
    QVERIFY(m_problems.first().reason.contains(QStringLiteral("not a regular file")));
    loadScript(m_folder.filePath(QStringLiteral("none.script")), m_steps, m_problems = {});
    QCOMPARE(m_problems.size(), 1);
    QVERIFY(m_problems.first().reason.contains(QStringLiteral("cannot be read")));
}

void ScriptParserTest::shouldTakeFurtherSteps()
{
    StepRegistry steps = standardSteps();
    steps.add({QStringLiteral("make coffee COUNT [black|white]"),
               [](ScriptRun&, const ScriptStep&) { return Progress::done(); },
               {}});
    QList<ScriptProblem> problems;
    const Script script = parseScript("make coffee 2 black\n", steps, problems);
    QVERIFY(problems.isEmpty());
    QCOMPARE(script.steps.first().number("COUNT"), 2);
    QCOMPARE(script.steps.first().value("black|white"), QStringLiteral("black"));
}

/// Each row of the tables has a step in its first cell and an example in its last one.
void ScriptParserTest::shouldDescribeEveryStep()
{
    QFile page(QStringLiteral(SCRIPTS_PAGE));
    QVERIFY(page.open(QIODevice::ReadOnly));
    static const QRegularExpression row(QStringLiteral("^\\| `([^`]+)` \\|.*\\| `([^`]+)` \\|$"),
                                        QRegularExpression::MultilineOption);
    QSet<QString> described;
    auto rows = row.globalMatch(
        QString::fromUtf8(page.readAll()).replace(QStringLiteral("\\|"), QStringLiteral("|")));
    while (rows.hasNext()) {
        const auto match = rows.next();
        const QString example = match.captured(2);
        described.insert(match.captured(1));
        const Script script = parse(example.toUtf8().replace(" / ", "\n"));
        QVERIFY2(m_problems.isEmpty(),
                 qPrintable(example + QStringLiteral(": ") + problemText({}, m_problems.value(0))));
        QVERIFY2(script.steps.first().type->usage == match.captured(1), qPrintable(example));
    }
    QSet<QString> known;
    for (const StepType* type : m_steps.all())
        known.insert(type->usage);
    QCOMPARE(described, known);
}

void ScriptParserTest::shouldWriteValidXml()
{
    const QString name = QStringLiteral("<a> & \"b\" ]]> \u4fdd");
    ScriptResult result{name, 1, {}};
    result.cases.push_back({name, 1.5, false, {}});
    result.cases.push_back(
        {name, 0.25, false,
         QStringLiteral("a.script:1:1: <bad>\n]]> ") + QChar(1) + QChar(0xD800)});
    result.cases.push_back({name, 0, true, {}});
    QXmlStreamReader xml(junitXml({result}));
    QStringList seen;
    QString failure;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        seen.append(xml.name().toString());
        const auto attributes = xml.attributes();
        if (xml.name() == QLatin1String("testsuite")) {
            QCOMPARE(attributes.value(QStringLiteral("name")).toString(), name);
            QCOMPARE(attributes.value(QStringLiteral("tests")).toInt(), 3);
            QCOMPARE(attributes.value(QStringLiteral("failures")).toInt(), 1);
            QCOMPARE(attributes.value(QStringLiteral("skipped")).toInt(), 1);
            QCOMPARE(attributes.value(QStringLiteral("time")).toDouble(), 1.75);
        } else if (xml.name() == QLatin1String("failure")) {
            QCOMPARE(attributes.value(QStringLiteral("message")).toString(),
                     QStringLiteral("a.script:1:1: <bad>"));
            failure = xml.readElementText();
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(failure, QStringLiteral("a.script:1:1: <bad>\n]]> \uFFFD\uFFFD"));
    QCOMPARE(seen, QStringLiteral("testsuites testsuite testcase testcase failure testcase skipped")
                       .split(QLatin1Char(' ')));
}

void ScriptParserTest::shouldReplaceReportsOnly()
{
    QString problem;
    const QString mine = file(QStringLiteral("mine.xml"), "<project/>\n");
    QVERIFY(!JUnitReport(mine).check(problem));
    QVERIFY(problem.contains(QStringLiteral("is not a report")));
    QVERIFY(!JUnitReport(mine).write({}, problem));
    QVERIFY(!JUnitReport(m_folder.path()).check(problem));
    QVERIFY(problem.contains(QStringLiteral("not a regular file")));
#ifdef Q_OS_UNIX // A device of Windows is no path.
    QVERIFY(!JUnitReport(QStringLiteral("/dev/full")).check(problem));
#endif
    QVERIFY(!JUnitReport(QStringLiteral("/nowhere/a.xml")).check(problem));

    const JUnitReport report(m_folder.filePath(QStringLiteral("report.xml")));
    QVERIFY2(report.write({}, problem), qPrintable(problem));
    QVERIFY2(report.check(problem), qPrintable(problem));
    QVERIFY2(report.write({}, problem), qPrintable(problem));
    QVERIFY(JUnitReport(file(QStringLiteral("empty.xml"), {})).check(problem));
}

void ScriptParserTest::shouldNoticeAStuckThread()
{
    std::promise<void> noticed;
    Watchdog watchdog(1ms, [&] { noticed.set_value(); });
    QCOMPARE(noticed.get_future().wait_for(20s), std::future_status::ready);
}

void ScriptParserTest::shouldLeaveALivelyThreadAlone()
{
    std::atomic<bool> isStuck{false};
    {
        Watchdog watchdog(1h, [&] { isStuck = true; });
        watchdog.alive();
    }
    // It ended without waiting for its limit.
    QVERIFY(!isStuck);
}

TSA_GUILESS_TEST_MAIN(ScriptParserTest)

#include "tst_script_parser.moc"
