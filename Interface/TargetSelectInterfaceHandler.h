#pragma once

#include "Interface/AbstractControlInterface.h"
#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

class QMenu;

/// A selected group, as passed to ReportSelection.
struct SGroupSelection
{
    QUuid id;                ///< The group.
    QList<QUuid> processors; ///< All processors of the group.
};

/// All calls from the panel to its host. The host implements it, wraps it in a
/// std::shared_ptr<IAbstractControlInterface> and assigns that to the layer's m_controlHandler.
///
/// Threads: GUI thread. GetGroupNode, GetProcessorNode and GetCurrentProcessorId are also called on
/// the thread that delivers a host event, and GetProcessorNode on the panel's work thread. The
/// panel does not block the GUI thread with a lock during these calls.
///
/// Operations must not throw; they refuse by their result. Addresses are IPv4 in host byte order
/// unless stated otherwise. Codes are 0 for success. An IP list entry is a dotted address directly
/// followed by a name in parentheses: "192.168.0.10(Left wing)".
///
/// The order of the operations is part of the binary contract: a host may add operations only after
/// the last one.
class ITargetSelectInterfaceHandler : public IAbstractControlInterface
{
public:
    /// Registers the panel's observer. `observer` is not owned and stays valid.
    void SetObserver(CObserver* observer) override = 0;

