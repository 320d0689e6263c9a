#include "ipmanage/HostIPList.h"

#include "base/IPText.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"

namespace HostIPList {

namespace {

// Not a code of the host, so callers ignore it as an unknown code.
constexpr quint32 kNoHost = 0xFFFFFFFF;

} // namespace

bool isThere()
{
    return GetTargetSelectHandler() != nullptr;
}

QStringList entries()
{
    QStringList list;
    if (const auto handler = GetTargetSelectHandler())
        handler->GetIPList(list);
    return list;
}

QString entry(int row)
{
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->GetIPEntry(row) : QString();
}

int count()
{
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->GetIPCount(0) : 0;
}

int processorCount()
{
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->GetAllProcessorNodes().size() : 0;
}

void refresh()
{
    if (const auto handler = GetTargetSelectHandler())
        handler->RefreshIPList();
}

void add(const QString& ip, const QString& name)
{
    if (const auto handler = GetTargetSelectHandler())
        handler->AddIPAddress(ip, name);
}

void modify(int row, const QString& ip, const QString& name)
{
    if (const auto handler = GetTargetSelectHandler())
        handler->ModifyIPAddress(row, ip, name);
}

void remove(quint32 networkAddress)
{
    if (const auto handler = GetTargetSelectHandler())
        handler->DeleteIPAddress(networkAddress);
}

void clear()
{
    if (const auto handler = GetTargetSelectHandler())
        handler->ClearIPList();
}

void save()
{
    if (const auto handler = GetTargetSelectHandler())
        handler->SaveIPList();
}

quint32 readOnline()
{
    const auto handler = GetTargetSelectHandler();
    const quint32 code = handler ? handler->ReadOnlineIPAddresses() : kNoHost;
    qCDebug(lcAddresses, "reading from online processors ends with code %#x", code);
    return code;
}

quint32 importFile(const QString& path)
{
    const auto handler = GetTargetSelectHandler();
    const quint32 code = handler ? handler->ImportIPFile(path) : kNoHost;
    qCDebug(lcAddresses, "the import of \"%s\" ends with code %#x", qPrintable(path), code);
    return code;
}

bool rejects(quint32 address, int* code, bool processorMode)
{
    const auto handler = GetTargetSelectHandler();
    const bool isRejected = !handler || handler->CheckIPAddress(address, code, processorMode);
    if (isRejected)
        qCDebug(lcAddresses, "%s is rejected, code %#x", qPrintable(addressText(address)),
                static_cast<quint32>(code ? *code : 0));
    return isRejected;
}

void showTip(const QString& text)
{
    if (const auto handler = GetTargetSelectHandler())
        handler->ShowTipMessage(text);
}

} // namespace HostIPList
