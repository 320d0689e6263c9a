#include "base/CheckedHandler.h"

#include "base/ContractCheck.h"
#include "base/RequestWatch.h"
#include "base/TargetSelectHandler.h"

#include <QElapsedTimer>
#include <QSet>

#include <exception>
#include <utility>

namespace {

using ContractCheck::Finding;
using RequestWatch::CRequest;

/// An answer that takes longer is felt.
constexpr qint64 kSlowMs = 50;

void reportException(const char* name, const QString& what)
{
    ContractCheck::report(
        Finding::Exception,
        QStringLiteral("%1 lets %2 through, it must not throw").arg(QLatin1String(name), what));
}

template <typename Call>
auto guarded(const char* name, Call call)
{
    try {
        return call();
    } catch (const std::exception& exception) {
        reportException(name,
                        QStringLiteral("\"%1\"").arg(QString::fromLocal8Bit(exception.what())));
        throw;
    } catch (...) {
        reportException(name, QStringLiteral("an exception of another class"));
        throw;
    }
}

/// Measures one question.
class Stopwatch final
{
public:
    explicit Stopwatch(const char* name)
        : m_name(name)
    {
        m_timer.start();
    }
    ~Stopwatch()
    {
        const qint64 duration = m_timer.elapsed();
        if (duration > kSlowMs) {
            ContractCheck::report(Finding::SlowAnswer,
                                  QStringLiteral("%1 answers after more than %2 ms")
                                      .arg(QLatin1String(m_name))
                                      .arg(kSlowMs));
        }
    }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

private:
    const char* m_name;
    QElapsedTimer m_timer;
};

template <typename Record>
void checkRecord(const char* name, const QUuid& id, const Record& record)
{
    if (record.id == id || ContractCheck::Probe::isUnderWay())
        return;
    const Finding finding =
        record.id.isNull() ? Finding::UnknownIdentity : Finding::ForeignIdentity;
    const QString given =
        record.id.isNull() ? QStringLiteral("the empty record") : record.id.toString();
    ContractCheck::report(finding, QStringLiteral("%1 is asked for %2 and answers %3")
                                       .arg(QLatin1String(name), id.toString(), given));
}

template <typename Record>
void checkList(const char* name, const QList<Record>& records)
{
    QSet<QUuid> seen;
    for (const Record& record : records) {
        if (record.id.isNull()) {
            ContractCheck::report(Finding::NullIdentity,
                                  QStringLiteral("%1 lists \"%2\" without an identity")
                                      .arg(QLatin1String(name), record.name));
        } else if (seen.contains(record.id)) {
            ContractCheck::report(Finding::RepeatedIdentity,
                                  QStringLiteral("%1 lists %2 more than once")
                                      .arg(QLatin1String(name), record.id.toString()));
        }
        seen.insert(record.id);
    }
}

/// Returns how the record of `id` is named by the host of the moment, as a contradiction to `name`.
template <typename Record>
QString otherName(Record (Host::*question)(const QUuid&), const QUuid& id, const QString& name)
{
    const ContractCheck::Probe probe;
    const Record record = askHost(question, id);
    if (record.id != id || record.name == name)
        return {};
    return QStringLiteral("%1 is named \"%2\"").arg(id.toString(), record.name);
}

QString otherGroup(const QList<QUuid>& processors, const QUuid& group)
{
    const ContractCheck::Probe probe;
    for (const QUuid& id : processors) {
        const ProcessorNode record = askHost(&Host::GetProcessorNode, id);
        if (record.id == id && record.groupId != group)
            return QStringLiteral("%1 is in %2").arg(id.toString(), record.groupId.toString());
    }
    return {};
}

QString stillThere(const QUuid& group)
{
    const ContractCheck::Probe probe;
    if (askHost(&Host::GetGroupNode, group).id != group)
        return {};
    return QStringLiteral("GetGroupNode answers with %1").arg(group.toString());
}

} // namespace

CCheckedHandler::CCheckedHandler(ITargetSelectInterfaceHandler& host)
    : m_host(host)
{
}

