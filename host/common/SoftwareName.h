#pragma once

#include "host/common/HostCommonExport.h"

#include <QString>

/// The host software's display name, caption of every message box and dialog. Any thread.
HOSTCOMMON_EXPORT QString custom_software_name();

/// Sets that name; the host does so once, before it loads its layers. Any thread.
HOSTCOMMON_EXPORT void set_custom_software_name(const QString& name);
