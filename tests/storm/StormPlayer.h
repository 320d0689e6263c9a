#pragma once

#include "tests/storm/StormPlan.h"

#include <QStringList>

/// The result of a round.
struct StormOutcome
{
    QStringList complaints; ///< Empty if all three laws were kept.
    QStringList journal;

    bool isGood() const { return complaints.isEmpty(); }
};

/// Plays the first `stepCount` steps of a plan with a new panel, waits until nothing is pending,
/// and compares the tree with the project. GUI thread.
StormOutcome playStorm(const StormPlan& plan, int stepCount);

/// Returns the smallest number of steps with which the plan still fails. It is an estimate from a
/// few attempts, because the timing of the threads varies. Sets `outcome` to that of the last
/// failure.
int shrinkStorm(const StormPlan& plan, int failing, StormOutcome& outcome);
