#include "host/workbench/store/ProjectStore.h"

#include "Interface/IPStatusCodes.h"
#include "host/common/AppendLog.h"
#include "host/simulator/protocol/Loopback.h"
#include "host/workbench/addresses/IpCheck.h"
#include "host/workbench/addresses/IpFile.h"
#include "host/workbench/events/EventNumber.h"
#include "host/workbench/events/Notifier.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

void logImport(const QString& message)
{
    AppendLog("importIpFile", "ProjectStore.cpp", __LINE__, message.toUtf8().constData());
}

/// Returns the bytes of an address file. On failure returns nothing and sets `problem`.
std::optional<QByteArray> readIpFile(const QString& path, QString& problem)
{
    QFile file(path);
    // Opening a pipe could block.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1 cannot be opened").arg(path);
        return std::nullopt;
    }
    const QByteArray bytes = file.read(kMaxIpFileSize + 1);
    if (file.error() != QFile::NoError) {
        problem = QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    if (bytes.size() > kMaxIpFileSize) {
        problem = QStringLiteral("%1 has more than %2 bytes").arg(path).arg(kMaxIpFileSize);
        return std::nullopt;
    }
    return bytes;
}

/// Returns one event for all of `ids`, or one for each if the answers of the project say so.
HostEventList eventsFor(const Project& project, quint32 one, quint32 several,
                        const QList<QUuid>& ids)
{
    if (!project.answers.eventsOneByOne && !ids.isEmpty())
        return {HostEvent::forIds(one, several, ids)};
    HostEventList events;
    for (const QUuid& id : ids)
        events.emplace_back(one, id);
    return events;
}

HostEventList addedEvents(const Project& project, const QList<QUuid>& ids)
{
    return eventsFor(project, EventNumber::ProcessorAdded, EventNumber::ProcessorsAdded, ids);
}

HostEventList removedEvents(const Project& project, const QList<QUuid>& ids)
{
    return eventsFor(project, EventNumber::NodeRemoved, EventNumber::NodesRemoved, ids);
}

HostEvent deviceSetsEvent(const Project& project)
{
    QList<SDeviceSetInfo> infos;
    for (const DeviceSet& set : project.deviceSets)
        infos.append(set.info);
    return HostEvent(EventNumber::DeviceSetsChanged,
                     HostEvent::DeviceSets(project.currentDeviceSet, infos));
}

/// Returns whether a processor can be reached at the address.
bool isReachable(const Project& project, quint32 address)
{
    return isHostAddress(address) || (project.network.enabled && Loopback::isDevice(address));
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
    return m_modified;
}

void ProjectStore::markSaved()
{
    {
        const std::lock_guard guard(m_mutex);
        m_modified = false;
    }
    emit changed();
}

/// Calls `change` with the project. `change` returns the events to raise, none if nothing changed.
template <typename Change>
void ProjectStore::apply(const Change& change)
{
    HostEventList events;
    {
        const std::lock_guard guard(m_mutex);
        events = change(m_project);
        m_processorAddresses.reset();
        m_modified = m_modified || !events.empty();
    }
    if (events.empty())
        return;
    emit changed();
    m_notifier.raise(events);
}

void ProjectStore::replace(const Project& project)
{
    {
        const std::lock_guard guard(m_mutex);
        m_project = project;
        ++m_projectNumber;
        m_processorAddresses.reset();
        m_modified = false;
    }
    emit changed();
    announceAll();
}

void ProjectStore::announceTree()
{
    m_notifier.raise(
        {HostEvent(EventNumber::ProjectReset), HostEvent(EventNumber::CurrentProcessorChanged)});
}

void ProjectStore::announceAll()
{
    m_notifier.raise(everything());
}

QList<QUuid> ProjectStore::addProcessors(const QUuid& group, int count)
{
    QList<QUuid> added;
    apply([&](Project& project) {
        added = project.addProcessors(group, count);
        return addedEvents(project, added);
    });
    return added;
}

QList<QUuid> ProjectStore::addProcessors(const QUuid& group, const QList<quint32>& addresses)
{
    QList<QUuid> added;
    apply([&](Project& project) {
        added = project.addProcessors(group, addresses);
        return addedEvents(project, added);
    });
    return added;
}

QUuid ProjectStore::addGroup(const ProcessorGroupNode& group)
{
    QUuid id;
    apply([&](Project& project) {
        id = project.addGroup(group);
        return id.isNull() ? HostEventList()
                           : HostEventList{HostEvent(EventNumber::GroupAdded, id)};
    });
    return id;
}

