#pragma once

#include "host/workbench/events/HostEvent.h"
#include "host/workbench/project/Project.h"

/// Returns the event that announces the device sets of `project`.
HostEvent deviceSetsEvent(const Project& project);

/// Returns one event for all of `ids`, or one for each if the answers of the project say so.
HostEventList addedEvents(const Project& project, const QList<QUuid>& ids);
HostEventList removedEvents(const Project& project, const QList<QUuid>& ids);

/// Returns whether both projects have the same device sets, answers, faults and
/// network.
bool areSettingsSame(const Project& one, const Project& other);

/// Returns the events after which a panel that shows `before` shows `after`. The panel requests
/// nothing in answer to them. So the processors of a group that goes are removed first and added
/// again, because a panel that moves them itself reports the move; and the whole tree is announced
/// if the row of the current processor would go, because the panel reports the row that it selects
/// instead.
HostEventList eventsBetween(const Project& before, const Project& after);
