#pragma once

#include <QtGlobal>

/// What a project of the workbench may hold. Larger ones are refused when they are read, and cannot
/// be made: each change of a project looks at all its records.
namespace ProjectRanges {

constexpr int kMaxGroups = 1000;
constexpr int kMaxDeviceSets = 255;
constexpr int kMaxFaults = 100;
constexpr int kMaxNameLength = 4096; ///< Of all texts of the records, in UTF-16 units.

struct Range
{
    qint32 least;
    qint32 most;
};

/// Returns the numbers that the answer of that name may be.
Range ofAnswer(const char* name);

} // namespace ProjectRanges
