#pragma once

#include "tests/storm/StormPlan.h"

#include <QStringList>

/// How a round went.
struct StormOutcome
{
    QStringList complaints; ///< Empty when all three laws held.
    QStringList journal;

    bool isGood() const { return complaints.isEmpty(); }
};

/// Plays the first `stepCount` steps of a plan with a panel of its own, lets everything come to
/// rest, and compares the tree with the project. GUI thread.
StormOutcome playStorm(const StormPlan& plan, int stepCount);

/// The smallest number of steps with which the plan still fails, as far as a few attempts show: who
/// is faster differs from time to time. `outcome` becomes that of the last failure.
int shrinkStorm(const StormPlan& plan, int failing, StormOutcome& outcome);
