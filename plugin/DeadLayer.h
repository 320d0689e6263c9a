#pragma once

#include <cstddef>

/// What a host's pointer to the layer leads to when the panel is dead and the contract checks are
/// on: a layer that tells of each use and does nothing.
namespace DeadLayer {

/// Builds one at `memory`, where the dead panel's own layer was. The memory is never freed.
void bury(void* memory);

} // namespace DeadLayer
