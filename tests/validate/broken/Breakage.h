#pragma once

#include <cstring>

/// What is broken in this library or plugin; each target has a definition of its own.
extern const char* const kBreakage;

inline bool isBroken(const char* breakage)
{
    return std::strcmp(kBreakage, breakage) == 0;
}
