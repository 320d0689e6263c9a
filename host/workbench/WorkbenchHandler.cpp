#include "host/workbench/WorkbenchHandler.h"

#include "host/workbench/Notifier.h"
#include "host/workbench/ProjectStore.h"

#include <QCoreApplication>
#include <QMenu>

#include <utility>

namespace {

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(WorkbenchHandler)
};

QString deviceSetText(const Project& project, const GUID& id)
{
    for (const DeviceSet& set : project.deviceSets) {
        if (set.info.id == id)
            return set.text;
    }
    return {};
}

int encodedBytes(const HandlerAnswers& answers, const QString& name)
{
    // Every character outside ASCII is two bytes in the other encoding.
    if (answers.nameUtf8)
        return name.toUtf8().size();
    int bytes = 0;
    for (const QChar character : name)
        bytes += character.unicode() < 0x80 ? 1 : 2;
    return bytes;
}

} // namespace

WorkbenchHandler::WorkbenchHandler(ProjectStore& store, Notifier& notifier, TraceModel& trace,
                                   PcNetworkCache::Reader network)
    : m_store(store)
    , m_notifier(notifier)
    , m_trace(trace)
    , m_network(std::move(network))
{
}

template <typename Ask>
auto WorkbenchHandler::ask(const Ask& question) const
{
    return m_store.read(question);
}

void WorkbenchHandler::SetObserver(CObserver* observer)
{
    m_trace.called("SetObserver");
    m_notifier.setObserver(observer);
}

void WorkbenchHandler::AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                         QMenu* menu)
{
    m_trace.called("AppendContextMenu", static_cast<int>(type), id, readOnly);
    if (type != NodeProcessor || !menu)
        return;
    menu->addSeparator();
    const QAction* action = menu->addAction(Messages::tr("Host: make current"));
    QObject::connect(action, &QAction::triggered, &m_store,
                     [store = &m_store, id] { store->setCurrentProcessor(id); });
}

quint32 WorkbenchHandler::DetectAllDevices()
{
    m_trace.called("DetectAllDevices");
    m_store.detect();
    return m_trace.answered("DetectAllDevices", ask([](const Project& project) {
                                return project.answers.detectResult;
                            }));
}

void WorkbenchHandler::DetectProcessorsOnly()
{
    m_trace.called("DetectProcessorsOnly");
    m_store.detect();
}

QString WorkbenchHandler::GetDeviceSetText(const SDeviceSetInfo& set)
{
    return m_trace.answered("GetDeviceSetText", ask([&](const Project& project) {
                                return deviceSetText(project, set.id);
                            }),
                            fromGuid(set.id));
}

bool WorkbenchHandler::ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index)
{
    const bool confirmed =
        ask([](const Project& project) { return project.answers.confirmDeviceSetChange; });
    if (confirmed)
        m_store.chooseDeviceSet(set.id);
    return m_trace.answered("ConfirmDeviceSetChange", confirmed, fromGuid(set.id), index);
}

QList<ProcessorNode> WorkbenchHandler::GetAllProcessorNodes()
{
    return m_trace.answered("GetAllProcessorNodes",
                            ask([](const Project& project) { return project.processors; }));
}

QList<ProcessorGroupNode> WorkbenchHandler::GetAllGroupNodes()
{
    return m_trace.answered("GetAllGroupNodes",
                            ask([](const Project& project) { return project.groups; }));
}

ProcessorGroupNode WorkbenchHandler::GetGroupNode(const QUuid& id)
{
    return m_trace.answered("GetGroupNode", ask([&](const Project& project) {
                                const ProcessorGroupNode* group = project.findGroup(id);
                                return group ? *group : ProcessorGroupNode();
                            }),
                            id);
}

void WorkbenchHandler::AddProcessors(const QUuid& group, int count)
{
    m_trace.called("AddProcessors", group, count);
    m_store.addProcessors(group, count);
}

void WorkbenchHandler::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    m_trace.called("AddProcessorsWithIps", group, addresses);
    m_store.addProcessors(group, addresses);
}

void WorkbenchHandler::DeleteProcessors(const QList<QUuid>& processors)
{
    m_trace.called("DeleteProcessors", processors);
    m_store.removeProcessors(processors);
}

void WorkbenchHandler::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                         const QList<QUuid>& processors)
{
    m_trace.called("SetProcessorGroup", group, groupId, processors);
    m_store.storeMembership(processors, groupId);
}

ProcessorNode WorkbenchHandler::GetProcessorNode(const QUuid& id)
{
    return m_trace.answered("GetProcessorNode", ask([&](const Project& project) {
                                const ProcessorNode* node = project.processor(id);
                                return node ? *node : ProcessorNode();
                            }),
                            id);
}

void WorkbenchHandler::SetNewProcessorOutputs(int outputs)
{
    m_trace.called("SetNewProcessorOutputs", outputs);
    m_store.changeAnswers([&](HandlerAnswers& answers) { answers.newProcessorOutputs = outputs; });
}

QUuid WorkbenchHandler::CreateGroup(const ProcessorGroupNode& group)
{
    m_trace.called("CreateGroup", group);
    return m_trace.answered("CreateGroup", m_store.addGroup(group));
}

void WorkbenchHandler::Ungroup(const QUuid& id)
{
    m_trace.called("Ungroup", id);
    m_store.ungroup(id);
}

bool WorkbenchHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    m_trace.called("RenameProcessor", id, name);
    const bool accepted = ask([&](const Project& project) {
        return project.answers.acceptNewNames && !name.isEmpty()
               && encodedBytes(project.answers, name) <= project.answers.nameMaxBytes;
    });
    return m_trace.answered("RenameProcessor", accepted && m_store.renameProcessor(id, name));
}

void WorkbenchHandler::RenameGroup(const QUuid& id, const QString& name)
{
    m_trace.called("RenameGroup", id, name);
    m_store.renameGroup(id, name, false);
}

void WorkbenchHandler::ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                       const QList<SGroupSelection>& groups, const QUuid& previous)
{
    m_trace.called("ReportSelection", focus, processors, groups.size(), previous);
    {
        const std::lock_guard guard(m_mutex);
        m_session.selected = processors;
    }
    m_store.setCurrentProcessor(focus);
}

QList<QUuid> WorkbenchHandler::GetSelectedProcessors()
{
    const std::lock_guard guard(m_mutex);
    return m_trace.answered("GetSelectedProcessors", m_session.selected);
}

QUuid WorkbenchHandler::GetCurrentProcessorId()
{
    return m_trace.answered("GetCurrentProcessorId",
                            ask([](const Project& project) { return project.currentProcessor; }));
}

void WorkbenchHandler::PreDeleteProcessors(const QList<QUuid>& processors)
{
    m_trace.called("PreDeleteProcessors", processors);
}

void WorkbenchHandler::ShowTipMessage(const QString& text)
{
    m_trace.called("ShowTipMessage", text);
    if (showTip)
        showTip(text);
}

bool WorkbenchHandler::IsFrontPanelHighlighted(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    m_session.frontPanel = id;
    return m_trace.answered("IsFrontPanelHighlighted", m_session.lit.contains(id), id);
}

void WorkbenchHandler::SetFrontPanelHighlight(bool on)
{
    m_trace.called("SetFrontPanelHighlight", on);
    const std::lock_guard guard(m_mutex);
    m_session.lit.removeAll(m_session.frontPanel);
    if (on)
        m_session.lit.append(m_session.frontPanel);
}
