#pragma once

#include <functional>

class QString;

/// Returns whether nothing is lost when `path` is written: nothing is there, an empty file, or a
/// regular one which the workbench wrote, as `isOurs` finds out. `isOurs` is not called for
/// anything else, because opening a pipe could block.
bool isFree(const QString& path, const std::function<bool()>& isOurs);
