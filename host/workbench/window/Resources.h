#pragma once

/// Makes the resources of this library known; again and again if need be. GUI thread.
void initWorkbenchResources();
