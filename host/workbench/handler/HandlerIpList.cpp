// The questions about IP addresses and the changes of the IP list.

#include "host/common/AppendLog.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/handler/WorkbenchHandler.h"
#include "host/workbench/store/ProjectStore.h"

#include <QtEndian>

#include <optional>

namespace {

IpList ipList(const ProjectStore& store)
{
    return store.read([](const Project& project) { return project.ipList; });
}

std::optional<IpEntry> entryOf(const QString& ip, const QString& name)
{
    quint32 address = 0;
    if (!parseDottedAddress(ip, address))
        return std::nullopt;
    return IpEntry{address, name};
}

QSet<quint32> addressesOf(const QStringList& entries)
{
    QSet<quint32> addresses;
    for (const QString& text : entries) {
        if (const auto entry = ipEntryOfText(text))
            addresses.insert(entry->address);
    }
    return addresses;
}

void logAddresses(const char* function, const QString& message)
{
    AppendLog(function, "HandlerIpList.cpp", __LINE__, message.toUtf8().constData());
}

} // namespace

bool WorkbenchHandler::CheckIPAddress(quint32 address, int* code, bool processorMode)
{
    quint32 reason = m_store.takeForcedIpCheck();
    if (reason == 0)
        reason = checkIpAddress(
            address, m_network.current(),
            processorMode ? m_store.processorAddresses() : ipList(m_store).addresses(),
            m_store.read([](const Project& project) { return project.network.enabled; }));
    if (code)
        *code = static_cast<int>(reason);
    return m_trace.answered("CheckIPAddress", reason != 0, dottedAddress(address), processorMode,
                            reason);
}

quint32 WorkbenchHandler::ReadOnlineIPAddresses()
{
    m_trace.called("ReadOnlineIPAddresses");
    const quint32 forced =
        m_store.read([](const Project& project) { return project.answers.readOnlineCode; });
    return m_trace.answered("ReadOnlineIPAddresses",
                            forced != 0 ? forced : m_store.mergeOnlineAddresses());
}

int WorkbenchHandler::GetIPCount(int kind)
{
    return m_trace.answered("GetIPCount", ipList(m_store).size(), kind);
}

void WorkbenchHandler::AddIPAddress(const QString& ip, const QString& name)
{
    m_trace.called("AddIPAddress", ip, name);
    changeIpList("AddIPAddress", ip, [&](IpList& list) {
        const auto entry = entryOf(ip, name);
        return entry ? list.append(*entry) : IpRefusal::NoAddress;
    });
}

void WorkbenchHandler::SaveIPList()
{
    m_trace.called("SaveIPList");
    logAddresses("SaveIPList",
                 QStringLiteral("%1 entries are part of the project and saved with it")
                     .arg(ipList(m_store).size()));
}

void WorkbenchHandler::RefreshIPList()
{
    m_trace.called("RefreshIPList");
    m_network.forget();
}

void WorkbenchHandler::ModifyIPAddress(int row, const QString& ip, const QString& name)
{
    m_trace.called("ModifyIPAddress", row, ip, name);
    changeIpList("ModifyIPAddress", QStringLiteral("row %1, %2").arg(row).arg(ip),
                 [&](IpList& list) {
                     const auto entry = entryOf(ip, name);
                     return entry ? list.replace(row, *entry) : IpRefusal::NoAddress;
                 });
}

bool WorkbenchHandler::IpListChanged(const QStringList& before, const QStringList& after)
{
    return m_trace.answered("IpListChanged", addressesOf(before) != addressesOf(after), before,
                            after);
}

void WorkbenchHandler::GetIPNameLists(QStringList& ips, QStringList& names)
{
    ips.clear();
    names.clear();
    const IpList list = ipList(m_store);
    for (const IpEntry& entry : list.entries()) {
        ips.append(dottedAddress(entry.address));
        names.append(entry.name);
    }
    m_trace.answered("GetIPNameLists", ips);
}

void WorkbenchHandler::GetIPList(QStringList& entries)
{
    entries.clear();
    const IpList list = ipList(m_store);
    for (const IpEntry& entry : list.entries())
        entries.append(ipEntryText(entry));
    m_trace.answered("GetIPList", entries);
}

void WorkbenchHandler::ClearIPList()
{
    m_trace.called("ClearIPList");
    m_store.changeIpList([](IpList& list) {
        const bool hadAny = list.size() > 0;
        list.clear();
        return hadAny;
    });
}

void WorkbenchHandler::DeleteIPAddress(quint32 networkAddress)
{
    const QString ip = dottedAddress(qFromBigEndian(networkAddress));
    m_trace.called("DeleteIPAddress", ip);
    changeIpList("DeleteIPAddress", ip, [&](IpList& list) {
        return list.remove(qFromBigEndian(networkAddress)) ? IpRefusal::None : IpRefusal::NoSuchRow;
    });
}

quint32 WorkbenchHandler::ImportIPFile(const QString& path)
{
    m_trace.called("ImportIPFile", path);
    const quint32 forced =
        m_store.read([](const Project& project) { return project.answers.importCode; });
    return m_trace.answered("ImportIPFile", forced != 0 ? forced : m_store.importIpFile(path));
}

QString WorkbenchHandler::GetIPEntry(int row)
{
    const QList<IpEntry> entries = ipList(m_store).entries();
    const bool isRow = row >= 0 && row < entries.size();
    return m_trace.answered("GetIPEntry", isRow ? ipEntryText(entries.at(row)) : QString(), row);
}

/// Applies a change of the list, or logs why `function` refused `what`.
void WorkbenchHandler::changeIpList(const char* function, const QString& what,
                                    const std::function<IpRefusal(IpList&)>& change)
{
    IpRefusal refusal = IpRefusal::None;
    m_store.changeIpList([&](IpList& list) {
        refusal = change(list);
        return refusal == IpRefusal::None;
    });
    if (refusal != IpRefusal::None)
        logAddresses(function, QStringLiteral("%1 is refused: %2").arg(what, refusalText(refusal)));
}
