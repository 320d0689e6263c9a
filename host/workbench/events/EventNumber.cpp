#include "host/workbench/events/EventNumber.h"

namespace EventNumber {

QString name(quint32 number)
{
    switch (number) {
    case DetectStrategyChanged:
        return QStringLiteral("DetectStrategyChanged");
    case DeviceSetsChanged:
        return QStringLiteral("DeviceSetsChanged");
    case ProjectReset:
        return QStringLiteral("ProjectReset");
    case GroupAdded:
        return QStringLiteral("GroupAdded");
    case ProcessorAdded:
        return QStringLiteral("ProcessorAdded");
    case ProcessorsAdded:
        return QStringLiteral("ProcessorsAdded");
    case NodeRemoved:
        return QStringLiteral("NodeRemoved");
    case NodesRemoved:
        return QStringLiteral("NodesRemoved");
    case ProcessorChanged:
        return QStringLiteral("ProcessorChanged");
    case ProjectProcessorChanged:
        return QStringLiteral("ProjectProcessorChanged");
    case LanUsbChanged:
        return QStringLiteral("LanUsbChanged");
    case CurrentProcessorChanged:
        return QStringLiteral("CurrentProcessorChanged");
    case MonitorWarningChanged:
        return QStringLiteral("MonitorWarningChanged");
    case MonitorStateChanged:
        return QStringLiteral("MonitorStateChanged");
    default:
        return QStringLiteral("Event");
    }
}

ArgumentType argumentType(quint32 number)
{
    switch (number) {
    case DetectStrategyChanged:
        return ArgumentType::Number;
    case DeviceSetsChanged:
        return ArgumentType::DeviceSets;
    case GroupAdded:
    case ProcessorAdded:
    case NodeRemoved:
    case ProcessorChanged:
        return ArgumentType::Id;
    case ProcessorsAdded:
    case NodesRemoved:
    case MonitorStateChanged:
        return ArgumentType::Ids;
    case ProjectProcessorChanged:
        return ArgumentType::ChangedProcessor;
    default:
        return ArgumentType::None;
    }
}

} // namespace EventNumber
