#pragma once

#include "sdk/validate/Result.h"

#include <QByteArray>

/// The forms in which a run is reported.
namespace Reports {

/// Returns what the text report says of one test: a line, and below it what was found.
QString text(const Result& result);

/// Returns the last lines of the text report.
QString summary(const Report& report);

/// Returns the report as JUnit XML: one test suite a level. A warning is a passed test with what
/// was found as its output.
QByteArray junit(const Report& report);

/// Returns the report as a JSON object.
QByteArray json(const Report& report);

} // namespace Reports
