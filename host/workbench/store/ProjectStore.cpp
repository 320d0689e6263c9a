#include "host/workbench/store/ProjectStore.h"

#include "host/workbench/events/EventNumber.h"
#include "host/workbench/events/Notifier.h"
#include "host/workbench/store/ProjectDiff.h"

#include <utility>

namespace {

/// Returns the title of a change of several processors, or of one with its name.
ChangeTitle titleOf(ChangeKind kind, const Project& project, const QList<QUuid>& ids)
{
    const ProcessorNode* first = project.processor(ids.value(0));
    return {kind, first ? first->name : QString(), ids.size()};
}

} // namespace

ProjectStore::ProjectStore(Notifier& notifier, QObject* parent)
    : QObject(parent)
    , m_notifier(notifier)
{
}

Project ProjectStore::snapshot() const
{
    const std::lock_guard guard(m_mutex);
    return m_project;
}

bool ProjectStore::isModified() const
{
    const std::lock_guard guard(m_mutex);
    return m_revision != m_savedRevision;
}

void ProjectStore::apply(const Change& change)
{
    HostEventList events;
    modify([&](Project& project, ChangeTitle& title) {
        events = change(project, title);
        return !events.empty();
    });
    if (!events.empty())
        m_notifier.raise(events);
}

void ProjectStore::replace(const Project& project)
{
    {
        const std::lock_guard guard(m_mutex);
        m_project = project;
        ++m_projectNumber;
        m_processorAddresses.reset();
        m_revision = m_savedRevision = ++m_lastRevision;
        m_recorded.clear();
    }
    endStep();
    emit replaced();
    emit changed();
    announceAll();
}

void ProjectStore::announceTree()
{
    m_notifier.raise(
        {HostEvent(EventNumber::TreeReset), HostEvent(EventNumber::CurrentProcessorChanged)});
}

void ProjectStore::announceAll()
{
    m_notifier.raise(everything());
}

QList<QUuid> ProjectStore::addProcessors(const QUuid& group, int count)
{
    QList<QUuid> added;
    apply([&](Project& project, ChangeTitle& title) {
        added = project.addProcessors(group, count);
        title = titleOf(ChangeKind::AddProcessors, project, added);
        return addedEvents(project, added);
    });
    return added;
}

QList<QUuid> ProjectStore::addProcessors(const QUuid& group, const QList<quint32>& addresses)
{
    QList<QUuid> added;
    apply([&](Project& project, ChangeTitle& title) {
        added = project.addProcessors(group, addresses);
        title = titleOf(ChangeKind::AddProcessors, project, added);
        return addedEvents(project, added);
    });
    return added;
}

QUuid ProjectStore::addGroup(const ProcessorGroupNode& group)
{
    QUuid id;
    apply([&](Project& project, ChangeTitle& title) {
        id = project.addGroup(group);
        title = {ChangeKind::AddGroup, group.name};
        return id.isNull() ? HostEventList()
                           : HostEventList{HostEvent(EventNumber::GroupAdded, id)};
    });
    return id;
}

void ProjectStore::removeProcessors(const QList<QUuid>& ids)
{
    apply([&](Project& project, ChangeTitle& title) {
        const QUuid current = project.currentProcessor;
        const ProcessorNode* first = project.processor(ids.value(0));
        title = {ChangeKind::RemoveProcessors, first ? first->name : QString()};
        const QList<QUuid> removed = project.removeProcessors(ids);
        title.count = removed.size();
        HostEventList events = removedEvents(project, removed);
        if (project.currentProcessor != current)
            events.emplace_back(EventNumber::CurrentProcessorChanged);
        return events;
    });
}

void ProjectStore::ungroup(const QUuid& id)
{
    apply([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::Ungroup, project.group(id).name};
        return project.ungroup(id) ? HostEventList{HostEvent(EventNumber::NodeRemoved, id)}
                                   : HostEventList();
    });
}

bool ProjectStore::renameProcessor(const QUuid& id, const QString& name)
{
    bool known = false;
    apply([&](Project& project, ChangeTitle& title) {
        title = titleOf(ChangeKind::Rename, project, {id});
        known = project.renameProcessor(id, name);
        return known ? HostEventList{HostEvent(
                   EventNumber::ProjectProcessorChanged,
                   HostEvent::ChangedProcessor(id, SPrjProcessor{id, name}))}
                     : HostEventList();
    });
    return known;
}

void ProjectStore::renameGroup(const QUuid& id, const QString& name, bool announce)
{
    const bool known = modify([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::Rename, project.group(id).name};
        return project.renameGroup(id, name);
    });
    if (known && announce)
        announceTree();
}

