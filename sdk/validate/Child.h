#pragma once

#include "sdk/validate/Options.h"

/// Runs the test that `options` name in this process, and tells of it through Journal. Returns the
/// exit code of the process.
int runChild(const Options& options, int& argc, char** argv);