void ProjectStore::removeProcessors(const QList<QUuid>& ids)
{
    apply([&](Project& project) {
        const QUuid current = project.currentProcessor;
        HostEventList events = removedEvents(project, project.removeProcessors(ids));
        if (project.currentProcessor != current)
            events.emplace_back(EventNumber::CurrentProcessorChanged);
        return events;
    });
}

void ProjectStore::ungroup(const QUuid& id)
{
    apply([&](Project& project) {
        return project.ungroup(id) ? HostEventList{HostEvent(EventNumber::NodeRemoved, id)}
                                   : HostEventList();
    });
}

bool ProjectStore::renameProcessor(const QUuid& id, const QString& name)
{
    bool known = false;
    apply([&](Project& project) {
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
    bool known = false;
    {
        const std::lock_guard guard(m_mutex);
        known = m_project.renameGroup(id, name);
        m_modified = m_modified || known;
    }
    if (known)
        emit changed();
    if (known && announce)
        announceTree();
}

void ProjectStore::regroup(const QList<QUuid>& ids, const QUuid& group)
{
    apply([&](Project& project) {
        const QList<QUuid> moved = project.regroup(ids, group);
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
    apply([&](Project& project) {
        HostEventList events;
        for (const QUuid& id : project.regroup(ids, group))
            events.emplace_back(EventNumber::ProcessorChanged, id);
        return events;
    });
}

void ProjectStore::changeProcessor(const QUuid& id,
                                   const std::function<bool(ProcessorNode&)>& change)
{
    changeProcessors({id}, EventNumber::ProcessorChanged, change);
}

void ProjectStore::setOnline(const QList<QUuid>& ids, bool online)
{
    changeProcessors(ids, EventNumber::ProcessorChanged, [&](ProcessorNode& node) {
        return std::exchange(node.online, online) != online;
    });
}

void ProjectStore::setAddress(const QUuid& id, quint32 address)
{
    changeProcessors({id}, EventNumber::ProcessorChanged, [&](ProcessorNode& node) {
        const bool reached = address != kNoProcessorAddress;
        const bool known = node.ipAddress == address && node.reachedByIp == reached;
        node.ipAddress = address;
        node.reachedByIp = reached;
        return !known;
    });
}

void ProjectStore::setRedundancyMode(const QList<QUuid>& ids, qint32 mode)
{
    changeProcessors(ids, EventNumber::ProcessorChanged, [&](ProcessorNode& node) {
        return std::exchange(node.redundancyMode, mode) != mode;
    });
}

void ProjectStore::setProtected(const QList<QUuid>& ids, bool isProtected)
{
    changeProcessors(ids, EventNumber::ProcessorChanged, [&](ProcessorNode& node) {
        return std::exchange(node.hostFlag13, isProtected) != isProtected;
    });
}

void ProjectStore::setOutputs(const QList<QUuid>& ids, qint32 outputs)
{
    changeProcessors(ids, EventNumber::ProcessorChanged, [&](ProcessorNode& node) {
        return std::exchange(node.hostAttribute11, outputs) != outputs;
    });
}

void ProjectStore::setFrontPanel(const QUuid& id, bool lit)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_project.litFrontPanels.contains(id) == lit)
            return;
        if (!lit)
            m_project.litFrontPanels.remove(id);
        else if (m_project.processor(id) || m_project.hasGroup(id))
            m_project.litFrontPanels.insert(id);
        else
            return;
    }
    emit changed();
}

void ProjectStore::setMonitorWarning(const QList<QUuid>& ids, bool warning)
{
    changeProcessors(ids, EventNumber::MonitorStateChanged, [&](ProcessorNode& node) {
        return std::exchange(node.hostFlag17, warning) != warning;
    });
}

void ProjectStore::setCurrentProcessor(const QUuid& id)
{
    apply([&](Project& project) {
        if (!project.processor(id) || project.currentProcessor == id)
            return HostEventList();
        project.currentProcessor = id;
        return HostEventList{HostEvent(EventNumber::CurrentProcessorChanged)};
    });
}

void ProjectStore::setDeviceSets(const QList<DeviceSet>& sets, const GUID& current)
{
    apply([&](Project& project) {
        project.deviceSets = sets;
        project.currentDeviceSet = current;
        return HostEventList{deviceSetsEvent(project)};
    });
}

void ProjectStore::chooseDeviceSet(const GUID& id)
{
    {
        const std::lock_guard guard(m_mutex);
        m_project.currentDeviceSet = id;
        m_modified = true;
    }
    emit changed();
}

void ProjectStore::setDetectStrategy(int strategy)
{
    apply([&](Project& project) {
        project.answers.detectStrategy = strategy;
        return HostEventList{HostEvent(EventNumber::DetectStrategyChanged, strategy)};
    });
}

void ProjectStore::setLanUsb(bool on, const QList<quint32>& addresses)
{
    apply([&](Project& project) {
        project.answers.lanUsbMode = on;
        project.answers.lanUsbAddresses = addresses;
        return HostEventList{HostEvent(EventNumber::LanUsbChanged)};
    });
}

void ProjectStore::markFound(const QList<QUuid>& ids)
{
    changeProcessors(ids, EventNumber::MonitorStateChanged,
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
        m_notifier.raise(HostEvent(EventNumber::LanUsbChanged));
}

void ProjectStore::setFaults(const QList<FaultRule>& faults)
{
    {
        const std::lock_guard guard(m_mutex);
        m_project.faults = faults;
        m_modified = true;
    }
    emit changed();
}

void ProjectStore::changeAnswers(const std::function<void(HandlerAnswers&)>& change)
{
    {
        const std::lock_guard guard(m_mutex);
        change(m_project.answers);
        m_modified = true;
    }
    emit changed();
}

void ProjectStore::change(const std::function<HostEventList(Project&)>& change)
{
    apply(change);
}

void ProjectStore::setNetwork(const NetworkSettings& network)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_project.network == network)
            return;
        m_project.network = network;
        m_modified = true;
    }
    emit changed();
}

