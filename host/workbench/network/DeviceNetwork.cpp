#include "host/workbench/network/DeviceNetwork.h"

#include "host/common/AppendLog.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/events/EventNumber.h"
#include "host/workbench/network/DeviceProbe.h"
#include "host/workbench/network/DeviceReports.h"
#include "host/workbench/store/ProjectStore.h"

#include <QEventLoop>

#include <optional>
#include <utility>

namespace {

void logLine(const QString& message)
{
    AppendLog("network", "DeviceNetwork.cpp", __LINE__, message.toUtf8().constData());
}

} // namespace

DeviceNetwork::DeviceNetwork(ProjectStore& store, QObject* parent)
    : QObject(parent)
    , m_store(store)
    , m_project(store.projectNumber())
{
    connect(&store, &ProjectStore::changed, this, &DeviceNetwork::follow);
}

DetectionEnd DeviceNetwork::detect(const Progress& progress)
{
    follow();
    m_found = 0;
    m_answered.clear();
    const ProbePlan asked = plan();
    DeviceProbe probe(m_settings, asked);
    QEventLoop loop;
    std::optional<DetectionEnd> end;
    connect(&probe, &DeviceProbe::answered, this, &DeviceNetwork::takeAnswers);
    connect(&probe, &DeviceProbe::proceeded, this, progress);
    const auto finish = [&](DetectionEnd how) {
        end = end.value_or(how);
        loop.quit();
    };
    connect(&probe, &DeviceProbe::finished, &loop, [&] { finish(DetectionEnd::Finished); });
    connect(&probe, &DeviceProbe::stopped, &loop, [&] { finish(DetectionEnd::Cancelled); });
    connect(this, &DeviceNetwork::cancelled, &probe, &DeviceProbe::stop);
    if (!probe.start()) {
        logLine(QStringLiteral("no socket can be opened on 127.0.0.1"));
        return DetectionEnd::Failed;
    }
    loop.exec();
    if (probe.ignored() > 0)
        logLine(QStringLiteral("%1 datagrams were ignored: they are no answers of processors that "
                               "were asked")
                    .arg(probe.ignored()));
    if (end == DetectionEnd::Finished)
        markMissing(asked);
    // The loop also ends with the program.
    return end.value_or(DetectionEnd::Cancelled);
}

/// The addresses of the processors are asked in any case, and those of the IP list or everyone.
ProbePlan DeviceNetwork::plan() const
{
    ProbePlan plan;
    int strange = 0;
    m_store.read([&](const Project& project) {
        for (const ProcessorNode& node : project.processors)
            plan.addresses.insert(node.ipAddress);
        plan.addresses.remove(kNoProcessorAddress);
        plan.broadcasts = project.answers.detectStrategy != kDetectByAddress;
        for (const IpEntry& entry : project.ipList.entries()) {
            if (!plan.broadcasts)
                plan.addresses.insert(entry.address);
        }
    });
    for (const quint32 address : qAsConst(plan.addresses))
        strange += Loopback::isDevice(address) ? 0 : 1;
    if (strange > 0)
        logLine(QStringLiteral("%1 addresses outside 127.0.0.0/8 are not asked").arg(strange));
    return plan;
}

void DeviceNetwork::takeAnswers(const QList<DeviceReport>& answers)
{
    const int project = m_project;
    store(answers, true);
    // The events may have replaced the project.
    if (m_project != project || !m_settings.enabled)
        return;
    const QHash<quint32, Known> all = known();
    for (const DeviceReport& answer : answers) {
        if (!all.contains(answer.address)) {
            logLine(QStringLiteral("there is no room for %1").arg(dottedAddress(answer.address)));
            continue;
        }
        ++m_found;
        m_answered.insert(answer.address);
        watch(answer.address, all.value(answer.address).id, answer.state);
    }
    follow();
}

/// Returns the processors of the project by their addresses.
QHash<quint32, DeviceNetwork::Known> DeviceNetwork::known() const
{
    return m_store.read([](const Project& project) {
        QHash<quint32, Known> all;
        for (const ProcessorNode& node : project.processors) {
            if (!all.contains(node.ipAddress))
                all.insert(node.ipAddress,
                           {node.id, node.name, project.litFrontPanels.contains(node.id)});
        }
        return all;
    });
}

void DeviceNetwork::takeReport(quint32 address, const DeviceState& state)
{
    const auto watched = m_watched.find(address);
    if (watched == m_watched.end() || (!watched->isLost && watched->state == state))
        return;
    if (watched->isLost)
        logLine(QStringLiteral("%1 is back").arg(dottedAddress(address)));
    watched->isLost = false;
    watched->state = state;
    store({{address, state}}, false);
    follow();
}

void DeviceNetwork::takeLoss(quint32 address)
{
    const auto watched = m_watched.find(address);
    if (watched == m_watched.end())
        return;
    watched->isLost = true;
    logLine(QStringLiteral("%1 has not been heard of for %2 ms")
                .arg(dottedAddress(address))
                .arg(m_settings.deadTimeoutMs));
    m_store.change(ChangeKind::Report, [id = watched->id](Project& project) {
        ProcessorNode* node = project.processor(id);
        if (!node || !std::exchange(node->online, false))
            return HostEventList{};
        return HostEventList{HostEvent(EventNumber::ProcessorChanged, id)};
    });
}

