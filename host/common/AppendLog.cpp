#include "host/common/AppendLog.h"

#include <iostream>
#include <mutex>
#include <utility>

namespace {

struct Log
{
    std::mutex mutex;
    LogSink sink;
};

// Never destroyed, because threads may log while the process exits.
Log& log()
{
    static auto* const instance = new Log;
    return *instance;
}

std::string text(const char* utf8)
{
    return utf8 ? std::string(utf8) : std::string();
}

} // namespace

void AppendLog(const char* function, const char* file, int line, const char* message)
{
    const LogRecord record{text(function), text(file), line, text(message)};
    const std::lock_guard guard(log().mutex);
    if (log().sink) {
        log().sink(record);
        return;
    }
    std::cerr << record.file << ':' << record.line << ": " << record.function << ": "
              << record.message << '\n';
}

LogSink SetLogSink(LogSink sink)
{
    const std::lock_guard guard(log().mutex);
    return std::exchange(log().sink, std::move(sink));
}
