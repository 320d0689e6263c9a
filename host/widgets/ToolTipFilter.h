#pragma once

#include "host/widgets/HostWidgetsExport.h"

class QCoreApplication;

/// From here on, tool tips of widgets with the property "ToolLocation" appear where that says. Any
/// number of calls. GUI thread.
HOSTWIDGETS_EXPORT void installToolTipPlacement(QCoreApplication& application);
