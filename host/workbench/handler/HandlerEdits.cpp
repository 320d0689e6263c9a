// The requests of the panel to change the tree, and the marks on its rows.

#include "Interface/HostRequests.h"
#include "host/common/AppendLog.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/events/Notifier.h"
#include "host/workbench/handler/WorkbenchHandler.h"
#include "host/workbench/project/FieldEdit.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/trace/ShortIds.h"

#include <QTimer>

#include <algorithm>

namespace {

constexpr int kReplyWaitMs = 2000;
constexpr int kLateReplyMs = 1000;

void logEdit(const char* function, const QString& message)
{
    AppendLog(function, "HandlerEdits.cpp", __LINE__, message.toUtf8().constData());
}

/// Logs `message` with the events that answer `request`, if there are any.
void logEvents(const HostRequests::Request* request, const QString& message)
{
    const QString events = request ? HostRequests::eventNumbers(*request) : QString();
    if (!events.isEmpty())
        logEdit(request->operation, message.arg(events));
}

/// Returns why `name` is invalid; empty if it is valid.
QString nameRefusal(const HandlerAnswers& answers, const QString& name)
{
    if (!answers.acceptNewNames)
        return QStringLiteral("no new name is accepted");
    if (name.trimmed().isEmpty())
        return QStringLiteral("it is empty");
    const int bytes = nameBytes(answers, name);
    if (bytes > answers.nameMaxBytes)
        return QStringLiteral("it has %1 bytes of at most %2").arg(bytes).arg(answers.nameMaxBytes);
    return {};
}

QString processorNameRefusal(const Project& project, const QUuid& id, const QString& name)
{
    if (!project.processor(id))
        return QStringLiteral("there is no such processor");
    const bool isTaken =
        std::any_of(project.processors.begin(), project.processors.end(),
                    [&](const ProcessorNode& node) { return node.id != id && node.name == name; });
    if (project.answers.uniqueNames && isTaken)
        return QStringLiteral("another processor has it");
    return nameRefusal(project.answers, name);
}

bool isDeleteBlocked(const Project& project, const QUuid& id)
{
    const ProcessorNode* node = project.processor(id);
    return project.answers.blockDelete || (node && node->hostFlag13);
}

/// Returns those of `ids` that the host deletes.
QList<QUuid> deletable(const Project& project, const QList<QUuid>& ids)
{
    QList<QUuid> ready;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(ready),
                 [&](const QUuid& id) { return !isDeleteBlocked(project, id); });
    return ready.mid(0, std::max(ready.size() - project.answers.deleteSpares, 0));
}

} // namespace

void WorkbenchHandler::AddProcessors(const QUuid& group, int count)
{
    m_trace.called("AddProcessors", group, count);
    edit("AddProcessors", [=] {
        const QList<QUuid> added = m_store.addProcessors(group, count);
        if (added.size() < count)
            logEdit("AddProcessors",
                    QStringLiteral("%1 of %2 found room").arg(added.size()).arg(count));
        const std::lock_guard guard(m_mutex);
        m_session.addedByCount = added;
    });
}

void WorkbenchHandler::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    m_trace.called("AddProcessorsWithIps", group, addresses);
    addWithAddresses("AddProcessorsWithIps", group, addresses);
}

void WorkbenchHandler::AddProcessorsFromIpList(const QUuid& group, const QStringList& entries)
{
    m_trace.called("AddProcessorsFromIpList", group, entries);
    QList<quint32> addresses;
    for (const QString& text : entries) {
        if (const auto entry = ipEntryOfText(text))
            addresses.append(entry->address);
        else
            logEdit("AddProcessorsFromIpList", QStringLiteral("%1 is no entry").arg(text));
    }
    addWithAddresses("AddProcessorsFromIpList", group, addresses);
}

