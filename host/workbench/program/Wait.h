#pragma once

#include <functional>

/// Processes events until `condition` returns true. Returns false after `limitMs`. GUI thread.
bool waitUntil(const std::function<bool()>& condition, int limitMs);
