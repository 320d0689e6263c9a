#include "host/workbench/events/EventNumber.h"

#include "sdk/relay/Events.h"

namespace EventNumber {

QString name(quint32 number)
{
    return QLatin1String(Events::name(number));
}

bool isKnown(quint32 number)
{
    return name(number) != name(HostEvents::kLastNumber + 1);
}

ArgumentType argumentType(quint32 number)
{
    switch (number) {
    case DetectStrategyChanged:
        return ArgumentType::Number;
    case CurrentDeviceSetChanged:
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