void ProjectStore::regroup(const QList<QUuid>& ids, const QUuid& group)
{
    apply([&](Project& project, ChangeTitle& title) {
        const QList<QUuid> moved = project.regroup(ids, group);
        title = titleOf(ChangeKind::Move, project, moved);
        HostEventList events = removedEvents(project, moved);
        for (const HostEvent& event : addedEvents(project, moved))
            events.push_back(event);
        if (moved.contains(project.currentProcessor))
            events.emplace_back(EventNumber::CurrentProcessorChanged);
        return events;
    });
}

void ProjectStore::storeMembership(const QList<QUuid>& ids, const QUuid& group)
{
    apply([&](Project& project, ChangeTitle& title) {
        HostEventList events;
        const QList<QUuid> moved = project.regroup(ids, group);
        title = titleOf(ChangeKind::Membership, project, moved);
        for (const QUuid& id : moved)
            events.emplace_back(EventNumber::ProcessorChanged, id);
        return events;
    });
}

void ProjectStore::changeProcessor(const QUuid& id,
                                   const std::function<bool(ProcessorNode&)>& change)
{
    changeProcessors(ChangeKind::Field, {id}, EventNumber::ProcessorChanged, change);
}

void ProjectStore::setOnline(const QList<QUuid>& ids, bool online)
{
    changeProcessors(
        ChangeKind::Online, ids, EventNumber::ProcessorChanged,
        [&](ProcessorNode& node) { return std::exchange(node.online, online) != online; });
}

void ProjectStore::setAddress(const QUuid& id, quint32 address)
{
    changeProcessors(
        ChangeKind::Address, {id}, EventNumber::ProcessorChanged, [&](ProcessorNode& node) {
            const bool reached = address != kNoProcessorAddress;
            const bool known = node.ipAddress == address && node.reachedByIp == reached;
            node.ipAddress = address;
            node.reachedByIp = reached;
            return !known;
        });
}

void ProjectStore::setRedundancyMode(const QList<QUuid>& ids, qint32 mode)
{
    changeProcessors(
        ChangeKind::Redundancy, ids, EventNumber::ProcessorChanged,
        [&](ProcessorNode& node) { return std::exchange(node.redundancyMode, mode) != mode; });
}

void ProjectStore::setProtected(const QList<QUuid>& ids, bool isProtected)
{
    changeProcessors(ChangeKind::Protection, ids, EventNumber::ProcessorChanged,
                     [&](ProcessorNode& node) {
                         return std::exchange(node.hostFlag13, isProtected) != isProtected;
                     });
}

void ProjectStore::setOutputs(const QList<QUuid>& ids, qint32 outputs)
{
    changeProcessors(ChangeKind::Outputs, ids, EventNumber::ProcessorChanged,
                     [&](ProcessorNode& node) {
                         return std::exchange(node.hostAttribute11, outputs) != outputs;
                     });
}

void ProjectStore::setFrontPanel(const QUuid& id, bool lit)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_project.litFrontPanels.contains(id) == lit)
            return;
        // Not in place: a snapshot on another thread may still share the set.
        QSet<QUuid> panels = m_project.litFrontPanels;
        if (!lit)
            panels.remove(id);
        else if (m_project.processor(id) || m_project.hasGroup(id))
            panels.insert(id);
        else
            return;
        m_project.litFrontPanels = panels;
    }
    emit changed();
}

void ProjectStore::setMonitorWarning(const QList<QUuid>& ids, bool warning)
{
    changeProcessors(
        ChangeKind::MonitorWarning, ids, EventNumber::MonitorStateChanged,
        [&](ProcessorNode& node) { return std::exchange(node.hostFlag17, warning) != warning; });
}

void ProjectStore::setCurrentProcessor(const QUuid& id)
{
    apply([&](Project& project, ChangeTitle& title) {
        if (!project.processor(id) || project.currentProcessor == id)
            return HostEventList();
        project.currentProcessor = id;
        title = {ChangeKind::Current, QString()};
        return HostEventList{HostEvent(EventNumber::CurrentProcessorChanged)};
    });
}

void ProjectStore::setDeviceSets(const QList<DeviceSet>& sets, const GUID& current)
{
    apply([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::DeviceSets, QString()};
        project.deviceSets = sets;
        project.currentDeviceSet = current;
        return HostEventList{deviceSetsEvent(project)};
    });
}

void ProjectStore::chooseDeviceSet(const GUID& id)
{
    modify([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::DeviceSet, QString()};
        project.currentDeviceSet = id;
        return true;
    });
}

void ProjectStore::setDetectStrategy(int strategy)
{
    apply([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::DetectStrategy, QString()};
        project.answers.detectStrategy = strategy;
        return HostEventList{HostEvent(EventNumber::DetectStrategyChanged, strategy)};
    });
}

