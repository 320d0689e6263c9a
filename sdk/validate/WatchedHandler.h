#pragma once

#include "Interface/ObserverPattern"
#include "Interface/TargetSelectInterfaceHandler.h"
#include "sdk/validate/Test.h"

#include <functional>
#include <memory>
#include <mutex>

/// Stands before a handler: each call is noted, so that a crash or a hang in it is put down to it,
/// and a test may do something before a call is handed on, or hear of the events that the host
/// tells. Any thread.
class WatchedHandler final : public ITargetSelectInterfaceHandler
{
public:
    /// With `isNoted`, each call is written to the journal.
    WatchedHandler(std::shared_ptr<ITargetSelectInterfaceHandler> handler, bool isNoted);

    /// Is called with the name of each operation before it is handed on, on the thread that asks.
    /// GUI thread, before the panel is started.
    void setBefore(std::function<void(const char*)> before) { m_before = std::move(before); }

    /// Is called with each event before the panel gets it, on the thread that tells it.
    void setOnEvent(std::function<void(const CSubject&)> onEvent);

    /// Returns the panel's own observer, which events of a test go to.
    CObserver* panelObserver() const;

    void SetObserver(CObserver* observer) override;
    void AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                           QMenu* menu) override;
    quint32 DetectAllDevices() override;
    void DetectProcessorsOnly() override;
    QString GetDeviceSetText(const SDeviceSetInfo& set) override;
    bool ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index) override;
    bool CheckIPAddress(quint32 address, int* code, bool processorMode) override;
    int GetIPCount(int kind) override;
    void AddIPAddress(const QString& ip, const QString& name) override;
    void SaveIPList() override;
    void RefreshIPList() override;
    void ModifyIPAddress(int row, const QString& ip, const QString& name) override;
    bool IpListChanged(const QStringList& before, const QStringList& after) override;
    int GetDeviceSetTexts(QStringList& texts) override;
    bool ShowProcessorMoreButton() override;
    bool ShowNodeMoreButton() override;
    QList<ProcessorNode> GetAllProcessorNodes() override;
    QList<ProcessorGroupNode> GetAllGroupNodes() override;
    ProcessorGroupNode GetGroupNode(const QUuid& id) override;
    void AddProcessors(const QUuid& group, int count) override;
    void AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses) override;
    void DeleteProcessors(const QList<QUuid>& processors) override;
    void SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                           const QList<QUuid>& processors) override;
    ProcessorNode GetProcessorNode(const QUuid& id) override;
    bool CanRenameProcessor(const QUuid& id) override;
    bool CanAddProcessors(const ProcessorNode& first) override;
    bool IsAddProcessorsEnabled(const ProcessorNode& first) override;
    bool RenameProcessor(const QUuid& id, const QString& name) override;
    void SetNewProcessorOutputs(int outputs) override;
    QUuid CreateGroup(const ProcessorGroupNode& group) override;
    void Ungroup(const QUuid& id) override;
    void RenameGroup(const QUuid& id, const QString& name) override;
    void ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                         const QList<SGroupSelection>& groups, const QUuid& previous) override;
    bool IsRestrictedMode() override;
    bool IsDeleteBlocked(const QUuid& id) override;
    bool CheckProcessor(const ProcessorNode& processor) override;
    bool UsesIpAddressing() override;
    bool IsLanUsbMode() override;
    QList<quint32> GetLanUsbProcessorIps() override;
    int GetNameMaxBytes() override;
    bool IsNameUtf8() override;
    QUuid GetCurrentProcessorId() override;
    quint32 ReadOnlineIPAddresses() override;
    void GetIPNameLists(QStringList& ips, QStringList& names) override;
    void GetIPList(QStringList& entries) override;
    void ClearIPList() override;
    void DeleteIPAddress(quint32 networkAddress) override;
    quint32 ImportIPFile(const QString& path) override;
    QString GetIPEntry(int row) override;
    int GetFixedOutputCount() override;
    int GetSelectionMode() override;
    QList<QUuid> GetSelectedProcessors() override;
    bool IsIpManagementAvailable() override;
    void AddProcessorsFromIpList(const QUuid& group, const QStringList& entries) override;
    void PreDeleteProcessors(const QList<QUuid>& processors) override;
    bool AcceptProcessorForSnapshot(const ProcessorNode& processor) override;
    void ShowTipMessage(const QString& text) override;
    bool IsFrontPanelHighlightAvailable() override;
    bool IsFrontPanelHighlighted(const QUuid& id) override;
    void SetFrontPanelHighlight(bool on) override;

private:
    using Host = ITargetSelectInterfaceHandler;
    class Tap;

    template <typename Result, typename... Parameters, typename... Arguments>
    Result ask(const char* operation, Result (Host::*function)(Parameters...),
               Arguments&&... arguments);

    const std::shared_ptr<Host> m_handler;
    const bool m_isNoted;
    std::function<void(const char*)> m_before;
    Tap* const m_tap; // lives until the process ends, as the host may keep it
};
