#pragma once

#include "sdk/validate/Catalogue.h"
#include "sdk/validate/Options.h"
#include "sdk/validate/Result.h"

#include <functional>

/// Returns the tests that `options` ask for, in the order of the catalogue.
QList<CatalogueEntry> chosenTests(const Options& options);

/// Runs each of the tests in a process of its own, one after the other, and calls `tell` with each
/// result as it comes.
Report run(const Options& options, const std::function<void(const Result&)>& tell);
