#pragma once

/// Registers the resources of this library. May be called more than once. GUI thread.
void initWorkbenchResources();
