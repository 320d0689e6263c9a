#include "host/common/WorkThread.h"
#include "host/workbench/handler/CallTrace.h"
#include "host/workbench/trace/TraceFile.h"
#include "host/workbench/trace/TraceModel.h"
#include "host/workbench/window/LogFilter.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/TextFile.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <future>
#include <thread>
#include <vector>

#ifdef Q_OS_UNIX
#include "tests/workbench/FileSizeLimit.h"

#include <sys/stat.h>
#endif

class LiveLogTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAcceptLinesFromEveryThread();
    void shouldNameTheWorkThread();
    void shouldKeepTheLastTenThousandLines();
    void shouldFilterByWordsAndKind();
    void shouldEmptyItself();
    void shouldWriteAPlainLine();
    void shouldKeepTextsShort();
    void shouldWriteToAFile();
    void shouldReplaceAFormerTraceOnly();
    void shouldLeaveATraceThatIsBeingWritten();
    void shouldKeepALineALine();
#ifdef Q_OS_UNIX // Windows limits no file.
    void shouldTellThatItCannotGoOn();
#endif
    void shouldReportWhyItCannotWrite();
    void shouldKnowHowLongACallTakes();
    void shouldReplaceATraceThatBeginsWithAFinding();
};

void LiveLogTest::shouldAcceptLinesFromEveryThread()
{
    TraceModel trace;
    const QAbstractItemModelTester tester(&trace);
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int n = 0; n < 4; ++n) {
        threads.emplace_back([&] {
            for (int line = 0; line < 250; ++line)
                trace.add(TraceEntry::Kind::Call, QString::number(line));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(trace.rowCount(), 0);
    QTRY_COMPARE(trace.rowCount(), 1000);
    QCOMPARE(trace.entry(0).thread, QStringLiteral("other"));
}

void LiveLogTest::shouldNameTheWorkThread()
{
    TraceModel trace;
    CWorkThread work;
    work.start();
    std::promise<void> done;
    work.AppendEvent({0,
                      [&] {
                          trace.add(TraceEntry::Kind::Call, QStringLiteral("x"));
                          done.set_value();
                      }},
                     false);
    done.get_future().wait();
    trace.flush();
    QCOMPARE(trace.entry(0).thread, QStringLiteral("work"));
}

void LiveLogTest::shouldKeepTheLastTenThousandLines()
{
    TraceModel trace;
    const QAbstractItemModelTester tester(&trace);
    qRegisterMetaType<QVector<TraceEntry>>();
    const QSignalSpy added(&trace, &TraceModel::added);
    for (int line = 0; line < 6000; ++line)
        trace.add(TraceEntry::Kind::Log, QString::number(line));
    trace.flush();
    for (int line = 6000; line < 12000; ++line)
        trace.add(TraceEntry::Kind::Log, QString::number(line));
    trace.flush();
    QCOMPARE(trace.rowCount(), TraceModel::kMaxRows);
    QCOMPARE(trace.entry(0).text, QStringLiteral("2000"));
    QCOMPARE(trace.entry(9999).text, QStringLiteral("11999"));
    QCOMPARE(added.count(), 2);
    for (int line = 0; line < 15000; ++line)
        trace.add(TraceEntry::Kind::Log, QString::number(line));
    trace.flush();
    QCOMPARE(trace.rowCount(), TraceModel::kMaxRows);
    QCOMPARE(trace.entry(0).text, QStringLiteral("5000"));
}

void LiveLogTest::shouldFilterByWordsAndKind()
{
    TraceModel trace;
    LogFilter filter;
    filter.setSourceModel(&trace);
    trace.add(TraceEntry::Kind::Call, QStringLiteral("GetIPCount(0) = 4"));
    trace.add(TraceEntry::Kind::Call, QStringLiteral("CheckProcessor(\"A\") = false"));
    trace.add(TraceEntry::Kind::Event, QStringLiteral("16 TreeReset()"));
    trace.flush();
    QCOMPARE(filter.rowCount(), 3);
    filter.setWords(QStringLiteral("-checkprocessor"));
    QCOMPARE(filter.rowCount(), 2);
    filter.setWords(QStringLiteral("gui count"));
    QCOMPARE(filter.rowCount(), 1);
    filter.setWords(QStringLiteral("-"));
    QCOMPARE(filter.rowCount(), 0);
    filter.setWords(QString());
    filter.setKind(static_cast<int>(TraceEntry::Kind::Event));
    QCOMPARE(filter.rowCount(), 1);
    filter.setKind(-1);
    QCOMPARE(filter.rowCount(), 3);
}

void LiveLogTest::shouldEmptyItself()
{
    TraceModel trace;
    const QAbstractItemModelTester tester(&trace);
    trace.add(TraceEntry::Kind::Log, QStringLiteral("a"));
    trace.flush();
    trace.add(TraceEntry::Kind::Log, QStringLiteral("b"));
    trace.clear();
    QCOMPARE(trace.rowCount(), 0);
}

void LiveLogTest::shouldWriteAPlainLine()
{
    const TraceEntry entry{QTime(1, 2, 3, 4), TraceEntry::Kind::Event, QStringLiteral("notify"),
                           QStringLiteral("16 TreeReset()")};
    QCOMPARE(traceLine(entry), QStringLiteral("01:02:03.004\tevent\tnotify\t16 TreeReset()"));
}

void LiveLogTest::shouldKeepTextsShort()
{
    QVERIFY(shortText(QString(10000, QLatin1Char('x'))).size() < 70);
    QList<QUuid> ids;
    for (int n = 0; n < 255; ++n)
        ids.append(QUuid::createUuid());
    QVERIFY(shortText(ids).size() < 80);
    QVERIFY(shortText(ids).startsWith(QStringLiteral("255: [")));
    QCOMPARE(shortText(QUuid()), QStringLiteral("{}"));
    QCOMPARE(shortText(0xE0832001U), QStringLiteral("0xE0832001"));
    QCOMPARE(shortText(ProcessorNode()), QStringLiteral("no processor"));
}

/// Also what has no room in the model any more.
void LiveLogTest::shouldWriteToAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace.txt"));
    TraceModel trace;
    trace.add(TraceEntry::Kind::Call, QStringLiteral("before"));
    trace.flush();
    TraceFile file(trace, path);
    QVERIFY(!QFile::exists(path));
    QString problem;
    QVERIFY(file.open(problem));
    for (int line = 0; line <= TraceModel::kMaxRows; ++line)
        trace.add(TraceEntry::Kind::Event, QString::number(line));
    trace.flush();
    QFile written(path);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArray lineEnd = asTextFile("\n");
    const QByteArray text = written.readAll();
    QCOMPARE(text.count(lineEnd), TraceModel::kMaxRows + 1);
    const QList<QByteArray> lines = text.split('\n');
    QCOMPARE(lines.size(), TraceModel::kMaxRows + 2);
    QVERIFY(lines.first().endsWith("\tevent\tGUI\t0" + lineEnd.chopped(1)));
    QVERIFY(lines.last().isEmpty());
    QCOMPARE(problem, QString());
}

void LiveLogTest::shouldReplaceAFormerTraceOnly()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace.txt"));
    TraceModel trace;
    QString problem;
    for (int time = 0; time < 2; ++time) {
        TraceFile file(trace, path);
        QVERIFY2(file.open(problem), qPrintable(problem));
        trace.add(TraceEntry::Kind::Log, QString::number(time));
        trace.flush();
    }
    QFile written(path);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QVERIFY(written.readAll().endsWith(asTextFile("\tlog\tGUI\t1\n")));
    written.close();

    QVERIFY(written.open(QIODevice::WriteOnly));
    QVERIFY(written.write("{\"version\": 1}") > 0);
    written.close();
    TraceFile project(trace, path);
    QVERIFY(!project.open(problem));
    QCOMPARE(problem,
             QDir::toNativeSeparators(path)
                 + QStringLiteral(" cannot be written: the file that is there is not a trace"));
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray("{\"version\": 1}"));

    QStringList odds{folder.path()};
