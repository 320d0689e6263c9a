#pragma once

/// Returns whether this module has to be broken in this way. The file's name says how: a copy named
/// "library_leaks.so" leaks.
bool isBroken(const char* breakage);
