#include "tests/storm/StormHandler.h"

#include "tests/storm/StormHost.h"

#include <type_traits>

void StormHandler::retire()
{
    const StormProject::State last = m_host.project.state();
    const std::lock_guard guard(m_mutex);
    m_retired = last;
}

StormProject::State StormHandler::state() const
{
    const std::lock_guard guard(m_mutex);
    return m_retired ? *m_retired : m_host.project.state();
}

/// Answers `question` with the result of `compute`, which runs before or after the delay of the
/// answer: an answer may be out of date when it is returned.
template <typename Answer>
auto StormHandler::answer(const char* question, Answer&& compute)
{
    const StormWatch::HostWork work(m_host.watch);
    const auto look = [&] {
        const StormWatch::GuiWait waiting(m_host.watch, "a lock of the host's");
        const HostLock::Holder lock(m_host.answerLock(), m_host.answerPatience());
        return compute(state());
    };
    if (m_host.roll() % 2 == 0) {
        m_host.dwell(question);
        return look();
    }
    auto old = look();
    m_host.dwell(question);
    return old;
}

void StormHandler::SetObserver(CObserver* observer)
{
    m_host.setObserver(observer);
}

QString StormHandler::GetDeviceSetText(const SDeviceSetInfo& set)
{
    m_host.noteDeviceSet(set.id.Data1);
    return answer("GetDeviceSetText", [&](const StormProject::State&) {
        return QStringLiteral("Set %1").arg(set.id.Data1);
    });
}

int StormHandler::GetDeviceSetTexts(QStringList& texts)
{
    texts = QStringList{QStringLiteral("Set 1"), QStringLiteral("Set 2")};
    return 2;
}

bool StormHandler::ShowProcessorMoreButton()
{
    return answer("ShowProcessorMoreButton", [](const StormProject::State&) { return true; });
}

bool StormHandler::ShowNodeMoreButton()
{
    return answer("ShowNodeMoreButton", [](const StormProject::State&) { return true; });
}

QList<ProcessorNode> StormHandler::GetAllProcessorNodes()
{
    return answer("GetAllProcessorNodes", [](const StormProject::State& project) {
        return QList<ProcessorNode>(project.processors.begin(), project.processors.end());
    });
}

QList<ProcessorGroupNode> StormHandler::GetAllGroupNodes()
{
    return answer("GetAllGroupNodes", [](const StormProject::State& project) {
        return QList<ProcessorGroupNode>(project.groups.begin(), project.groups.end());
    });
}

ProcessorGroupNode StormHandler::GetGroupNode(const QUuid& id)
{
    return answer("GetGroupNode",
                  [id](const StormProject::State& project) { return project.group(id); });
}

ProcessorNode StormHandler::GetProcessorNode(const QUuid& id)
{
    return answer("GetProcessorNode",
                  [id](const StormProject::State& project) { return project.processor(id); });
}

void StormHandler::DeleteProcessors(const QList<QUuid>& ids)
{
    m_host.watch.note(QStringLiteral("is asked to delete %1").arg(stormLabels(ids)));
    const StormWatch::HostWork work(m_host.watch);
    m_host.removeLater(ids);
    m_host.dwell("DeleteProcessors");
}

void StormHandler::SetProcessorGroup(const ProcessorGroupNode&, const QUuid& groupId,
                                     const QList<QUuid>& ids)
{
    const StormWatch::HostWork work(m_host.watch);
    m_host.watch.note(QStringLiteral("stores %1 in %2").arg(stormLabels(ids), stormLabel(groupId)));
    m_host.project.storeMembership(groupId, ids);
    m_host.dwell("SetProcessorGroup");
}

void StormHandler::Ungroup(const QUuid& id)
{
    m_host.watch.note(QStringLiteral("is asked to dissolve %1").arg(stormLabel(id)));
    const StormWatch::HostWork work(m_host.watch);
    m_host.dissolve(id);
    m_host.dwell("Ungroup");
}

bool StormHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    const StormWatch::HostWork work(m_host.watch);
    const bool accepted = m_host.project.renameProcessor(id, name);
    m_host.dwell("RenameProcessor");
    m_host.tellLater(25, {id});
    return accepted;
}

void StormHandler::RenameGroup(const QUuid& id, const QString& name)
{
    const StormWatch::HostWork work(m_host.watch);
    m_host.project.renameGroup(id, name);
    m_host.dwell("RenameGroup");
    m_host.tellLater(16);
}

void StormHandler::ReportSelection(const QUuid&, const QList<QUuid>&, const QList<SGroupSelection>&,
                                   const QUuid&)
{
    answer("ReportSelection", [](const StormProject::State&) { return true; });
}

bool StormHandler::CheckProcessor(const ProcessorNode& processor)
{
    return answer("CheckProcessor", [&](const StormProject::State&) { return processor.online; });
}

bool StormHandler::IsLanUsbMode()
{
    return answer("IsLanUsbMode", [](const StormProject::State&) { return true; });
}

QList<quint32> StormHandler::GetLanUsbProcessorIps()
{
    return answer("GetLanUsbProcessorIps",
                  [](const StormProject::State&) { return QList<quint32>{0x0A000001}; });
}

QUuid StormHandler::GetCurrentProcessorId()
{
    return answer("GetCurrentProcessorId",
                  [](const StormProject::State& project) { return QUuid(project.current); });
}

void StormHandler::GetIPNameLists(QStringList& ips, QStringList& names)
{
    ips = QStringList{QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2")};
    names = QStringList{QStringLiteral("One"), QStringLiteral("Two")};
}

void StormHandler::GetIPList(QStringList& entries)
{
    entries = QStringList{QStringLiteral("10.0.0.1(One)"), QStringLiteral("10.0.0.2(Two)")};
}

int StormHandler::GetSelectionMode()
{
    return answer("GetSelectionMode", [](const StormProject::State&) { return 0; });
}

QList<QUuid> StormHandler::GetSelectedProcessors()
{
    return answer("GetSelectedProcessors",
                  [](const StormProject::State&) { return QList<QUuid>(); });
}

bool StormHandler::IsIpManagementAvailable()
{
    return answer("IsIpManagementAvailable", [](const StormProject::State&) { return true; });
}

bool StormHandler::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    return answer("AcceptProcessorForSnapshot",
                  [&](const StormProject::State&) { return processor.number % 3 != 0; });
}
