#pragma once

#include "host/simulator/protocol/Message.h"
#include "host/workbench/events/HostEvent.h"
#include "host/workbench/project/Project.h"

#include <QList>

/// What one processor has reported.
struct DeviceReport
{
    quint32 address = 0;
    DeviceState state;
};

/// Writes the reports into the records of the project, and returns the events of that. For a
/// detection, processors without a record get one, as far as there is room, and event 39 tells of
/// those that are online from now on; otherwise event 25 does.
HostEventList storeReports(Project& project, const QList<DeviceReport>& reports, bool isDetection);
