#pragma once

#include <QString>

class QAbstractItemModel;

/// The tree as one line: "All processors(3)[Left[1,2],Right[],3]". Every row is its text; groups
/// and the root are followed by their rows in brackets.
QString dumpTree(const QAbstractItemModel& model);
