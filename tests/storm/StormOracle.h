#pragma once

#include "tests/storm/StormProject.h"

#include <QStringList>

class QAbstractItemModel;

/// Returns the differences between tree and project: missing, surplus and misplaced rows, texts,
/// all fields of all records, and the order. Empty if there is none.
///
/// With `groupsInOrder`, groups must be in the order of the project. In each parent, processors
/// with an address must come first, sorted by address. The order of the others depends on the
/// threads and is not compared.
QStringList stormDifferences(const StormProject::State& project, const QAbstractItemModel& tree,
                             bool groupsInOrder);
