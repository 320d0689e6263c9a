#pragma once

#include <QString>

/// Returns whether both paths, of which neither need exist, lead to one file. An empty path leads
/// nowhere.
bool isSameFile(const QString& one, const QString& other);
