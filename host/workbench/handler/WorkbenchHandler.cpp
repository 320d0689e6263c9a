#include "host/workbench/handler/WorkbenchHandler.h"

#include "host/workbench/events/Notifier.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/trace/ShortIds.h"

#include <QCoreApplication>
#include <QMenu>

#include <utility>

namespace {

struct WorkbenchHandlerMessages
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
    const bool isWanted =
        ask([](const Project& project) { return project.answers.contextMenuEntries; });
    if (!isWanted || !menu || (type != NodeProcessor && type != NodeGroup))
        return;
    menu->addSeparator();
    if (type == NodeProcessor) {
        const QAction* current =
            menu->addAction(WorkbenchHandlerMessages::tr("Host: make current"));
        QObject::connect(current, &QAction::triggered, &m_later,
                         [this, id] { m_store.setCurrentProcessor(id); });
    }
    const QAction* log = menu->addAction(WorkbenchHandlerMessages::tr("Host: show in log"));
    QObject::connect(log, &QAction::triggered, &m_later, [this, id] {
        if (showInLog)
            showInLog(shortId(id));
    });
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
                            ask([](const Project& project) { return project.allGroups(); }));
}

ProcessorGroupNode WorkbenchHandler::GetGroupNode(const QUuid& id)
{
    return m_trace.answered("GetGroupNode",
                            ask([&](const Project& project) { return project.group(id); }), id);
}

ProcessorNode WorkbenchHandler::GetProcessorNode(const QUuid& id)
{
    return m_trace.answered("GetProcessorNode", ask([&](const Project& project) {
                                const ProcessorNode* node = project.processor(id);
                                return node ? *node : ProcessorNode();
                            }),
                            id);
}

void WorkbenchHandler::ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                       const QList<SGroupSelection>& groups, const QUuid& previous)
{
    m_trace.called("ReportSelection", focus, processors, groups.size(), previous);
    {
        const std::lock_guard guard(m_mutex);
        m_session.selected = processors;
        m_session.selectedIn = m_store.projectNumber();
    }
    m_store.setCurrentProcessor(focus);
}

QList<QUuid> WorkbenchHandler::GetSelectedProcessors()
{
    QList<QUuid> reported;
    {
        const std::lock_guard guard(m_mutex);
        // A project that is opened again has the same identities.
        if (m_session.selectedIn == m_store.projectNumber())
            reported = m_session.selected;
    }
    // A deleted processor leaves the selection without a report.
    return m_trace.answered("GetSelectedProcessors", ask([&](const Project& project) {
                                QList<QUuid> selected;
                                for (const QUuid& id : qAsConst(reported)) {
                                    if (project.processor(id))
                                        selected.append(id);
                                }
                                return selected;
                            }));
}

QUuid WorkbenchHandler::GetCurrentProcessorId()
{
    return m_trace.answered("GetCurrentProcessorId",
                            ask([](const Project& project) { return project.currentProcessor; }));
}

void WorkbenchHandler::ShowTipMessage(const QString& text)
{
    m_trace.called("ShowTipMessage", text);
    if (showTip)
        showTip(text);
}