#ifdef Q_OS_UNIX
    odds += {folder.filePath(QStringLiteral("pipe")), QStringLiteral("/dev/full"),
             folder.filePath(QStringLiteral("link"))};
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("nothing")), odds.last()));
    QCOMPARE(mkfifo(QFile::encodeName(odds.at(1)).constData(), S_IRUSR | S_IWUSR), 0);
#endif
    for (const QString& odd : qAsConst(odds)) {
        TraceFile file(trace, odd);
        QVERIFY(!file.open(problem));
        QCOMPARE(problem, QDir::toNativeSeparators(odd)
                              + QStringLiteral(" cannot be written: it is not a regular file"));
    }
}

void LiveLogTest::shouldLeaveATraceThatIsBeingWritten()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace.txt"));
    TraceModel trace;
    QString problem;
    TraceFile second(trace, path);
    {
        TraceFile first(trace, path);
        QVERIFY2(first.open(problem), qPrintable(problem));
        QVERIFY(!second.open(problem));
        QCOMPARE(problem, QDir::toNativeSeparators(path)
                              + QStringLiteral(" cannot be written: it is being written already"));
        trace.add(TraceEntry::Kind::Log, QStringLiteral("kept"));
        trace.flush();
        QVERIFY(contentOf(path).endsWith(asTextFile("\tlog\tGUI\tkept\n")));
    }
    QVERIFY2(second.open(problem), qPrintable(problem));
    QCOMPARE(contentOf(path), QByteArray());
}

