#pragma once

#include <QString>

#include <functional>
#include <optional>

/// What a process holds at a moment.
struct Holdings
{
    std::optional<qint64> bytes; ///< Of memory that is allocated; none where nobody counts.
    int widgets = 0;
    int threads = 0;
    int files = 0;
};

/// Returns what this process holds. GUI thread.
Holdings holdings();

/// What grew in a number of rounds.
struct Growth
{
    bool isMemoryCounted = false;
    QString text; ///< What grows with each round; empty for nothing.
};

/// Runs `round` again and again, first to warm up and then in batches, and returns what has grown
/// in each of the batches: caches grow in some, a leak in all. No clock is read.
Growth growthOf(const std::function<void()>& round, int roundsOfABatch);
