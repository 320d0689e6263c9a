#pragma once

#include "sdk/validate/Test.h"

#include <QList>

#include <functional>

/// The threads of a host, and the waiting of its GUI thread.

/// How long something may take that nobody has a reason to wait for.
constexpr int kSoonMs = 10000;

/// Returns whether this is the GUI thread.
bool isGuiThread();

/// Runs `work` on a thread of its own while this one, the GUI thread, handles its events. What
/// `work` throws is thrown here.
void elsewhere(const std::function<void()>& work);

/// The same for several at once.
void elsewhere(const QList<std::function<void()>>& works);

/// Handles events until `isSo` returns true. Returns false when that takes longer than `limitMs`.
/// GUI thread.
bool waitUntil(const std::function<bool()>& isSo, int limitMs = kSoonMs);

/// Handles the events that are due, deferred deletions included. GUI thread.
void settle();