void WorkbenchHandler::SetNewProcessorOutputs(int outputs)
{
    m_trace.called("SetNewProcessorOutputs", outputs);
    if (outputs <= 0) {
        logEdit("SetNewProcessorOutputs",
                QStringLiteral("%1 outputs are refused: it has to be one at least").arg(outputs));
        return;
    }
    edit("SetNewProcessorOutputs", [=] {
        m_store.changeAnswers(
            [&](HandlerAnswers& answers) { answers.newProcessorOutputs = outputs; });
        QList<QUuid> added;
        {
            const std::lock_guard guard(m_mutex);
            added.swap(m_session.addedByCount);
        }
        m_store.setOutputs(added, outputs);
    });
}

bool WorkbenchHandler::IsDeleteBlocked(const QUuid& id)
{
    return m_trace.answered(
        "IsDeleteBlocked",
        m_store.read([&](const Project& project) { return isDeleteBlocked(project, id); }), id);
}

void WorkbenchHandler::PreDeleteProcessors(const QList<QUuid>& processors)
{
    m_trace.called("PreDeleteProcessors", processors);
    const std::lock_guard guard(m_mutex);
    m_session.announcedDeletion = processors;
}

void WorkbenchHandler::DeleteProcessors(const QList<QUuid>& processors)
{
    m_trace.called("DeleteProcessors", processors);
    QList<QUuid> announced;
    {
        const std::lock_guard guard(m_mutex);
        announced.swap(m_session.announcedDeletion);
    }
    const bool isToBeAnnounced =
        m_store.read([](const Project& project) { return project.answers.ipManagementAvailable; });
    if (isToBeAnnounced && announced != processors)
        logEdit("DeleteProcessors", QStringLiteral("PreDeleteProcessors did not announce it"));
    edit("DeleteProcessors", [=] {
        const QList<QUuid> ready =
            m_store.read([&](const Project& project) { return deletable(project, processors); });
        if (ready.size() < processors.size())
            logEdit("DeleteProcessors", QStringLiteral("%1 of %2 stay")
                                            .arg(processors.size() - ready.size())
                                            .arg(processors.size()));
        m_store.removeProcessors(ready);
    });
}

void WorkbenchHandler::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                         const QList<QUuid>& processors)
{
    m_trace.called("SetProcessorGroup", group, groupId, processors);
    edit("SetProcessorGroup", [=] { m_store.storeMembership(processors, groupId); });
}

QUuid WorkbenchHandler::CreateGroup(const ProcessorGroupNode& group)
{
    m_trace.called("CreateGroup", group);
    // The identity is returned now, even if the group is added later.
    ProcessorGroupNode created = group;
    const bool isTaken = m_store.read([&](const Project& project) {
        return project.hasGroup(group.id) || project.processor(group.id);
    });
    if (!m_store.read([&](const Project& project) { return project.canAddGroup(group.name); }))
        return m_trace.answered("CreateGroup", QUuid());
    if (group.id.isNull() || isTaken)
        created.id = QUuid::createUuid();
    edit("CreateGroup", [=] { m_store.addGroup(created); });
    return m_trace.answered("CreateGroup", created.id);
}

void WorkbenchHandler::Ungroup(const QUuid& id)
{
    m_trace.called("Ungroup", id);
    edit("Ungroup", [=] { m_store.ungroup(id); });
}

bool WorkbenchHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    m_trace.called("RenameProcessor", id, name);
    const QString refusal = m_store.read(
        [&](const Project& project) { return processorNameRefusal(project, id, name); });
    if (refusal.isEmpty())
        edit("RenameProcessor", [=] { m_store.renameProcessor(id, name); });
    else
        logEdit("RenameProcessor", QStringLiteral("\"%1\" is refused: %2").arg(name, refusal));
    return m_trace.answered("RenameProcessor", refusal.isEmpty());
}