template <typename Result, typename... Parameters, typename... Arguments>
Result CCheckedHandler::ask(const char* name, Result (Host::*operation)(Parameters...),
                            Arguments&&... arguments)
{
    const Stopwatch stopwatch(name);
    return askAtLength(name, operation, std::forward<Arguments>(arguments)...);
}

/// For operations in which the host works, or asks its user.
template <typename Result, typename... Parameters, typename... Arguments>
Result CCheckedHandler::askAtLength(const char* name, Result (Host::*operation)(Parameters...),
                                    Arguments&&... arguments)
{
    return guarded(name,
                   [&] { return (m_host.*operation)(std::forward<Arguments>(arguments)...); });
}

// Answers that are looked at.

ProcessorNode CCheckedHandler::GetProcessorNode(const QUuid& id)
{
    ProcessorNode record = ask("GetProcessorNode", &Host::GetProcessorNode, id);
    checkRecord("GetProcessorNode", id, record);
    return record;
}

ProcessorGroupNode CCheckedHandler::GetGroupNode(const QUuid& id)
{
    ProcessorGroupNode record = ask("GetGroupNode", &Host::GetGroupNode, id);
    checkRecord("GetGroupNode", id, record);
    return record;
}

QList<ProcessorNode> CCheckedHandler::GetAllProcessorNodes()
{
    QList<ProcessorNode> records = ask("GetAllProcessorNodes", &Host::GetAllProcessorNodes);
    checkList("GetAllProcessorNodes", records);
    return records;
}

QList<ProcessorGroupNode> CCheckedHandler::GetAllGroupNodes()
{
    QList<ProcessorGroupNode> records = ask("GetAllGroupNodes", &Host::GetAllGroupNodes);
    checkList("GetAllGroupNodes", records);
    return records;
}

void CCheckedHandler::GetIPNameLists(QStringList& ips, QStringList& names)
{
    ask("GetIPNameLists", &Host::GetIPNameLists, ips, names);
    if (ips.size() != names.size()) {
        ContractCheck::report(Finding::UnequalLists,
                              QStringLiteral("GetIPNameLists answers %1 addresses and %2 names")
                                  .arg(ips.size())
                                  .arg(names.size()));
    }
}

// Requests, which something follows.

void CCheckedHandler::AddProcessors(const QUuid& group, int count)
{
    CRequest request("AddProcessors");
    askAtLength("AddProcessors", &Host::AddProcessors, group, count);
    request.await();
}

void CCheckedHandler::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    CRequest request("AddProcessorsWithIps");
    askAtLength("AddProcessorsWithIps", &Host::AddProcessorsWithIps, group, addresses);
    request.await();
}

void CCheckedHandler::AddProcessorsFromIpList(const QUuid& group, const QStringList& entries)
{
    CRequest request("AddProcessorsFromIpList");
    askAtLength("AddProcessorsFromIpList", &Host::AddProcessorsFromIpList, group, entries);
    request.await();
}

void CCheckedHandler::DeleteProcessors(const QList<QUuid>& processors)
{
    CRequest request("DeleteProcessors");
    askAtLength("DeleteProcessors", &Host::DeleteProcessors, processors);
    request.await();
}

QUuid CCheckedHandler::CreateGroup(const ProcessorGroupNode& group)
{
    CRequest request("CreateGroup");
    const QUuid id = ask("CreateGroup", &Host::CreateGroup, group);
    // Without an identity the host has refused.
    if (!id.isNull())
        request.await();
    return id;
}

void CCheckedHandler::Ungroup(const QUuid& id)
{
    CRequest request("Ungroup", {id});
    RequestWatch::noteTakenOut(id);
    ask("Ungroup", &Host::Ungroup, id);
    request.await([id] { return stillThere(id); });
}

void CCheckedHandler::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                        const QList<QUuid>& processors)
{
    CRequest request("SetProcessorGroup", processors);
    ask("SetProcessorGroup", &Host::SetProcessorGroup, group, groupId, processors);
    request.await([groupId, processors] { return otherGroup(processors, groupId); });
}

