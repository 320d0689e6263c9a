#pragma once

#include <QtGlobal>

#include <optional>

/// What this process holds of the system, as the system counts it. Any thread.
namespace ProcessFigures {

/// What openFiles() counts, for reports: on Windows handles of every kind.
extern const char* const kOpenFiles;

/// Returns the bytes of memory that are allocated; none where nobody counts them.
std::optional<qint64> allocatedBytes();

/// Returns the number of threads.
int threads();

/// Returns the number of open files.
int openFiles();

} // namespace ProcessFigures