void WorkbenchHandler::RenameGroup(const QUuid& id, const QString& name)
{
    m_trace.called("RenameGroup", id, name);
    const QString refusal =
        m_store.read([&](const Project& project) { return nameRefusal(project.answers, name); });
    if (refusal.isEmpty()) {
        edit("RenameGroup", [=] { m_store.renameGroup(id, name, false); });
        return;
    }
    logEdit("RenameGroup", QStringLiteral("\"%1\" is refused: %2").arg(name, refusal));
    // RenameGroup() has no result, so only a reset of the tree restores the old name.
    edit("RenameGroup", [this] { m_store.announceTree(); });
}

bool WorkbenchHandler::IsFrontPanelHighlighted(const QUuid& id)
{
    {
        const std::lock_guard guard(m_mutex);
        m_session.frontPanel = id;
    }
    return m_trace.answered("IsFrontPanelHighlighted", m_store.read([&](const Project& project) {
        return project.litFrontPanels.contains(id);
    }),
                            id);
}

void WorkbenchHandler::SetFrontPanelHighlight(bool on)
{
    m_trace.called("SetFrontPanelHighlight", on);
    QUuid id;
    {
        const std::lock_guard guard(m_mutex);
        id = m_session.frontPanel;
    }
    m_store.setFrontPanel(id, on);
    const bool isLit =
        m_store.read([&](const Project& project) { return project.litFrontPanels.contains(id); });
    logEdit("SetFrontPanelHighlight",
            QStringLiteral("the front panel of %1 is %2")
                .arg(shortId(id), isLit ? QStringLiteral("lit") : QStringLiteral("dark")));
}

/// Calls `change` for `function` at the time that the answers demand.
void WorkbenchHandler::edit(const char* function, const std::function<void()>& change)
{
    const auto reply =
        m_store.read([](const Project& project) { return project.answers.hostReply; });
    if (reply == HostReply::AfterReturn || reply == HostReply::SecondLater) {
        logEvents(HostRequests::find(function), QStringLiteral("event %1 is still owed"));
        // A request for one project must not change the next one.
        const int number = m_store.projectNumber();
        const int step = m_store.step();
        const int delay = reply == HostReply::SecondLater ? kLateReplyMs : 0;
        // Coarse timers may expire in another order.
        QTimer::singleShot(delay, Qt::PreciseTimer, &m_later, [=] {
            const ProjectStep undoneWithTheOthers(m_store, step);
            if (m_store.projectNumber() == number)
                carryOut(function, change);
        });
        return;
    }
    carryOut(function, change);
    if (reply == HostReply::BeforeReturn && !m_notifier.waitForDeliveries(kReplyWaitMs))
        logEdit(function,
                QStringLiteral("its events are not through after %1 ms").arg(kReplyWaitMs));
}

/// Calls `change`. Logs when it raised none of the events that answer `function`.
void WorkbenchHandler::carryOut(const char* function, const std::function<void()>& change)
{
    const HostRequests::Request* const request = HostRequests::find(function);
    const quint64 before = request ? m_notifier.answersTo(*request) : 0;
    change();
    if (request && m_notifier.answersTo(*request) == before)
        logEvents(request, QStringLiteral("no event %1 was raised"));
}

/// Leaves out the addresses that another processor has.
void WorkbenchHandler::addWithAddresses(const char* function, const QUuid& group,
                                        const QList<quint32>& addresses)
{
    edit(function, [=] {
        QSet<quint32> taken = m_store.processorAddresses();
        QList<quint32> free;
        for (const quint32 address : addresses) {
            if (taken.contains(address)) {
                logEdit(function, QStringLiteral("%1 is refused: another processor has it")
                                      .arg(dottedAddress(address)));
                continue;
            }
            taken.insert(address);
            free.append(address);
        }
        const QList<QUuid> added = m_store.addProcessors(group, free);
        if (added.size() < free.size())
            logEdit(function,
                    QStringLiteral("%1 of %2 found room").arg(added.size()).arg(free.size()));
    });
}
