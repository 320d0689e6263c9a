#pragma once

#include <functional>

/// Processes events until `condition` holds; false when it does not within `limitMs`. GUI thread.
bool waitUntil(const std::function<bool()>& condition, int limitMs);