void ProjectStore::changeIpList(const std::function<bool(IpList&)>& change)
{
    {
        const std::lock_guard guard(m_mutex);
        if (!change(m_project.ipList))
            return;
        m_modified = true;
    }
    emit ipListChanged();
}

quint32 ProjectStore::mergeOnlineAddresses()
{
    const QList<IpEntry> online = read([](const Project& project) {
        QList<IpEntry> entries;
        for (const ProcessorNode& node : project.processors) {
            if (node.online && isReachable(project, node.ipAddress))
                entries.append({node.ipAddress, node.name.left(IpList::kMaxNameLength)});
        }
        return entries;
    });
    if (online.isEmpty())
        return IPLIST_ONLINE_EMPTY;
    bool complete = true;
    changeIpList([&](IpList& list) {
        const int before = list.size();
        for (const IpEntry& entry : online)
            complete = list.append(entry) != IpRefusal::Full && complete;
        return list.size() != before;
    });
    return complete ? 0 : quint32{IPLIST_FULL};
}

quint32 ProjectStore::importIpFile(const QString& path)
{
    QString problem;
    const auto bytes = readIpFile(path, problem);
    if (!bytes) {
        logImport(problem);
        return IPIMPORT_OPEN_FAILED;
    }
    ImportedIpList imported = parseIpFile(*bytes);
    int added = 0;
    changeIpList([&](IpList& list) {
        for (const ImportedIpLine& line : qAsConst(imported.lines)) {
            const IpRefusal reason = list.append(line.entry);
            if (reason == IpRefusal::None)
                ++added;
            else
                imported.refuse({line.number, reason, ipEntryText(line.entry)});
        }
        return added > 0;
    });
    for (const RefusedIpLine& line : qAsConst(imported.refused))
        logImport(QStringLiteral("line %1 is left out: %2: %3")
                      .arg(line.number)
                      .arg(refusalText(line.reason), line.text));
    logImport(QStringLiteral("%1: %2 lines added, %3 left out")
                  .arg(path)
                  .arg(added)
                  .arg(imported.refusedCount));
    return imported.lines.isEmpty() ? quint32{IPIMPORT_NO_VALID_IP} : 0;
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
    bool isCounted = false;
    quint32 code = 0;
    {
        const std::lock_guard guard(m_mutex);
        HandlerAnswers& answers = m_project.answers;
        code = answers.ipCheckCode;
        isCounted = code != 0 && answers.ipCheckCount > 0;
        if (isCounted && --answers.ipCheckCount == 0)
            answers.ipCheckCode = 0;
        m_modified = m_modified || isCounted;
    }
    if (isCounted)
        emit changed();
    return code;
}

/// Calls `change` for each record and announces those for which it returns true: with one event for
/// all if that is MonitorStateChanged, else with one event each.
void ProjectStore::changeProcessors(const QList<QUuid>& ids, quint32 event,
                                    const std::function<bool(ProcessorNode&)>& change)
{
    apply([&](Project& project) {
        QList<QUuid> touched;
        for (const QUuid& id : ids) {
            ProcessorNode* node = project.processor(id);
            if (node && change(*node))
                touched.append(id);
        }
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
            HostEvent(EventNumber::ProjectReset), deviceSetsEvent(project),
            HostEvent(EventNumber::DetectStrategyChanged, project.answers.detectStrategy),
            HostEvent(EventNumber::LanUsbChanged), HostEvent(EventNumber::CurrentProcessorChanged)};
    });
}