void ProjectStore::setLanUsb(bool on, const QList<quint32>& addresses)
{
    apply([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::LanUsb, QString()};
        project.answers.lanUsbMode = on;
        project.answers.lanUsbAddresses = addresses;
        return HostEventList{HostEvent(EventNumber::LanUsbProcessorIp)};
    });
}

void ProjectStore::markFound(const QList<QUuid>& ids)
{
    changeProcessors(ChangeKind::Detection, ids, EventNumber::MonitorStateChanged,
                     [](ProcessorNode& node) { return !std::exchange(node.online, true); });
}

void ProjectStore::announceDeviceSets()
{
    m_notifier.raise(read(deviceSetsEvent));
}

void ProjectStore::setAnswers(const HandlerAnswers& answers)
{
    HandlerAnswers before;
    changeAnswers([&](HandlerAnswers& known) { before = std::exchange(known, answers); });
    if (before.detectStrategy != answers.detectStrategy)
        m_notifier.raise(HostEvent(EventNumber::DetectStrategyChanged, answers.detectStrategy));
    if (before.lanUsbMode != answers.lanUsbMode
        || before.lanUsbAddresses != answers.lanUsbAddresses)
        m_notifier.raise(HostEvent(EventNumber::LanUsbProcessorIp));
}

void ProjectStore::setFaults(const QList<FaultRule>& faults)
{
    modify([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::Faults, QString()};
        project.faults = faults;
        return true;
    });
}

void ProjectStore::changeAnswers(const std::function<void(HandlerAnswers&)>& change)
{
    modify([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::Answers, QString()};
        change(project.answers);
        return true;
    });
}

void ProjectStore::change(ChangeKind kind, const std::function<HostEventList(Project&)>& change)
{
    apply([&](Project& project, ChangeTitle& title) {
        title = {kind, QString()};
        return change(project);
    });
}

void ProjectStore::setNetwork(const NetworkSettings& network)
{
    modify([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::Network, QString()};
        if (project.network == network)
            return false;
        project.network = network;
        return true;
    });
}

void ProjectStore::changeIpList(const std::function<bool(IpList&)>& change)
{
    modify(
        [&](Project& project, ChangeTitle& title) {
            title = {ChangeKind::IpList, QString()};
            return change(project.ipList);
        },
        &ProjectStore::ipListChanged);
}

QSet<quint32> ProjectStore::processorAddresses() const
{
    const std::lock_guard guard(m_mutex);
    if (!m_processorAddresses) {
        m_processorAddresses.emplace();
        for (const ProcessorNode& node : m_project.processors)
            m_processorAddresses->insert(node.ipAddress);
        m_processorAddresses->remove(kNoProcessorAddress);
    }
    return *m_processorAddresses;
}

quint32 ProjectStore::takeForcedIpCheck()
{
    quint32 code = 0;
    modify([&](Project& project, ChangeTitle& title) {
        title = {ChangeKind::AddressCheck, QString()};
        HandlerAnswers& answers = project.answers;
        code = answers.ipCheckCode;
        const bool isCounted = code != 0 && answers.ipCheckCount > 0;
        if (isCounted && --answers.ipCheckCount == 0)
            answers.ipCheckCode = 0;
        return isCounted;
    });
    return code;
}

/// Calls `change` for each record and announces those for which it returns true: with one event for
/// all if that is MonitorStateChanged, else with one event each.
void ProjectStore::changeProcessors(ChangeKind kind, const QList<QUuid>& ids, quint32 event,
                                    const std::function<bool(ProcessorNode&)>& change)
{
    apply([&](Project& project, ChangeTitle& title) {
        QList<QUuid> touched;
        for (const QUuid& id : ids) {
            ProcessorNode* node = project.processor(id);
            if (node && change(*node))
                touched.append(id);
        }
        title = titleOf(kind, project, touched);
        HostEventList events;
        if (event == EventNumber::MonitorStateChanged && !touched.isEmpty())
            events.emplace_back(event, touched);
        for (const QUuid& id : qAsConst(touched)) {
            if (event != EventNumber::MonitorStateChanged)
                events.emplace_back(event, id);
        }
        return events;
    });
}

HostEventList ProjectStore::everything() const
{
    return read([](const Project& project) {
        return HostEventList{
            HostEvent(EventNumber::TreeReset), deviceSetsEvent(project),
            HostEvent(EventNumber::DetectStrategyChanged, project.answers.detectStrategy),
            HostEvent(EventNumber::LanUsbProcessorIp),
            HostEvent(EventNumber::CurrentProcessorChanged)};
    });
}
