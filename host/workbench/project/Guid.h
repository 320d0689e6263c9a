#pragma once

#include "Interface/DeviceSetInfo.h"

#include <QUuid>

/// Converts between Qt's identifier and the platform's.
GUID toGuid(const QUuid& id);
QUuid fromGuid(const GUID& guid);