void LiveLogTest::shouldKeepALineALine()
{
    TraceEntry entry;
    entry.text = QStringLiteral("Rename(\"a\nb\r\tc\\n\")");
    QCOMPARE(traceLine(entry).section(QLatin1Char('\t'), 3),
             QStringLiteral("Rename(\"a\\nb\\r\\tc\\\\n\")"));
}

#ifdef Q_OS_UNIX
void LiveLogTest::shouldTellThatItCannotGoOn()
{
    const QTemporaryDir folder;
    TraceModel trace;
    TraceFile file(trace, folder.filePath(QStringLiteral("trace.txt")));
    QString problem;
    QVERIFY2(file.open(problem), qPrintable(problem));
    QSignalSpy failures(&file, &TraceFile::failed);
    trace.add(TraceEntry::Kind::Log, QStringLiteral("fits"));
    trace.flush();
    QVERIFY(!file.hasFailed());
    {
        const FileSizeLimit limit(100);
        for (int line = 0; line < 3; ++line) {
            trace.add(TraceEntry::Kind::Log, QString(200, QLatin1Char('x')));
            trace.flush();
        }
    }
    QVERIFY(file.hasFailed());
    QCOMPARE(failures.count(), 1);
    QVERIFY2(failures.first().first().toString().startsWith(
                 file.path() + QStringLiteral(" cannot be written: ")),
             qPrintable(failures.first().first().toString()));
}
#endif

void LiveLogTest::shouldReportWhyItCannotWrite()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("missing/trace.txt"));
    TraceModel trace;
    TraceFile file(trace, path);
    QString problem;
    QVERIFY(!file.open(problem));
    QVERIFY2(
        problem.startsWith(QDir::toNativeSeparators(path) + QStringLiteral(" cannot be written: ")),
        qPrintable(problem));
}

void LiveLogTest::shouldKnowHowLongACallTakes()
{
    TraceModel trace;
    const QAbstractItemModelTester tester(&trace);
    const auto duration = [&](int row) {
        return trace.index(row, TraceModel::DurationColumn).data().toString();
    };
    {
        const CallTimer outer(trace);
        trace.add(TraceEntry::Kind::Call, QStringLiteral("Outer()"));
        {
            const CallTimer inner(trace);
            trace.add(TraceEntry::Kind::Log, QStringLiteral("inside"));
            trace.add(TraceEntry::Kind::Call, QStringLiteral("Inner()"));
        }
        trace.flush();
        QCOMPARE(duration(0), QString());
        QCOMPARE(duration(1), QString());
        QVERIFY2(duration(2).endsWith(QStringLiteral(" ms")), qPrintable(duration(2)));
        QVERIFY(trace.entry(2).nanoseconds >= 0);
        QCOMPARE(traceLine(trace.entry(2)).section(QLatin1Char('\t'), 4), duration(2));
        QCOMPARE(traceLine(trace.entry(1)).count(QLatin1Char('\t')), 3);
    }
    // The row was there before the call ended.
    QTRY_VERIFY(trace.entry(0).nanoseconds >= trace.entry(2).nanoseconds);
    // A row that has left the log is no matter.
    const qint64 gone = trace.add(TraceEntry::Kind::Call, QStringLiteral("Gone()"));
    trace.clear();
    trace.setDuration(gone, 1);
    trace.add(TraceEntry::Kind::Log, QStringLiteral("next"));
    QTRY_COMPARE(trace.rowCount(), 1);
    QCOMPARE(duration(0), QString());
}

void LiveLogTest::shouldReplaceATraceThatBeginsWithAFinding()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace.txt"));
    TraceEntry entry;
    entry.time = QTime(1, 2, 3, 4);
    entry.kind = TraceEntry::Kind::Finding;
    entry.text = QStringLiteral("TSA-E13");
    QFile former(path);
    QVERIFY(former.open(QIODevice::WriteOnly));
    QVERIFY(former.write(traceLine(entry).toUtf8()) > 0);
    former.close();
    TraceModel trace;
    TraceFile file(trace, path);
    QString problem;
    QVERIFY2(file.open(problem), qPrintable(problem));
}

TSA_GUILESS_TEST_MAIN(LiveLogTest)
#include "tst_live_log.moc"
