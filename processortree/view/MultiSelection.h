#pragma once

/// Returns whether the host is in multi-selection mode with several processors selected: then they
/// have one menu together, and their rows have no "More" button. GUI thread; asks the host.
bool isMultiSelection();
