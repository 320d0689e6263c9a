#include "tests/support/FakeHandler.h"

#include <QtEndian>

#include <algorithm>
#include <utility>

namespace {

// Written out, since this is linked without the product too.

QString dotted(quint32 address)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(address >> 24)
        .arg((address >> 16) & 0xFF)
        .arg((address >> 8) & 0xFF)
        .arg(address & 0xFF);
}

QString entryOf(const QString& ip, const QString& name)
{
    return ip + QLatin1Char('(') + name + QLatin1Char(')');
}

QString joined(const QList<QUuid>& ids)
{
    QStringList texts;
    for (const QUuid& id : ids)
        texts.append(id.toString());
    return texts.join(QLatin1Char(','));
}

QString addressIn(const QString& entry)
{
    return entry.section(QLatin1Char('('), 0, 0);
}

QString nameIn(const QString& entry)
{
    const QString name = entry.section(QLatin1Char('('), 1);
    return name.endsWith(QLatin1Char(')')) ? name.chopped(1) : name;
}

/// The record of `id`, a default one when there is none.
template <typename Record>
Record recordOf(const QUuid& id, const QList<Record>& records)
{
    for (const Record& record : records) {
        if (record.id == id)
            return record;
    }
    return {};
}

} // namespace

void FakeHandler::doInside(const QString& question, std::function<void()> action)
{
    inside = [this, question, action = std::move(action)](const QString& asked) {
        if (asked != question)
            return;
        const auto once = action;
        inside = nullptr;
        once();
    };
}

QVector<FakeHandler::Call> FakeHandler::calls() const
{
    const std::lock_guard guard(m_mutex);
    return m_calls;
}

QStringList FakeHandler::callNames() const
{
    QStringList names;
    for (const Call& call : calls())
        names.append(call.name);
    return names;
}

int FakeHandler::callCount(const QString& name) const
{
    return callNames().count(name);
}

void FakeHandler::clearCalls()
{
    const std::lock_guard guard(m_mutex);
    m_calls.clear();
}

void FakeHandler::setProject(const QList<ProcessorGroupNode>& groups,
                             const QList<ProcessorNode>& processors)
{
    const std::lock_guard guard(m_mutex);
    m_groups = groups;
    m_processors = processors;
}

void FakeHandler::setProcessor(const ProcessorNode& processor)
{
    const std::lock_guard guard(m_mutex);
    for (ProcessorNode& known : m_processors) {
        if (known.id == processor.id) {
            known = processor;
            return;
        }
    }
    m_processors.append(processor);
}

void FakeHandler::setGroup(const ProcessorGroupNode& group)
{
    const std::lock_guard guard(m_mutex);
    for (ProcessorGroupNode& known : m_groups) {
        if (known.id == group.id) {
            known = group;
            return;
        }
    }
    m_groups.append(group);
}

void FakeHandler::removeProcessor(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    const auto isIt = [&](const ProcessorNode& known) { return known.id == id; };
    m_processors.erase(std::remove_if(m_processors.begin(), m_processors.end(), isIt),
                       m_processors.end());
}

void FakeHandler::removeGroup(const QUuid& id)
{
    const std::lock_guard guard(m_mutex);
    const auto isIt = [&](const ProcessorGroupNode& known) { return known.id == id; };
    m_groups.erase(std::remove_if(m_groups.begin(), m_groups.end(), isIt), m_groups.end());
    for (ProcessorNode& processor : m_processors) {
        if (processor.groupId == id)
            processor.groupId = QUuid();
    }
}

QList<ProcessorNode> FakeHandler::processors() const
{
    const std::lock_guard guard(m_mutex);
    return m_processors;
}

QList<ProcessorGroupNode> FakeHandler::groups() const
{
    const std::lock_guard guard(m_mutex);
    return m_groups;
}

void FakeHandler::note(const char* name, const QString& argument)
{
    const QString text = QString::fromLatin1(name);
    {
        const std::lock_guard guard(m_mutex);
        m_calls.append({text, argument, QThread::currentThread()});
    }
    if (inside)
        inside(text);
}

/// `answer`, after the test had its say.
template <typename Answer>
Answer FakeHandler::fixed(const char* name, const QUuid& id, Answer answer)
{
    if (answered)
        answered(QString::fromLatin1(name), id);
    return answer;
}

void FakeHandler::SetObserver(CObserver* newObserver)
{
    note("SetObserver");
    observer = newObserver;
}

void FakeHandler::AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                    QMenu* menu)
{
    note("AppendContextMenu", QString::number(type) + QLatin1Char(',') + id.toString()
                                  + QLatin1String(readOnly ? ",true" : ",false"));
    if (appendEntries)
        appendEntries(*menu);
}

quint32 FakeHandler::DetectAllDevices()
{
    note("DetectAllDevices");
    return detectResult;
}

