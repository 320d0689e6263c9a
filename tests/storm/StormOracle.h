#pragma once

#include "tests/storm/StormProject.h"

#include <QStringList>

class QAbstractItemModel;

/// In what the tree differs from the project: rows that are missing, in excess or in the wrong
/// place, texts, every field of every record, and the order. Empty when nothing does.
///
/// Groups stand in the project's order if `groupsInOrder`. Below each parent the processors that
/// have an address stand above all others, by address. The order of the others depends on which
/// thread was first.
QStringList stormDifferences(const StormProject::State& project, const QAbstractItemModel& tree,
                             bool groupsInOrder);
