#pragma once

#include "benchmarks/support/StoredHandler.h"

#include <functional>
#include <memory>

class QString;

/// Runs the registered benchmarks as the command line says; the process's exit code.
int runBenchmarks(int argc, char** argv);

/// Ends the process with a message when a figure would not measure what it says.
void require(bool condition, const char* what);

/// The panel of the process with a host of stored lists: what a model needs to reach a host at all.
std::shared_ptr<StoredHandler> installStoredHandler();
