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

/// Adds a record to the host's log: which function of which source file and line says `message`.
/// The texts are copied; null counts as empty. Any thread.
HOSTCOMMON_EXPORT void AppendLog(const char* function, const char* file, int line,
                                 const char* message);

/// Sends the records that follow to `sink`, which is called on the threads that log, one at a time;
/// it must not log itself. An empty sink goes back to the standard error stream. Returns the sink
/// that was in force. Any thread.
HOSTCOMMON_EXPORT LogSink SetLogSink(LogSink sink);
