#pragma once

#include <QString>

/// How the log names the calling thread: "GUI"; "notify" on a thread that was given that name
/// below; "work" on a CWorkThread, which is what the panel runs its jobs on; "other" on any other.
QString currentThreadName();

/// Names the calling thread for as long as it runs.
void nameCurrentThread(const char* name);