bool CCheckedHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    CRequest request("RenameProcessor", {id});
    const bool accepted = ask("RenameProcessor", &Host::RenameProcessor, id, name);
    if (accepted)
        request.await([id, name] { return otherName(&Host::GetProcessorNode, id, name); });
    return accepted;
}

void CCheckedHandler::RenameGroup(const QUuid& id, const QString& name)
{
    CRequest request("RenameGroup", {id});
    ask("RenameGroup", &Host::RenameGroup, id, name);
    request.await([id, name] { return otherName(&Host::GetGroupNode, id, name); });
}

// Questions that are only asked, in the order of the interface.

void CCheckedHandler::SetObserver(CObserver* observer)
{
    askAtLength("SetObserver", &Host::SetObserver, observer);
}

void CCheckedHandler::AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                        QMenu* menu)
{
    ask("AppendContextMenu", &Host::AppendContextMenu, type, id, readOnly, menu);
}

quint32 CCheckedHandler::DetectAllDevices()
{
    return askAtLength("DetectAllDevices", &Host::DetectAllDevices);
}

void CCheckedHandler::DetectProcessorsOnly()
{
    askAtLength("DetectProcessorsOnly", &Host::DetectProcessorsOnly);
}

QString CCheckedHandler::GetDeviceSetText(const SDeviceSetInfo& set)
{
    return ask("GetDeviceSetText", &Host::GetDeviceSetText, set);
}

bool CCheckedHandler::ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index)
{
    return askAtLength("ConfirmDeviceSetChange", &Host::ConfirmDeviceSetChange, set, index);
}

bool CCheckedHandler::CheckIPAddress(quint32 address, int* code, bool processorMode)
{
    return ask("CheckIPAddress", &Host::CheckIPAddress, address, code, processorMode);
}

int CCheckedHandler::GetIPCount(int kind)
{
    return ask("GetIPCount", &Host::GetIPCount, kind);
}

void CCheckedHandler::AddIPAddress(const QString& ip, const QString& name)
{
    ask("AddIPAddress", &Host::AddIPAddress, ip, name);
}

void CCheckedHandler::SaveIPList()
{
    ask("SaveIPList", &Host::SaveIPList);
}

void CCheckedHandler::RefreshIPList()
{
    ask("RefreshIPList", &Host::RefreshIPList);
}

void CCheckedHandler::ModifyIPAddress(int row, const QString& ip, const QString& name)
{
    ask("ModifyIPAddress", &Host::ModifyIPAddress, row, ip, name);
}

bool CCheckedHandler::IpListChanged(const QStringList& before, const QStringList& after)
{
    return askAtLength("IpListChanged", &Host::IpListChanged, before, after);
}

int CCheckedHandler::GetDeviceSetTexts(QStringList& texts)
{
    return ask("GetDeviceSetTexts", &Host::GetDeviceSetTexts, texts);
}

bool CCheckedHandler::ShowProcessorMoreButton()
{
    return ask("ShowProcessorMoreButton", &Host::ShowProcessorMoreButton);
}

bool CCheckedHandler::ShowNodeMoreButton()
{
    return ask("ShowNodeMoreButton", &Host::ShowNodeMoreButton);
}

bool CCheckedHandler::CanRenameProcessor(const QUuid& id)
{
    return ask("CanRenameProcessor", &Host::CanRenameProcessor, id);
}

bool CCheckedHandler::CanAddProcessors(const ProcessorNode& first)
{
    return ask("CanAddProcessors", &Host::CanAddProcessors, first);
}

bool CCheckedHandler::IsAddProcessorsEnabled(const ProcessorNode& first)
{
    return ask("IsAddProcessorsEnabled", &Host::IsAddProcessorsEnabled, first);
}

void CCheckedHandler::SetNewProcessorOutputs(int outputs)
{
    ask("SetNewProcessorOutputs", &Host::SetNewProcessorOutputs, outputs);
}

void CCheckedHandler::ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                      const QList<SGroupSelection>& groups, const QUuid& previous)
{
    ask("ReportSelection", &Host::ReportSelection, focus, processors, groups, previous);
}

