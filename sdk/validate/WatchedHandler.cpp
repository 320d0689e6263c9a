#include "sdk/validate/WatchedHandler.h"

#include "sdk/validate/Threads.h"

#include <optional>
#include <vector>

/// The observer that the host gets: lets the test look at an event, and hands it on.
class WatchedHandler::Tap final : public CObserver
{
public:
    void Update(CSubject* subject) override
    {
        std::function<void(const CSubject&)> onEvent;
        CObserver* panel = nullptr;
        {
            const std::lock_guard guard(m_mutex);
            onEvent = m_onEvent;
            panel = m_panel;
        }
        if (onEvent)
            onEvent(*subject);
        if (panel)
            panel->Update(subject);
    }

    void setPanel(CObserver* panel)
    {
        const std::lock_guard guard(m_mutex);
        m_panel = panel;
    }

    CObserver* panel() const
    {
        const std::lock_guard guard(m_mutex);
        return m_panel;
    }

    void setOnEvent(std::function<void(const CSubject&)> onEvent)
    {
        const std::lock_guard guard(m_mutex);
        m_onEvent = std::move(onEvent);
    }

    /// Returns a new one. All are kept where a leak check finds them.
    static Tap* create()
    {
        static auto* const all = new std::vector<std::unique_ptr<Tap>>;
        all->push_back(std::make_unique<Tap>());
        return all->back().get();
    }

private:
    mutable std::mutex m_mutex;
    std::function<void(const CSubject&)> m_onEvent;
    CObserver* m_panel = nullptr; // the panel's, lives until the process ends
};

template <typename Result, typename... Parameters, typename... Arguments>
Result WatchedHandler::ask(const char* operation, Result (Host::*function)(Parameters...),
                           Arguments&&... arguments)
{
    std::optional<Call> call;
    if (m_isNoted) {
        call.emplace(QStringLiteral("the handler's %1%2")
                         .arg(QLatin1String(operation),
                              isGuiThread() ? QString() : QStringLiteral(" off the GUI thread")));
    }
    if (m_before)
        m_before(operation);
    return (m_handler.get()->*function)(std::forward<Arguments>(arguments)...);
}

WatchedHandler::WatchedHandler(std::shared_ptr<Host> handler, bool isNoted)
    : m_handler(std::move(handler))
    , m_isNoted(isNoted)
    , m_tap(Tap::create())
{
}

void WatchedHandler::setOnEvent(std::function<void(const CSubject&)> onEvent)
{
    m_tap->setOnEvent(std::move(onEvent));
}

CObserver* WatchedHandler::panelObserver() const
{
    return m_tap->panel();
}

void WatchedHandler::SetObserver(CObserver* observer)
{
    m_tap->setPanel(observer);
    ask("SetObserver", &Host::SetObserver, m_tap);
}

void WatchedHandler::AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                       QMenu* menu)
{
    ask("AppendContextMenu", &Host::AppendContextMenu, type, id, readOnly, menu);
}

quint32 WatchedHandler::DetectAllDevices()
{
    return ask("DetectAllDevices", &Host::DetectAllDevices);
}

void WatchedHandler::DetectProcessorsOnly()
{
    ask("DetectProcessorsOnly", &Host::DetectProcessorsOnly);
}

QString WatchedHandler::GetDeviceSetText(const SDeviceSetInfo& set)
{
    return ask("GetDeviceSetText", &Host::GetDeviceSetText, set);
}

bool WatchedHandler::ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index)
{
    return ask("ConfirmDeviceSetChange", &Host::ConfirmDeviceSetChange, set, index);
}

bool WatchedHandler::CheckIPAddress(quint32 address, int* code, bool processorMode)
{
    return ask("CheckIPAddress", &Host::CheckIPAddress, address, code, processorMode);
}

int WatchedHandler::GetIPCount(int kind)
{
    return ask("GetIPCount", &Host::GetIPCount, kind);
}

void WatchedHandler::AddIPAddress(const QString& ip, const QString& name)
{
    ask("AddIPAddress", &Host::AddIPAddress, ip, name);
}