void FakeHandler::DetectProcessorsOnly()
{
    note("DetectProcessorsOnly");
}

QString FakeHandler::GetDeviceSetText(const SDeviceSetInfo& set)
{
    note("GetDeviceSetText");
    return QStringLiteral("Set %1").arg(set.id.Data1);
}

bool FakeHandler::ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index)
{
    note("ConfirmDeviceSetChange", QString::number(index));
    Q_UNUSED(set)
    return confirmDeviceSet;
}

bool FakeHandler::CheckIPAddress(quint32 address, int* code, bool processorMode)
{
    note("CheckIPAddress", dotted(address) + QLatin1String(processorMode ? ",true" : ",false"));
    const quint32 answer = checkIp ? checkIp(address, processorMode) : 0;
    if (code && answer != 0)
        *code = static_cast<int>(answer);
    return answer != 0;
}

int FakeHandler::GetIPCount(int kind)
{
    note("GetIPCount", QString::number(kind));
    return ipCount.value_or(ipList.size());
}

void FakeHandler::AddIPAddress(const QString& ip, const QString& name)
{
    note("AddIPAddress", entryOf(ip, name));
    ipList.append(entryOf(ip, name));
}

void FakeHandler::SaveIPList()
{
    note("SaveIPList");
}

void FakeHandler::RefreshIPList()
{
    note("RefreshIPList");
}

void FakeHandler::ModifyIPAddress(int row, const QString& ip, const QString& name)
{
    note("ModifyIPAddress", QString::number(row) + QLatin1Char(',') + entryOf(ip, name));
    if (row >= 0 && row < ipList.size())
        ipList[row] = entryOf(ip, name);
}

bool FakeHandler::IpListChanged(const QStringList& before, const QStringList& after)
{
    note("IpListChanged",
         before.join(QLatin1Char(',')) + QLatin1Char('|') + after.join(QLatin1Char(',')));
    return ipListChanged;
}

int FakeHandler::GetDeviceSetTexts(QStringList& texts)
{
    note("GetDeviceSetTexts");
    texts = deviceSetTexts;
    return deviceSetTextCount.value_or(texts.size());
}

bool FakeHandler::ShowProcessorMoreButton()
{
    note("ShowProcessorMoreButton");
    return showProcessorMoreButton;
}

bool FakeHandler::ShowNodeMoreButton()
{
    note("ShowNodeMoreButton");
    return showNodeMoreButton;
}

QList<ProcessorNode> FakeHandler::GetAllProcessorNodes()
{
    note("GetAllProcessorNodes");
    return fixed("GetAllProcessorNodes", QUuid(), processors());
}

QList<ProcessorGroupNode> FakeHandler::GetAllGroupNodes()
{
    note("GetAllGroupNodes");
    return fixed("GetAllGroupNodes", QUuid(), groups());
}

ProcessorGroupNode FakeHandler::GetGroupNode(const QUuid& id)
{
    note("GetGroupNode", id.toString());
    return fixed("GetGroupNode", id, answerGroup.value_or(recordOf(id, groups())));
}

void FakeHandler::AddProcessors(const QUuid& group, int count)
{
    note("AddProcessors", group.toString() + QLatin1Char(',') + QString::number(count));
}

void FakeHandler::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    QStringList texts{group.toString()};
    for (const quint32 address : addresses)
        texts.append(dotted(address));
    note("AddProcessorsWithIps", texts.join(QLatin1Char(',')));
}

void FakeHandler::DeleteProcessors(const QList<QUuid>& ids)
{
    note("DeleteProcessors", joined(ids));
}

void FakeHandler::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                    const QList<QUuid>& ids)
{
    note("SetProcessorGroup", groupId.toString());
    memberships.append({group, groupId, ids});
}

ProcessorNode FakeHandler::GetProcessorNode(const QUuid& id)
{
    note("GetProcessorNode", id.toString());
    return fixed("GetProcessorNode", id, answerProcessor.value_or(recordOf(id, processors())));
}

bool FakeHandler::CanRenameProcessor(const QUuid& id)
{
    note("CanRenameProcessor", id.toString());
    return canRename;
}

bool FakeHandler::CanAddProcessors(const ProcessorNode& first)
{
    note("CanAddProcessors", first.name);
    return canAdd;
}

bool FakeHandler::IsAddProcessorsEnabled(const ProcessorNode& first)
{
    note("IsAddProcessorsEnabled", first.name);
    return addEnabled;
}

bool FakeHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    note("RenameProcessor", id.toString() + name);
    return acceptRename;
}

void FakeHandler::SetNewProcessorOutputs(int outputs)
{
    note("SetNewProcessorOutputs", QString::number(outputs));
}

QUuid FakeHandler::CreateGroup(const ProcessorGroupNode& group)
{
    note("CreateGroup", group.name);
    if (refusesGroups)
        return {};
    return createdGroup.isNull() ? QUuid::createUuid() : createdGroup;
}