bool CCheckedHandler::IsRestrictedMode()
{
    return ask("IsRestrictedMode", &Host::IsRestrictedMode);
}

bool CCheckedHandler::IsDeleteBlocked(const QUuid& id)
{
    return ask("IsDeleteBlocked", &Host::IsDeleteBlocked, id);
}

bool CCheckedHandler::CheckProcessor(const ProcessorNode& processor)
{
    return ask("CheckProcessor", &Host::CheckProcessor, processor);
}

bool CCheckedHandler::UsesIpAddressing()
{
    return ask("UsesIpAddressing", &Host::UsesIpAddressing);
}

bool CCheckedHandler::IsLanUsbMode()
{
    return ask("IsLanUsbMode", &Host::IsLanUsbMode);
}

QList<quint32> CCheckedHandler::GetLanUsbProcessorIps()
{
    return ask("GetLanUsbProcessorIps", &Host::GetLanUsbProcessorIps);
}

int CCheckedHandler::GetNameMaxBytes()
{
    return ask("GetNameMaxBytes", &Host::GetNameMaxBytes);
}

bool CCheckedHandler::IsNameUtf8()
{
    return ask("IsNameUtf8", &Host::IsNameUtf8);
}

QUuid CCheckedHandler::GetCurrentProcessorId()
{
    return ask("GetCurrentProcessorId", &Host::GetCurrentProcessorId);
}

quint32 CCheckedHandler::ReadOnlineIPAddresses()
{
    return askAtLength("ReadOnlineIPAddresses", &Host::ReadOnlineIPAddresses);
}

void CCheckedHandler::GetIPList(QStringList& entries)
{
    ask("GetIPList", &Host::GetIPList, entries);
}

void CCheckedHandler::ClearIPList()
{
    ask("ClearIPList", &Host::ClearIPList);
}

void CCheckedHandler::DeleteIPAddress(quint32 networkAddress)
{
    ask("DeleteIPAddress", &Host::DeleteIPAddress, networkAddress);
}

quint32 CCheckedHandler::ImportIPFile(const QString& path)
{
    return askAtLength("ImportIPFile", &Host::ImportIPFile, path);
}

QString CCheckedHandler::GetIPEntry(int row)
{
    return ask("GetIPEntry", &Host::GetIPEntry, row);
}

int CCheckedHandler::GetFixedOutputCount()
{
    return ask("GetFixedOutputCount", &Host::GetFixedOutputCount);
}

int CCheckedHandler::GetSelectionMode()
{
    return ask("GetSelectionMode", &Host::GetSelectionMode);
}

QList<QUuid> CCheckedHandler::GetSelectedProcessors()
{
    return ask("GetSelectedProcessors", &Host::GetSelectedProcessors);
}

bool CCheckedHandler::IsIpManagementAvailable()
{
    return ask("IsIpManagementAvailable", &Host::IsIpManagementAvailable);
}

void CCheckedHandler::PreDeleteProcessors(const QList<QUuid>& processors)
{
    askAtLength("PreDeleteProcessors", &Host::PreDeleteProcessors, processors);
}

bool CCheckedHandler::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    return ask("AcceptProcessorForSnapshot", &Host::AcceptProcessorForSnapshot, processor);
}

void CCheckedHandler::ShowTipMessage(const QString& text)
{
    askAtLength("ShowTipMessage", &Host::ShowTipMessage, text);
}

bool CCheckedHandler::IsFrontPanelHighlightAvailable()
{
    return ask("IsFrontPanelHighlightAvailable", &Host::IsFrontPanelHighlightAvailable);
}

bool CCheckedHandler::IsFrontPanelHighlighted(const QUuid& id)
{
    return ask("IsFrontPanelHighlighted", &Host::IsFrontPanelHighlighted, id);
}

void CCheckedHandler::SetFrontPanelHighlight(bool on)
{
    ask("SetFrontPanelHighlight", &Host::SetFrontPanelHighlight, on);
}