/// Writes what processors report into the project, those that a detection has found anew at its
/// end.
void DeviceNetwork::store(const QList<DeviceReport>& reports, bool isDetection)
{
    ++m_storing;
    m_store.change(isDetection ? ChangeKind::Detection : ChangeKind::Report,
                   [&](Project& project) { return storeReports(project, reports, isDetection); });
    const QHash<quint32, Known> all = known();
    for (const DeviceReport& report : reports) {
        if (all.contains(report.address))
            m_store.setFrontPanel(all.value(report.address).id, report.state.lit);
    }
    --m_storing;
}

/// Takes the processors offline that were asked and did not answer.
void DeviceNetwork::markMissing(const ProbePlan& asked)
{
    const QHash<quint32, Known> all = known();
    QList<QUuid> missing;
    for (const quint32 address : asked.addresses) {
        if (Loopback::isDevice(address) && !m_answered.contains(address) && all.contains(address))
            missing.append(all.value(address).id);
        // It is back as soon as its connection says so.
        const auto watched = m_watched.find(address);
        if (watched != m_watched.end() && !m_answered.contains(address))
            watched->isLost = true;
    }
    m_store.setOnline(missing, false);
}

void DeviceNetwork::watch(quint32 address, const QUuid& id, const DeviceState& state)
{
    close(address);
    m_watched.insert(address, {id, state, false, open(address)});
}

DeviceLink* DeviceNetwork::open(quint32 address)
{
    auto* link = new DeviceLink(address, m_settings, this);
    connect(link, &DeviceLink::heard, this,
            [this, address](const DeviceState& state) { takeReport(address, state); });
    connect(link, &DeviceLink::lost, this, [this, address] { takeLoss(address); });
    return link;
}

void DeviceNetwork::close(quint32 address)
{
    const QPointer<DeviceLink> link = m_watched.take(address).link;
    if (!link)
        return;
    // It may be the one that reports at this moment.
    link->disconnect(this);
    link->deleteLater();
}

/// Brings settings, connections and processors in line with the project.
void DeviceNetwork::follow()
{
    const NetworkSettings settings =
        m_store.read([](const Project& project) { return project.network; });
    const bool isReplaced = m_project != m_store.projectNumber();
    const bool isChanged = m_settings != settings;
    m_project = m_store.projectNumber();
    m_settings = settings;
    if (isReplaced || isChanged)
        cancel();
    if (isReplaced || !settings.enabled)
        m_gone.clear();
    if (m_watched.isEmpty() && m_gone.isEmpty())
        return;
    const QHash<quint32, Known> all = known();
    returnToGone(all);
    const QList<quint32> addresses = m_watched.keys();
    for (const quint32 address : addresses) {
        Watched& watched = m_watched[address];
        if (isReplaced || !settings.enabled || all.value(address).id != watched.id) {
            if (!isReplaced && settings.enabled)
                m_gone.insert(address, {watched.id, watched.state, watched.isLost, nullptr});
            close(address);
            continue;
        }
        if (isChanged) {
            watched.link->disconnect(this);
            watched.link->deleteLater();
            watched.link = open(address);
        }
        // Half of what a processor reported may be in the project so far.
        if (m_storing == 0)
            send(watched, all.value(address));
    }
    if (m_storing == 0)
        correct();
}

/// Watches processors again whose records are back, as after undo.
void DeviceNetwork::returnToGone(const QHash<quint32, Known>& all)
{
    const QList<quint32> addresses = m_gone.keys();
    for (const quint32 address : addresses) {
        if (all.value(address).id != m_gone.value(address).id)
            continue;
        const Watched gone = m_gone.take(address);
        watch(address, gone.id, gone.state);
        m_watched[address].isLost = gone.isLost;
    }
}

/// Stores again what processors reported where the project says otherwise: what is undone here has
/// not changed there.
void DeviceNetwork::correct()
{
    QList<DeviceReport> reports;
    m_store.read([&](const Project& project) {
        for (auto it = m_watched.cbegin(); it != m_watched.cend(); ++it) {
            const ProcessorNode* node = project.processor(it->id);
            DeviceState state = it->state;
            state.online = state.online && !it->isLost;
            if (node
                && (node->online != state.online
                    || node->redundancyMode != static_cast<qint32>(state.redundancy)
                    || node->hostAttribute11 != state.outputs))
                reports.append({it.key(), state});
        }
    });
    if (!reports.isEmpty())
        store(reports, false);
}

/// Tells a processor what its name and light have to be. Counts it as done, so that nothing is sent
/// twice: the processor has the last word.
void DeviceNetwork::send(Watched& watched, const Known& wanted)
{
    if (std::exchange(watched.state.lit, wanted.lit) != wanted.lit
        && !watched.link->command(LightMessage{wanted.lit}))
        logLine(QStringLiteral("\"%1\" cannot be reached, its light stays").arg(wanted.name));
    if (std::exchange(watched.state.name, wanted.name) == wanted.name)
        return;
    if (!isDeviceName(wanted.name) || !watched.link->command(RenameMessage{wanted.name}))
        logLine(QStringLiteral("\"%1\" does not get its new name").arg(wanted.name));
}
