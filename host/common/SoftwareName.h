#pragma once

#include "host/common/HostCommonExport.h"

#include <QString>

/// Returns the host software's display name, the caption of message boxes and dialogs. Thread-safe.
HOSTCOMMON_EXPORT QString custom_software_name();

/// Sets the name. The host calls it once, before it loads its layers. Thread-safe.
HOSTCOMMON_EXPORT void set_custom_software_name(const QString& name);