void WatchedHandler::SaveIPList()
{
    ask("SaveIPList", &Host::SaveIPList);
}

void WatchedHandler::RefreshIPList()
{
    ask("RefreshIPList", &Host::RefreshIPList);
}

void WatchedHandler::ModifyIPAddress(int row, const QString& ip, const QString& name)
{
    ask("ModifyIPAddress", &Host::ModifyIPAddress, row, ip, name);
}

bool WatchedHandler::IpListChanged(const QStringList& before, const QStringList& after)
{
    return ask("IpListChanged", &Host::IpListChanged, before, after);
}

int WatchedHandler::GetDeviceSetTexts(QStringList& texts)
{
    return ask("GetDeviceSetTexts", &Host::GetDeviceSetTexts, texts);
}

bool WatchedHandler::ShowProcessorMoreButton()
{
    return ask("ShowProcessorMoreButton", &Host::ShowProcessorMoreButton);
}

bool WatchedHandler::ShowNodeMoreButton()
{
    return ask("ShowNodeMoreButton", &Host::ShowNodeMoreButton);
}

QList<ProcessorNode> WatchedHandler::GetAllProcessorNodes()
{
    return ask("GetAllProcessorNodes", &Host::GetAllProcessorNodes);
}

QList<ProcessorGroupNode> WatchedHandler::GetAllGroupNodes()
{
    return ask("GetAllGroupNodes", &Host::GetAllGroupNodes);
}

ProcessorGroupNode WatchedHandler::GetGroupNode(const QUuid& id)
{
    return ask("GetGroupNode", &Host::GetGroupNode, id);
}

void WatchedHandler::AddProcessors(const QUuid& group, int count)
{
    ask("AddProcessors", &Host::AddProcessors, group, count);
}

void WatchedHandler::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    ask("AddProcessorsWithIps", &Host::AddProcessorsWithIps, group, addresses);
}

void WatchedHandler::DeleteProcessors(const QList<QUuid>& processors)
{
    ask("DeleteProcessors", &Host::DeleteProcessors, processors);
}

void WatchedHandler::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                       const QList<QUuid>& processors)
{
    ask("SetProcessorGroup", &Host::SetProcessorGroup, group, groupId, processors);
}

ProcessorNode WatchedHandler::GetProcessorNode(const QUuid& id)
{
    return ask("GetProcessorNode", &Host::GetProcessorNode, id);
}

bool WatchedHandler::CanRenameProcessor(const QUuid& id)
{
    return ask("CanRenameProcessor", &Host::CanRenameProcessor, id);
}

bool WatchedHandler::CanAddProcessors(const ProcessorNode& first)
{
    return ask("CanAddProcessors", &Host::CanAddProcessors, first);
}

bool WatchedHandler::IsAddProcessorsEnabled(const ProcessorNode& first)
{
    return ask("IsAddProcessorsEnabled", &Host::IsAddProcessorsEnabled, first);
}

bool WatchedHandler::RenameProcessor(const QUuid& id, const QString& name)
{
    return ask("RenameProcessor", &Host::RenameProcessor, id, name);
}

void WatchedHandler::SetNewProcessorOutputs(int outputs)
{
    ask("SetNewProcessorOutputs", &Host::SetNewProcessorOutputs, outputs);
}

QUuid WatchedHandler::CreateGroup(const ProcessorGroupNode& group)
{
    return ask("CreateGroup", &Host::CreateGroup, group);
}

void WatchedHandler::Ungroup(const QUuid& id)
{
    ask("Ungroup", &Host::Ungroup, id);
}

void WatchedHandler::RenameGroup(const QUuid& id, const QString& name)
{
    ask("RenameGroup", &Host::RenameGroup, id, name);
}

void WatchedHandler::ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                     const QList<SGroupSelection>& groups, const QUuid& previous)
{
    ask("ReportSelection", &Host::ReportSelection, focus, processors, groups, previous);
}

bool WatchedHandler::IsRestrictedMode()
{
    return ask("IsRestrictedMode", &Host::IsRestrictedMode);
}

