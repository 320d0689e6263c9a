// The answers and requests about IP addresses and the list of them.

#include "tests/support/FakeHandler.h"

#include <QtEndian>

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

QString addressIn(const QString& entry)
{
    return entry.section(QLatin1Char('('), 0, 0);
}

QString nameIn(const QString& entry)
{
    const QString name = entry.section(QLatin1Char('('), 1);
    return name.endsWith(QLatin1Char(')')) ? name.chopped(1) : name;
}

} // namespace

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

bool FakeHandler::IsIpManagementAvailable()
{
    note("IsIpManagementAvailable");
    return ipManagementAvailable;
}

void FakeHandler::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    QStringList texts{group.toString()};
    for (const quint32 address : addresses)
        texts.append(dotted(address));
    note("AddProcessorsWithIps", texts.join(QLatin1Char(',')));
}

void FakeHandler::AddProcessorsFromIpList(const QUuid& group, const QStringList& entries)
{
    note("AddProcessorsFromIpList",
         group.toString() + QLatin1Char(',') + entries.join(QLatin1Char(',')));
}
