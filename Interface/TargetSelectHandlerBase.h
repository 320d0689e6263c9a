#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"

#include <mutex>
#include <set>
#include <string_view>

/// A handler for a host that grows: it has an answer to every question and ignores every request,
/// so that a host overrides only the operations that it has something to say to.
///
/// SetObserver, GetAllGroupNodes, GetAllProcessorNodes, GetGroupNode and GetProcessorNode make the
/// panel show the host's project and follow it; call ITargetSelectAreaInterface::SetReadOnly() as
/// long as the requests that change the project are not overridden.
///
/// The first call of each operation that is not overridden appends a record to the host's log. It
/// names the operation and what the panel got, once in the life of the handler. An empty log after
/// a day's work means that the host relies on nothing in here.
///
/// Threads: as ITargetSelectInterfaceHandler; the operations of this class itself are thread-safe.
/// Link to the package's target TargetSelectArea::HandlerBase.
class CTargetSelectHandlerBase : public ITargetSelectInterfaceHandler
{
public:
    CTargetSelectHandlerBase();
    ~CTargetSelectHandlerBase() override;
    CTargetSelectHandlerBase(const CTargetSelectHandlerBase&) = delete;
    CTargetSelectHandlerBase& operator=(const CTargetSelectHandlerBase&) = delete;

    /// @name Events
    /// The observer is dropped: the panel hears of no change and keeps what it read last.
    /// @{
    void SetObserver(CObserver* observer) override;
    /// @}

    /// @name Records
    /// There are none: the tree is empty, and a processor or group that an event names gets no row.
    /// No processor is the current one. A snapshot leaves out nothing.
    /// @{
    QList<ProcessorNode> GetAllProcessorNodes() override;
    QList<ProcessorGroupNode> GetAllGroupNodes() override;
    ProcessorNode GetProcessorNode(const QUuid& id) override;
    ProcessorGroupNode GetGroupNode(const QUuid& id) override;
    QUuid GetCurrentProcessorId() override;
    bool AcceptProcessorForSnapshot(const ProcessorNode& processor) override;
    bool CheckProcessor(const ProcessorNode& processor) override;
    /// @}

    /// @name Rows and their menus
    /// Rows have no "More" button; the Menu key still opens the menus. The host adds no entries to
    /// them, and the front panel's entry is not offered.
    /// @{
    bool ShowProcessorMoreButton() override;
    bool ShowNodeMoreButton() override;
    void AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                           QMenu* menu) override;
    bool IsFrontPanelHighlightAvailable() override;
    bool IsFrontPanelHighlighted(const QUuid& id) override;
    void SetFrontPanelHighlight(bool on) override;
    /// @}

    /// @name Selection
    /// The user's choice is reported to nobody. The host has no multi-selection of its own.
    /// @{
    void ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                         const QList<SGroupSelection>& groups, const QUuid& previous) override;
    int GetSelectionMode() override;
    QList<QUuid> GetSelectedProcessors() override;
    /// @}

    /// @name Adding processors
    /// Adding is not offered, except in an empty project, where the panel does not ask. A request
    /// adds nothing. New processors have no addresses and no fixed number of outputs.
    /// @{
    bool CanAddProcessors(const ProcessorNode& first) override;
    bool IsAddProcessorsEnabled(const ProcessorNode& first) override;
    bool UsesIpAddressing() override;
    int GetFixedOutputCount() override;
    void SetNewProcessorOutputs(int outputs) override;
    void AddProcessors(const QUuid& group, int count) override;
    void AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses) override;
    void AddProcessorsFromIpList(const QUuid& group, const QStringList& entries) override;
    /// @}

    /// @name Deleting processors
    /// A request deletes nothing, and no processor blocks one.
    /// @{
    bool IsDeleteBlocked(const QUuid& id) override;
    void PreDeleteProcessors(const QList<QUuid>& processors) override;
    void DeleteProcessors(const QList<QUuid>& processors) override;
    /// @}

    /// @name Groups
    /// No group is created. The panel shows a move, an ungrouping and a group's new name at once
    /// and cannot be refused, so the tree is ahead of the host until the next TreeReset event.
    /// @{
    QUuid CreateGroup(const ProcessorGroupNode& group) override;
    void Ungroup(const QUuid& id) override;
    void RenameGroup(const QUuid& id, const QString& name) override;
    void SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                           const QList<QUuid>& processors) override;
    bool IsRestrictedMode() override;
    /// @}

    /// @name Names of processors
    /// Every new name is refused, and the row keeps its own. Names are UTF-8 of any length.
    /// @{
    bool CanRenameProcessor(const QUuid& id) override;
    bool RenameProcessor(const QUuid& id, const QString& name) override;
    int GetNameMaxBytes() override;
    bool IsNameUtf8() override;
    /// @}

    /// @name Detection and device sets
    /// A detection finds nothing and reports success. A device set has no text, and the selector
    /// returns to the set that it showed before.
    /// @{
    quint32 DetectAllDevices() override;
    void DetectProcessorsOnly() override;
    QString GetDeviceSetText(const SDeviceSetInfo& set) override;
    int GetDeviceSetTexts(QStringList& texts) override;
    bool ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index) override;
    bool IsLanUsbMode() override;
    QList<quint32> GetLanUsbProcessorIps() override;
    /// @}

    /// @name IP list
    /// The list is empty and stays so, and its management is not offered. No address is rejected,
    /// and neither the online processors nor a file have any.
    /// @{
    bool IsIpManagementAvailable() override;
    int GetIPCount(int kind) override;
    QString GetIPEntry(int row) override;
    void GetIPList(QStringList& entries) override;
    void GetIPNameLists(QStringList& ips, QStringList& names) override;
    bool CheckIPAddress(quint32 address, int* code, bool processorMode) override;
    void AddIPAddress(const QString& ip, const QString& name) override;
    void ModifyIPAddress(int row, const QString& ip, const QString& name) override;
    void DeleteIPAddress(quint32 networkAddress) override;
    void ClearIPList() override;
    void SaveIPList() override;
    void RefreshIPList() override;
    quint32 ReadOnlineIPAddresses() override;
    quint32 ImportIPFile(const QString& path) override;
    bool IpListChanged(const QStringList& before, const QStringList& after) override;
    /// @}

    /// @name Notices
    /// A passing notice is shown nowhere.
    /// @{
    void ShowTipMessage(const QString& text) override;
    /// @}

private:
    void note(const char* operation, int line, const char* outcome);

    std::mutex m_mutex;
    std::set<std::string_view> m_noted; // guarded by m_mutex; names of operations
};
