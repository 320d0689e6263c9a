#pragma once

#include <QString>
#include <QtGlobal>

/// The numbers of the host events, their names, and the type of the argument that each carries.
namespace EventNumber {

enum Value : quint32 {
    DetectStrategyChanged = 0,
    DeviceSetsChanged = 1,
    ProjectReset = 16,
    GroupAdded = 17,
    ProcessorAdded = 18,
    ProcessorsAdded = 19,
    NodeRemoved = 20,
    NodesRemoved = 21,
    ProcessorChanged = 25,
    ProjectProcessorChanged = 26,
    LanUsbChanged = 29,
    CurrentProcessorChanged = 30,
    MonitorWarningChanged = 37,
    MonitorStateChanged = 39,
};

/// The alternatives of HostEvent::Argument, in their order.
enum class ArgumentType { None, Number, Id, Ids, DeviceSets, ChangedProcessor };

/// Returns the name of an event, "Event" for a number that has none.
QString name(quint32 number);

/// Returns the type of the argument that an event carries, None for a number that has no name.
ArgumentType argumentType(quint32 number);

} // namespace EventNumber
