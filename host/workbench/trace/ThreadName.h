#pragma once

#include <QString>

/// Returns the name of the calling thread in the log: "GUI", the name that nameCurrentThread() set,
/// "work" on a CWorkThread (the work thread of the panel is one), or "other".
QString currentThreadName();

/// Sets the name of the calling thread. `name` is not copied.
void nameCurrentThread(const char* name);
