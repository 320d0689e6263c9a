#pragma once

#include "host/common/HostCommonExport.h"

#include <functional>
#include <string>

/// One line of the host's log. All texts are UTF-8.
struct LogRecord
{
    std::string function;
    std::string file;
    int line = 0;
    std::string message;
};

using LogSink = std::function<void(const LogRecord&)>;

/// Appends a record to the host's log. `function`, `file` and `line` name the place in the source;
/// the texts are UTF-8 and are copied, and null counts as empty. Thread-safe.
HOSTCOMMON_EXPORT void AppendLog(const char* function, const char* file, int line,
                                 const char* message);

/// Sends later records to `sink`, which is called on the logging threads, one call at a time, and
/// must not log. An empty sink restores the standard error stream. Returns the previous sink.
/// Thread-safe.
HOSTCOMMON_EXPORT LogSink SetLogSink(LogSink sink);
