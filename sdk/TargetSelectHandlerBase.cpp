#include "Interface/TargetSelectHandlerBase.h"

#include "Interface/IPStatusCodes.h"
#include "host/common/AppendLog.h"

#include <string>

CTargetSelectHandlerBase::CTargetSelectHandlerBase() = default;
CTargetSelectHandlerBase::~CTargetSelectHandlerBase() = default;

void CTargetSelectHandlerBase::SetObserver(CObserver*)
{
    note(__func__, __LINE__, "the panel hears of no event");
}

QList<ProcessorNode> CTargetSelectHandlerBase::GetAllProcessorNodes()
{
    note(__func__, __LINE__, "no processors");
    return {};
}

QList<ProcessorGroupNode> CTargetSelectHandlerBase::GetAllGroupNodes()
{
    note(__func__, __LINE__, "no groups");
    return {};
}

ProcessorNode CTargetSelectHandlerBase::GetProcessorNode(const QUuid&)
{
    note(__func__, __LINE__, "an empty record, which counts as none");
    return {};
}

ProcessorGroupNode CTargetSelectHandlerBase::GetGroupNode(const QUuid&)
{
    note(__func__, __LINE__, "an empty record, which counts as none");
    return {};
}

QUuid CTargetSelectHandlerBase::GetCurrentProcessorId()
{
    note(__func__, __LINE__, "no current processor");
    return {};
}

bool CTargetSelectHandlerBase::AcceptProcessorForSnapshot(const ProcessorNode&)
{
    note(__func__, __LINE__, "yes: every processor");
    return true;
}

bool CTargetSelectHandlerBase::CheckProcessor(const ProcessorNode&)
{
    note(__func__, __LINE__, "no");
    return false;
}

bool CTargetSelectHandlerBase::ShowProcessorMoreButton()
{
    note(__func__, __LINE__, "no: processors have no \"More\" button");
    return false;
}

bool CTargetSelectHandlerBase::ShowNodeMoreButton()
{
    note(__func__, __LINE__, "no: groups have no \"More\" button");
    return false;
}

void CTargetSelectHandlerBase::AppendContextMenu(EPrcTreeNodeType, const QUuid&, bool, QMenu*)
{
    note(__func__, __LINE__, "no entries of the host");
}

bool CTargetSelectHandlerBase::IsFrontPanelHighlightAvailable()
{
    note(__func__, __LINE__, "no: the entry is not offered");
    return false;
}

bool CTargetSelectHandlerBase::IsFrontPanelHighlighted(const QUuid&)
{
    note(__func__, __LINE__, "no");
    return false;
}

void CTargetSelectHandlerBase::SetFrontPanelHighlight(bool)
{
    note(__func__, __LINE__, "no front panel changes");
}

void CTargetSelectHandlerBase::ReportSelection(const QUuid&, const QList<QUuid>&,
                                               const QList<SGroupSelection>&, const QUuid&)
{
    note(__func__, __LINE__, "the host does not follow the selection");
}

int CTargetSelectHandlerBase::GetSelectionMode()
{
    note(__func__, __LINE__, "0: no multi-selection");
    return 0;
}

QList<QUuid> CTargetSelectHandlerBase::GetSelectedProcessors()
{
    note(__func__, __LINE__, "no processors");
    return {};
}

bool CTargetSelectHandlerBase::CanAddProcessors(const ProcessorNode&)
{
    note(__func__, __LINE__, "no: adding is not offered");
    return false;
}

bool CTargetSelectHandlerBase::IsAddProcessorsEnabled(const ProcessorNode&)
{
    note(__func__, __LINE__, "no: adding is disabled");
    return false;
}

bool CTargetSelectHandlerBase::UsesIpAddressing()
{
    note(__func__, __LINE__, "no: processors are added by count");
    return false;
}

int CTargetSelectHandlerBase::GetFixedOutputCount()
{
    note(__func__, __LINE__, "0: the number is not fixed");
    return 0;
}

void CTargetSelectHandlerBase::SetNewProcessorOutputs(int)
{
    note(__func__, __LINE__, "the number of outputs is dropped");
}

void CTargetSelectHandlerBase::AddProcessors(const QUuid&, int)
{
    note(__func__, __LINE__, "nothing is added");
}

void CTargetSelectHandlerBase::AddProcessorsWithIps(const QUuid&, const QList<quint32>&)
{
    note(__func__, __LINE__, "nothing is added");
}

void CTargetSelectHandlerBase::AddProcessorsFromIpList(const QUuid&, const QStringList&)
{
    note(__func__, __LINE__, "nothing is added");
}

bool CTargetSelectHandlerBase::IsDeleteBlocked(const QUuid&)
{
    note(__func__, __LINE__, "no");
    return false;
}

void CTargetSelectHandlerBase::PreDeleteProcessors(const QList<QUuid>&)
{
    note(__func__, __LINE__, "nothing is prepared");
}

void CTargetSelectHandlerBase::DeleteProcessors(const QList<QUuid>&)
{
    note(__func__, __LINE__, "nothing is deleted");
}

QUuid CTargetSelectHandlerBase::CreateGroup(const ProcessorGroupNode&)
{
    note(__func__, __LINE__, "no group");
    return {};
}

void CTargetSelectHandlerBase::Ungroup(const QUuid&)
{
    note(__func__, __LINE__, "the group stays; the tree shows otherwise until its next reset");
}

