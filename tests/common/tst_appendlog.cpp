#include "host/common/AppendLog.h"

#include "tests/support/WarningTrap.h"

#include <QTest>

#include <iostream>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Captures the standard error stream.
class ErrorStream final
{
public:
    ErrorStream()
        : m_previous(std::cerr.rdbuf(m_text.rdbuf()))
    {
    }
    ~ErrorStream() { std::cerr.rdbuf(m_previous); }
    ErrorStream(const ErrorStream&) = delete;
    ErrorStream& operator=(const ErrorStream&) = delete;

    std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf* m_previous;
};

} // namespace

class AppendLogTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void shouldWriteToTheErrorStreamByDefault();
    void shouldSendRecordsToTheSink();
    void shouldCountNullTextsAsEmpty();
    void shouldCopyTheTexts();
    void shouldRestoreTheErrorStream();
    void shouldReturnThePreviousSink();
    void shouldCallTheSinkOneAtATimeOnTheLoggingThread();
};

void AppendLogTest::cleanup()
{
    SetLogSink({});
}

void AppendLogTest::shouldWriteToTheErrorStreamByDefault()
{
    const ErrorStream stream;
    AppendLog("DoIt", "folder/File.cpp", 12, "said \xC3\xA9");
    QCOMPARE(stream.text(), std::string("folder/File.cpp:12: DoIt: said \xC3\xA9\n"));
}

void AppendLogTest::shouldSendRecordsToTheSink()
{
    const ErrorStream stream;
    std::vector<LogRecord> records;
    SetLogSink([&](const LogRecord& record) { records.push_back(record); });
    AppendLog("DoIt", "File.cpp", -1, "first");
    AppendLog("DoIt", "File.cpp", 2147483647, "second");
    QCOMPARE(records.size(), std::size_t(2));
    QCOMPARE(records[0].function, std::string("DoIt"));
    QCOMPARE(records[0].file, std::string("File.cpp"));
    QCOMPARE(records[0].line, -1);
    QCOMPARE(records[0].message, std::string("first"));
    QCOMPARE(records[1].line, 2147483647);
    QCOMPARE(records[1].message, std::string("second"));
    QCOMPARE(stream.text(), std::string());
}

void AppendLogTest::shouldCountNullTextsAsEmpty()
{
    std::vector<LogRecord> records;
    SetLogSink([&](const LogRecord& record) { records.push_back(record); });
    AppendLog(nullptr, nullptr, 0, nullptr);
    QCOMPARE(records.size(), std::size_t(1));
    QVERIFY(records[0].function.empty() && records[0].file.empty() && records[0].message.empty());

    SetLogSink({});
    const ErrorStream stream;
    AppendLog(nullptr, nullptr, 0, nullptr);
    QCOMPARE(stream.text(), std::string(":0: : \n"));
}

void AppendLogTest::shouldCopyTheTexts()
{
    std::vector<LogRecord> records;
    SetLogSink([&](const LogRecord& record) { records.push_back(record); });
    {
        std::string message(10000, 'x');
        AppendLog("f", "F", 1, message.c_str());
        message.assign(10000, 'y');
    }
    QCOMPARE(records.at(0).message, std::string(10000, 'x'));
}

void AppendLogTest::shouldRestoreTheErrorStream()
{
    const ErrorStream stream;
    int count = 0;
    SetLogSink([&](const LogRecord&) { ++count; });
    AppendLog("f", "F", 1, "to the sink");
    SetLogSink({});
    AppendLog("f", "F", 2, "to the stream");
    QCOMPARE(count, 1);
    QCOMPARE(stream.text(), std::string("F:2: f: to the stream\n"));
}

void AppendLogTest::shouldReturnThePreviousSink()
{
    QVERIFY(!SetLogSink({}));
    int count = 0;
    SetLogSink([&](const LogRecord&) { ++count; });
    const LogSink previous = SetLogSink({});
    QVERIFY(bool(previous));
    previous(LogRecord());
    QCOMPARE(count, 1);
}

void AppendLogTest::shouldCallTheSinkOneAtATimeOnTheLoggingThread()
{
    constexpr int loggers = 4;
    constexpr int each = 500;
    int inside = 0;
    bool alone = true;
    bool ownThread = true;
    std::vector<std::string> messages;
    thread_local bool isLogger = false;
    SetLogSink([&](const LogRecord& record) {
        alone = alone && ++inside == 1;
        ownThread = ownThread && isLogger;
        messages.push_back(record.message);
        --inside;
    });
    std::vector<std::thread> threads;
    threads.reserve(loggers);
    for (int logger = 0; logger < loggers; ++logger) {
        threads.emplace_back([] {
            isLogger = true;
            for (int i = 0; i < each; ++i)
                AppendLog("f", "F", i, "message");
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    SetLogSink({});
    QCOMPARE(messages.size(), std::size_t(loggers * each));
    QVERIFY(alone);
    QVERIFY(ownThread);
    QCOMPARE(messages.back(), std::string("message"));
}

TSA_TEST_MAIN(AppendLogTest)
#include "tst_appendlog.moc"