    /// Lets the host add entries to `menu`, a context menu of row `id` that is being built.
    virtual void AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                   QMenu* menu) = 0;

    /// Starts a detection of all devices. Returns a status code, which the panel passes on
    /// unchanged.
    virtual quint32 DetectAllDevices() = 0;

    /// Starts a detection of processors only.
    virtual void DetectProcessorsOnly() = 0;

    /// Returns the display text of a device set.
    virtual QString GetDeviceSetText(const SDeviceSetInfo& set) = 0;

    /// Called when the user chose `set`, entry `index` of the selector. Returning false undoes the
    /// choice.
    virtual bool ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index) = 0;

    /// Returns true if `address` is rejected, and stores the reason in `code` unless it is null.
    /// `processorMode` is true for the address of a new processor, false for an entry of the IP
    /// list.
    virtual bool CheckIPAddress(quint32 address, int* code, bool processorMode) = 0;

    /// Returns the number of entries in the IP list. `kind` is always 0.
    virtual int GetIPCount(int kind) = 0;

    /// Appends an entry to the IP list.
    virtual void AddIPAddress(const QString& ip, const QString& name) = 0;

    /// Saves the IP list.
    virtual void SaveIPList() = 0;

    /// Updates the host's IP list before the panel reads it.
    virtual void RefreshIPList() = 0;

    /// Replaces the entry at `row`.
    virtual void ModifyIPAddress(int row, const QString& ip, const QString& name) = 0;

    /// Called after the management dialog with the IP list `before` and `after` it. Returning true
    /// starts a detection.
    virtual bool IpListChanged(const QStringList& before, const QStringList& after) = 0;

    /// Stores the texts of all device sets in `texts`, in selector order, and returns their number.
    virtual int GetDeviceSetTexts(QStringList& texts) = 0;

    /// Returns whether processor rows show the "More" button.
    virtual bool ShowProcessorMoreButton() = 0;

    /// Returns whether other rows show the "More" button.
    virtual bool ShowNodeMoreButton() = 0;

    /// Returns the project's processors in the host's order.
    virtual QList<ProcessorNode> GetAllProcessorNodes() = 0;

    /// Returns the project's groups in the host's order.
    virtual QList<ProcessorGroupNode> GetAllGroupNodes() = 0;

    /// Returns the record of a group. Also called on the notifying thread.
    virtual ProcessorGroupNode GetGroupNode(const QUuid& id) = 0;

    /// Adds `count` processors without addresses to `group`; a null group is the root.
    virtual void AddProcessors(const QUuid& group, int count) = 0;

    /// Adds one processor per address to `group`; a null group is the root.
    virtual void AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses) = 0;

    /// Deletes processors.
    virtual void DeleteProcessors(const QList<QUuid>& processors) = 0;

    /// Stores that `processors` were moved to `group`. For the root, `groupId` is null and `group`
    /// default-constructed.
    virtual void SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                   const QList<QUuid>& processors) = 0;

    /// Returns the record of a processor. Also called on the notifying thread and on the panel's
    /// work thread.
    virtual ProcessorNode GetProcessorNode(const QUuid& id) = 0;

    /// Returns whether the processor may be renamed.
    virtual bool CanRenameProcessor(const QUuid& id) = 0;

    /// Returns whether the menus offer to add processors. `first` is the first processor of the
    /// project.
    virtual bool CanAddProcessors(const ProcessorNode& first) = 0;

    /// Returns whether the menu entries that add processors are enabled. `first` as above.
    virtual bool IsAddProcessorsEnabled(const ProcessorNode& first) = 0;

    /// Renames a processor. Returns false to refuse the name.
    virtual bool RenameProcessor(const QUuid& id, const QString& name) = 0;

    /// Sets the number of outputs of the processors that are added next.
    virtual void SetNewProcessorOutputs(int outputs) = 0;

    /// Creates a group from `group` and returns its identity.
    virtual QUuid CreateGroup(const ProcessorGroupNode& group) = 0;

    /// Dissolves a group and keeps its processors.
    virtual void Ungroup(const QUuid& id) = 0;

    /// Renames a group.
    virtual void RenameGroup(const QUuid& id, const QString& name) = 0;

    /// Called when the user has changed the selection. `focus` is the lowest selected row,
    /// `processors` all selected processors, `groups` all selected groups, and `previous` the
    /// processor that was current before.
    virtual void ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                 const QList<SGroupSelection>& groups, const QUuid& previous) = 0;

    /// Returns whether the restricted mode is on. In this mode "Processors only" detects all
    /// devices, drags are refused, and several selected rows have no menu.
    virtual bool IsRestrictedMode() = 0;

    /// Returns whether a processor disables "Delete" in the menu of several selected rows.
    virtual bool IsDeleteBlocked(const QUuid& id) = 0;

    /// Returns the value of HostCheckRole. Called for each read of the role.
    virtual bool CheckProcessor(const ProcessorNode& processor) = 0;

    /// Returns whether new processors get IP addresses. Otherwise they are added by count.
    virtual bool UsesIpAddressing() = 0;

    /// Returns whether the "Processor1 IP:" line is shown and adding processors does not use the IP
    /// list.
    virtual bool IsLanUsbMode() = 0;

    /// Returns the addresses for the "Processor1 IP:" line.
    virtual QList<quint32> GetLanUsbProcessorIps() = 0;

    /// Returns the maximum length of a name, in encoded bytes.
    virtual int GetNameMaxBytes() = 0;

    /// Returns whether names are encoded as UTF-8. Otherwise they are encoded as GBK.
    virtual bool IsNameUtf8() = 0;

    /// Returns the host's current processor. Also called on the notifying thread.
    virtual QUuid GetCurrentProcessorId() = 0;

    /// Merges the addresses of the online processors into the IP list. Returns 0 or an
    /// IPListResult.
    virtual quint32 ReadOnlineIPAddresses() = 0;

    /// Returns the IP list as two parallel lists.
    virtual void GetIPNameLists(QStringList& ips, QStringList& names) = 0;

    /// Returns the IP list as entries.
    virtual void GetIPList(QStringList& entries) = 0;

    /// Removes all entries of the IP list.
    virtual void ClearIPList() = 0;

    /// Removes the entry with this address, which is in network byte order.
    virtual void DeleteIPAddress(quint32 networkAddress) = 0;

    /// Merges the address file at `path` into the IP list. Returns 0 or an IPListResult.
    virtual quint32 ImportIPFile(const QString& path) = 0;

    /// Returns entry `row` of the IP list.
    virtual QString GetIPEntry(int row) = 0;

    /// Returns the number of outputs of new processors if the host fixes it, otherwise 0 or less.
    virtual int GetFixedOutputCount() = 0;

    /// Returns the selection mode; 2 is multi-selection.
    virtual int GetSelectionMode() = 0;

    /// Returns the host's multi-selection.
    virtual QList<QUuid> GetSelectedProcessors() = 0;

    /// Returns whether the IP list can be managed. If so, the panel shows the "IP address
    /// management..." button, adds processors from the IP list, and calls PreDeleteProcessors
    /// before a deletion.
    virtual bool IsIpManagementAvailable() = 0;

    /// Adds processors to `group` for the chosen entries of the IP list.
    virtual void AddProcessorsFromIpList(const QUuid& group, const QStringList& entries) = 0;

    /// Called before DeleteProcessors if IsIpManagementAvailable returns true.
    virtual void PreDeleteProcessors(const QList<QUuid>& processors) = 0;

    /// Returns whether ITargetSelectAreaInterface::GetProcessorTree includes a processor. The panel
    /// holds no lock during the call, so the host may raise events on any thread and wait for them.
    virtual bool AcceptProcessorForSnapshot(const ProcessorNode& processor) = 0;

    /// Shows a passing notice in the host.
    virtual void ShowTipMessage(const QString& text) = 0;

    /// Returns whether the front-panel entry is offered.
    virtual bool IsFrontPanelHighlightAvailable() = 0;

    /// Returns whether the front panel of `id` is highlighted.
    virtual bool IsFrontPanelHighlighted(const QUuid& id) = 0;

    /// Switches the highlight of the clicked processor's front panel.
    virtual void SetFrontPanelHighlight(bool on) = 0;
};