void CTargetSelectHandlerBase::RenameGroup(const QUuid&, const QString&)
{
    note(__func__, __LINE__, "the name stays; the tree shows otherwise until its next reset");
}

void CTargetSelectHandlerBase::SetProcessorGroup(const ProcessorGroupNode&, const QUuid&,
                                                 const QList<QUuid>&)
{
    note(__func__, __LINE__, "nothing is moved; the tree shows otherwise until its next reset");
}

bool CTargetSelectHandlerBase::IsRestrictedMode()
{
    note(__func__, __LINE__, "no");
    return false;
}

bool CTargetSelectHandlerBase::CanRenameProcessor(const QUuid&)
{
    note(__func__, __LINE__, "no: renaming is not offered");
    return false;
}

bool CTargetSelectHandlerBase::RenameProcessor(const QUuid&, const QString&)
{
    note(__func__, __LINE__, "no: the name is refused");
    return false;
}

int CTargetSelectHandlerBase::GetNameMaxBytes()
{
    note(__func__, __LINE__, "0: names have no limit");
    return 0;
}

bool CTargetSelectHandlerBase::IsNameUtf8()
{
    note(__func__, __LINE__, "yes");
    return true;
}

quint32 CTargetSelectHandlerBase::DetectAllDevices()
{
    note(__func__, __LINE__, "0: success, with nothing detected");
    return 0;
}

void CTargetSelectHandlerBase::DetectProcessorsOnly()
{
    note(__func__, __LINE__, "nothing is detected");
}

QString CTargetSelectHandlerBase::GetDeviceSetText(const SDeviceSetInfo&)
{
    note(__func__, __LINE__, "an empty text");
    return {};
}

int CTargetSelectHandlerBase::GetDeviceSetTexts(QStringList& texts)
{
    note(__func__, __LINE__, "0 texts");
    texts.clear();
    return 0;
}

bool CTargetSelectHandlerBase::ConfirmDeviceSetChange(const SDeviceSetInfo&, int)
{
    note(__func__, __LINE__, "no: the choice is undone");
    return false;
}

bool CTargetSelectHandlerBase::IsLanUsbMode()
{
    note(__func__, __LINE__, "no");
    return false;
}

QList<quint32> CTargetSelectHandlerBase::GetLanUsbProcessorIps()
{
    note(__func__, __LINE__, "no addresses");
    return {};
}

bool CTargetSelectHandlerBase::IsIpManagementAvailable()
{
    note(__func__, __LINE__, "no: the IP list is not offered");
    return false;
}

int CTargetSelectHandlerBase::GetIPCount(int)
{
    note(__func__, __LINE__, "0 entries");
    return 0;
}

QString CTargetSelectHandlerBase::GetIPEntry(int)
{
    note(__func__, __LINE__, "an empty entry");
    return {};
}

void CTargetSelectHandlerBase::GetIPList(QStringList& entries)
{
    note(__func__, __LINE__, "no entries");
    entries.clear();
}

void CTargetSelectHandlerBase::GetIPNameLists(QStringList& ips, QStringList& names)
{
    note(__func__, __LINE__, "no entries");
    ips.clear();
    names.clear();
}

bool CTargetSelectHandlerBase::CheckIPAddress(quint32, int*, bool)
{
    note(__func__, __LINE__, "no: the address is not rejected");
    return false;
}

void CTargetSelectHandlerBase::AddIPAddress(const QString&, const QString&)
{
    note(__func__, __LINE__, "nothing is added");
}

void CTargetSelectHandlerBase::ModifyIPAddress(int, const QString&, const QString&)
{
    note(__func__, __LINE__, "nothing is modified");
}

void CTargetSelectHandlerBase::DeleteIPAddress(quint32)
{
    note(__func__, __LINE__, "nothing is deleted");
}

void CTargetSelectHandlerBase::ClearIPList()
{
    note(__func__, __LINE__, "nothing is cleared");
}

void CTargetSelectHandlerBase::SaveIPList()
{
    note(__func__, __LINE__, "nothing is saved");
}

void CTargetSelectHandlerBase::RefreshIPList()
{
    note(__func__, __LINE__, "nothing is refreshed");
}

quint32 CTargetSelectHandlerBase::ReadOnlineIPAddresses()
{
    note(__func__, __LINE__, "IPLIST_ONLINE_EMPTY");
    return IPLIST_ONLINE_EMPTY;
}

quint32 CTargetSelectHandlerBase::ImportIPFile(const QString&)
{
    note(__func__, __LINE__, "IPIMPORT_NO_VALID_IP");
    return IPIMPORT_NO_VALID_IP;
}

bool CTargetSelectHandlerBase::IpListChanged(const QStringList&, const QStringList&)
{
    note(__func__, __LINE__, "no: nothing is detected");
    return false;
}

void CTargetSelectHandlerBase::ShowTipMessage(const QString&)
{
    note(__func__, __LINE__, "the notice is not shown");
}

/// Logs the first call of an operation that the host's handler does not override.
void CTargetSelectHandlerBase::note(const char* operation, int line, const char* outcome)
{
    {
        const std::lock_guard guard(m_mutex);
        if (!m_noted.insert(operation).second)
            return;
    }
    const std::string message =
        std::string(operation) + " is not overridden; the panel gets: " + outcome;
    AppendLog(operation, "TargetSelectHandlerBase.cpp", line, message.c_str());
}