bool WatchedHandler::IsDeleteBlocked(const QUuid& id)
{
    return ask("IsDeleteBlocked", &Host::IsDeleteBlocked, id);
}

bool WatchedHandler::CheckProcessor(const ProcessorNode& processor)
{
    return ask("CheckProcessor", &Host::CheckProcessor, processor);
}

bool WatchedHandler::UsesIpAddressing()
{
    return ask("UsesIpAddressing", &Host::UsesIpAddressing);
}

bool WatchedHandler::IsLanUsbMode()
{
    return ask("IsLanUsbMode", &Host::IsLanUsbMode);
}

QList<quint32> WatchedHandler::GetLanUsbProcessorIps()
{
    return ask("GetLanUsbProcessorIps", &Host::GetLanUsbProcessorIps);
}

int WatchedHandler::GetNameMaxBytes()
{
    return ask("GetNameMaxBytes", &Host::GetNameMaxBytes);
}

bool WatchedHandler::IsNameUtf8()
{
    return ask("IsNameUtf8", &Host::IsNameUtf8);
}

QUuid WatchedHandler::GetCurrentProcessorId()
{
    return ask("GetCurrentProcessorId", &Host::GetCurrentProcessorId);
}

quint32 WatchedHandler::ReadOnlineIPAddresses()
{
    return ask("ReadOnlineIPAddresses", &Host::ReadOnlineIPAddresses);
}

void WatchedHandler::GetIPNameLists(QStringList& ips, QStringList& names)
{
    ask("GetIPNameLists", &Host::GetIPNameLists, ips, names);
}

void WatchedHandler::GetIPList(QStringList& entries)
{
    ask("GetIPList", &Host::GetIPList, entries);
}

void WatchedHandler::ClearIPList()
{
    ask("ClearIPList", &Host::ClearIPList);
}

void WatchedHandler::DeleteIPAddress(quint32 networkAddress)
{
    ask("DeleteIPAddress", &Host::DeleteIPAddress, networkAddress);
}

quint32 WatchedHandler::ImportIPFile(const QString& path)
{
    return ask("ImportIPFile", &Host::ImportIPFile, path);
}

QString WatchedHandler::GetIPEntry(int row)
{
    return ask("GetIPEntry", &Host::GetIPEntry, row);
}

int WatchedHandler::GetFixedOutputCount()
{
    return ask("GetFixedOutputCount", &Host::GetFixedOutputCount);
}

int WatchedHandler::GetSelectionMode()
{
    return ask("GetSelectionMode", &Host::GetSelectionMode);
}

QList<QUuid> WatchedHandler::GetSelectedProcessors()
{
    return ask("GetSelectedProcessors", &Host::GetSelectedProcessors);
}

bool WatchedHandler::IsIpManagementAvailable()
{
    return ask("IsIpManagementAvailable", &Host::IsIpManagementAvailable);
}

void WatchedHandler::AddProcessorsFromIpList(const QUuid& group, const QStringList& entries)
{
    ask("AddProcessorsFromIpList", &Host::AddProcessorsFromIpList, group, entries);
}

void WatchedHandler::PreDeleteProcessors(const QList<QUuid>& processors)
{
    ask("PreDeleteProcessors", &Host::PreDeleteProcessors, processors);
}

bool WatchedHandler::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    return ask("AcceptProcessorForSnapshot", &Host::AcceptProcessorForSnapshot, processor);
}

void WatchedHandler::ShowTipMessage(const QString& text)
{
    ask("ShowTipMessage", &Host::ShowTipMessage, text);
}

bool WatchedHandler::IsFrontPanelHighlightAvailable()
{
    return ask("IsFrontPanelHighlightAvailable", &Host::IsFrontPanelHighlightAvailable);
}

bool WatchedHandler::IsFrontPanelHighlighted(const QUuid& id)
{
    return ask("IsFrontPanelHighlighted", &Host::IsFrontPanelHighlighted, id);
}

void WatchedHandler::SetFrontPanelHighlight(bool on)
{
    ask("SetFrontPanelHighlight", &Host::SetFrontPanelHighlight, on);
}
