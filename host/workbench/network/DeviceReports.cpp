#include "host/workbench/network/DeviceReports.h"

#include "host/workbench/events/EventNumber.h"
#include "host/workbench/store/ProjectDiff.h"

#include <algorithm>
#include <utility>

namespace {

HostEvent renamed(const ProcessorNode& node)
{
    return HostEvent(EventNumber::ProjectProcessorChanged,
                     HostEvent::ChangedProcessor(node.id, SPrjProcessor{node.id, node.name}));
}

/// Returns the processor of the address, or null.
ProcessorNode* processorAt(Project& project, quint32 address)
{
    const auto found =
        std::find_if(project.processors.begin(), project.processors.end(),
                     [=](const ProcessorNode& node) { return node.ipAddress == address; });
    return found == project.processors.end() ? nullptr : &*found;
}

} // namespace

HostEventList storeReports(Project& project, const QList<DeviceReport>& reports, bool isDetection)
{
    QList<QUuid> added;
    QList<QUuid> found;
    HostEventList changes;
    for (const DeviceReport& report : reports) {
        const DeviceState& state = report.state;
        ProcessorNode* node = processorAt(project, report.address);
        const bool isNew = !node;
        if (isNew && isDetection) {
            added.append(project.addProcessors(QUuid(), QList<quint32>{report.address}));
            node = processorAt(project, report.address);
        }
        if (!node)
            continue;
        const QString name = std::exchange(node->name, state.name);
        const auto redundancy = static_cast<qint32>(state.redundancy);
        bool isChanged = std::exchange(node->redundancyMode, redundancy) != redundancy;
        isChanged |= std::exchange(node->hostAttribute11, state.outputs) != state.outputs;
        const bool isSwitched = std::exchange(node->online, state.online) != state.online;
        const bool isFound = isSwitched && isDetection && state.online;
        if (isFound)
            found.append(node->id);
        if (!isNew && (isChanged || (isSwitched && !isFound)))
            changes.emplace_back(EventNumber::ProcessorChanged, node->id);
        if (!isNew && name != state.name)
            changes.push_back(renamed(*node));
    }
    HostEventList events = addedEvents(project, added);
    events.insert(events.end(), changes.begin(), changes.end());
    if (!found.isEmpty())
        events.emplace_back(EventNumber::MonitorStateChanged, found);
    return events;
}
