#pragma once

#include "Interface/TargetSelectArea.h"

/// The shared library as a host has it: linked to, or loaded at run time.
namespace Library {

/// The export; null when it cannot be had.
TargetSelectAreaInit init();

/// Lets go of the library where it was loaded. Returns false when that failed.
bool unload();

} // namespace Library