void FakeHandler::Ungroup(const QUuid& id)
{
    note("Ungroup", id.toString());
}

void FakeHandler::RenameGroup(const QUuid& id, const QString& name)
{
    note("RenameGroup", id.toString() + name);
}

void FakeHandler::ReportSelection(const QUuid& focus, const QList<QUuid>& ids,
                                  const QList<SGroupSelection>& byGroup, const QUuid& previous)
{
    selections.append({focus, ids, byGroup, previous});
    note("ReportSelection");
}

bool FakeHandler::IsRestrictedMode()
{
    note("IsRestrictedMode");
    return restrictedMode;
}

bool FakeHandler::IsDeleteBlocked(const QUuid& id)
{
    note("IsDeleteBlocked", id.toString());
    return deleteBlocked.contains(id);
}

bool FakeHandler::CheckProcessor(const ProcessorNode& processor)
{
    note("CheckProcessor", processor.name);
    return checkProcessor;
}

bool FakeHandler::UsesIpAddressing()
{
    note("UsesIpAddressing");
    return usesIpAddressing;
}

bool FakeHandler::IsLanUsbMode()
{
    note("IsLanUsbMode");
    return lanUsbMode;
}

QList<quint32> FakeHandler::GetLanUsbProcessorIps()
{
    note("GetLanUsbProcessorIps");
    return lanUsbIps;
}

int FakeHandler::GetNameMaxBytes()
{
    note("GetNameMaxBytes");
    return nameMaxBytes;
}

bool FakeHandler::IsNameUtf8()
{
    note("IsNameUtf8");
    return nameUtf8;
}

QUuid FakeHandler::GetCurrentProcessorId()
{
    note("GetCurrentProcessorId");
    return currentProcessor;
}

quint32 FakeHandler::ReadOnlineIPAddresses()
{
    note("ReadOnlineIPAddresses");
    return readOnlineResult;
}

void FakeHandler::GetIPNameLists(QStringList& ips, QStringList& names)
{
    note("GetIPNameLists");
    QStringList listedIps;
    QStringList listedNames;
    for (const QString& entry : qAsConst(ipList)) {
        listedIps.append(addressIn(entry));
        listedNames.append(nameIn(entry));
    }
    ips = ipAddresses.value_or(listedIps);
    names = ipNames.value_or(listedNames);
}

void FakeHandler::GetIPList(QStringList& entries)
{
    note("GetIPList");
    entries = ipList;
}

void FakeHandler::ClearIPList()
{
    note("ClearIPList");
    ipList.clear();
}

void FakeHandler::DeleteIPAddress(quint32 networkAddress)
{
    const QString address = dotted(qFromBigEndian(networkAddress));
    note("DeleteIPAddress", address);
    for (int row = ipList.size() - 1; row >= 0; --row) {
        if (addressIn(ipList.at(row)) == address)
            ipList.removeAt(row);
    }
}

quint32 FakeHandler::ImportIPFile(const QString& path)
{
    note("ImportIPFile", path);
    return importResult;
}

QString FakeHandler::GetIPEntry(int row)
{
    note("GetIPEntry", QString::number(row));
    return ipList.value(row);
}

int FakeHandler::GetFixedOutputCount()
{
    note("GetFixedOutputCount");
    return fixedOutputCount;
}

int FakeHandler::GetSelectionMode()
{
    note("GetSelectionMode");
    return selectionMode;
}

QList<QUuid> FakeHandler::GetSelectedProcessors()
{
    note("GetSelectedProcessors");
    return selectedProcessors;
}

bool FakeHandler::IsIpManagementAvailable()
{
    note("IsIpManagementAvailable");
    return ipManagementAvailable;
}

void FakeHandler::AddProcessorsFromIpList(const QUuid& group, const QStringList& entries)
{
    note("AddProcessorsFromIpList",
         group.toString() + QLatin1Char(',') + entries.join(QLatin1Char(',')));
}

void FakeHandler::PreDeleteProcessors(const QList<QUuid>& ids)
{
    note("PreDeleteProcessors", joined(ids));
}

bool FakeHandler::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    note("AcceptProcessorForSnapshot", processor.name);
    return acceptProcessor ? acceptProcessor(processor) : acceptForSnapshot;
}

void FakeHandler::ShowTipMessage(const QString& text)
{
    note("ShowTipMessage", text);
}

bool FakeHandler::IsFrontPanelHighlightAvailable()
{
    note("IsFrontPanelHighlightAvailable");
    return frontPanelAvailable;
}

bool FakeHandler::IsFrontPanelHighlighted(const QUuid& id)
{
    note("IsFrontPanelHighlighted", id.toString());
    return frontPanelLit;
}

void FakeHandler::SetFrontPanelHighlight(bool on)
{
    note("SetFrontPanelHighlight", QLatin1String(on ? "true" : "false"));
}
