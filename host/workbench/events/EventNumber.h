#pragma once

#include "Interface/HostEvents.h"

#include <QString>
#include <QtGlobal>

/// The numbers of the host events with their names, and the type of the argument that each carries.
namespace EventNumber {

enum Value : quint32 {
    DetectStrategyChanged = HostEvents::DetectStrategyChanged::number,
    CurrentDeviceSetChanged = HostEvents::CurrentDeviceSetChanged::number,
    TreeReset = HostEvents::TreeReset::number,
    GroupAdded = HostEvents::GroupAdded::number,
    ProcessorAdded = HostEvents::ProcessorAdded::number,
    ProcessorsAdded = HostEvents::ProcessorsAdded::number,
    NodeRemoved = HostEvents::NodeRemoved::number,
    NodesRemoved = HostEvents::NodesRemoved::number,
    ProcessorChanged = HostEvents::ProcessorChanged::number,
    ProjectProcessorChanged = HostEvents::ProjectProcessorChanged::number,
    LanUsbProcessorIp = HostEvents::LanUsbProcessorIp::number,
    CurrentProcessorChanged = HostEvents::CurrentProcessorChanged::number,
    MonitorWarningChanged = HostEvents::MonitorWarningChanged::number,
    MonitorStateChanged = HostEvents::MonitorStateChanged::number,
};

/// The alternatives of HostEvent::Argument, in their order.
enum class ArgumentType { None, Number, Id, Ids, DeviceSets, ChangedProcessor };

/// Returns the name of an event, "Event" for a number that has none.
QString name(quint32 number);

/// Returns whether there is an event of this number.
bool isKnown(quint32 number);

/// Returns the type of the argument that an event carries, None for a number that has no name.
ArgumentType argumentType(quint32 number);

} // namespace EventNumber
