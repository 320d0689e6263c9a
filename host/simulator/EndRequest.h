#pragma once

#include <QObject>

#include <functional>
#include <memory>

/// Calls `end` on this thread when the program is asked to end, as long as the returned object
/// lives: on Linux by SIGTERM or SIGINT, on Windows by Ctrl+C or Ctrl+Break. To be called before
/// other threads start. One at most.
std::unique_ptr<QObject> onEndRequest(std::function<void()> end);
