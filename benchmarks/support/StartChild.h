#pragma once

#include <QStringList>

namespace benchmark {
class State;
}

/// Measures starts of start_child with `arguments`: the time is the child's own, its peak of memory
/// goes into the counter "peak_kib".
void startChild(benchmark::State& state, const QStringList& arguments);
