#pragma once

#include "Interface/AbstractControlInterface.h"
#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

class QMenu;

/// A selected group, as ReportSelection names it.
struct SGroupSelection
{
    QUuid id;                ///< The group.
    QList<QUuid> processors; ///< All processors in it.
};

/// Everything the panel asks of its host. The host implements it, wraps it in a
/// std::shared_ptr<IAbstractControlInterface> and assigns that to the layer's m_controlHandler.
///
/// Threads: GUI thread, except GetGroupNode, GetProcessorNode and GetCurrentProcessorId, which are
/// also asked on the thread that delivers a host event, and GetProcessorNode, which is also asked
/// on the panel's work thread. No lock of the panel keeps the GUI thread waiting during any of
/// these calls.
///
/// Refusals are the bool and code answers below; nothing may be thrown. Addresses are IPv4 in host
/// byte order unless said otherwise. Codes are 0 for success. An IP list entry is the dotted
/// address directly followed by the entry's name in parentheses: "192.168.0.10(Left wing)".
///
/// The order of the operations is binary contract: a host may add its own only behind the last.
class ITargetSelectInterfaceHandler : public IAbstractControlInterface
{
public:
    /// Registers the panel's observer. `observer` is not owned; it stays valid.
    void SetObserver(CObserver* observer) override = 0;

    /// The host may add entries of its own to `menu`, a context menu being built for row `id`.
    virtual void AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                   QMenu* menu) = 0;

    /// Starts a detection of all devices; the code is passed back unchanged.
    virtual quint32 DetectAllDevices() = 0;

    /// Starts a detection of processors only.
    virtual void DetectProcessorsOnly() = 0;

    /// Display text of one device set.
    virtual QString GetDeviceSetText(const SDeviceSetInfo& set) = 0;

    /// The user chose `set`, entry `index` of the selector; false refuses and the choice is undone.
    virtual bool ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index) = 0;

    /// True rejects `address`; `code`, which may be null, then says why. `processorMode` is set
    /// when the address is meant for a new processor, not for the IP list.
    virtual bool CheckIPAddress(quint32 address, int* code, bool processorMode) = 0;

    /// Number of entries in the IP list. `kind` is 0.
    virtual int GetIPCount(int kind) = 0;

    /// Appends an entry to the IP list.
    virtual void AddIPAddress(const QString& ip, const QString& name) = 0;

    /// Commits the IP list.
    virtual void SaveIPList() = 0;

    /// Brings the host's IP list up to date before the panel reads it.
    virtual void RefreshIPList() = 0;

    /// Replaces the entry at `row`.
    virtual void ModifyIPAddress(int row, const QString& ip, const QString& name) = 0;

    /// The IP list as it was `before` and is `after` the management dialog; true asks for a new
    /// detection.
    virtual bool IpListChanged(const QStringList& before, const QStringList& after) = 0;

    /// Fills `texts` with the texts of all device sets in selector order and returns their number.
    virtual int GetDeviceSetTexts(QStringList& texts) = 0;

    /// Whether processor rows show the "More" button.
    virtual bool ShowProcessorMoreButton() = 0;

    /// Whether the other rows show the "More" button.
    virtual bool ShowNodeMoreButton() = 0;

    /// The project's processors in host order.
    virtual QList<ProcessorNode> GetAllProcessorNodes() = 0;

    /// The project's groups in host order.
    virtual QList<ProcessorGroupNode> GetAllGroupNodes() = 0;

    /// One group's record. Also asked on the notifying thread.
    virtual ProcessorGroupNode GetGroupNode(const QUuid& id) = 0;

    /// Adds `count` processors without addresses to `group`; a null group is the root.
    virtual void AddProcessors(const QUuid& group, int count) = 0;

    /// Adds one processor per address to `group`; a null group is the root.
    virtual void AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses) = 0;

    /// Deletes processors.
    virtual void DeleteProcessors(const QList<QUuid>& processors) = 0;

    /// Stores new membership after a move: `processors` now belong to `group`. For the root,
    /// `groupId` is null and `group` default-constructed.
    virtual void SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                   const QList<QUuid>& processors) = 0;

    /// One processor's record. Also asked on the notifying thread and on the panel's work thread.
    virtual ProcessorNode GetProcessorNode(const QUuid& id) = 0;

    /// Whether the processor may be renamed.
    virtual bool CanRenameProcessor(const QUuid& id) = 0;

    /// Whether processors can be added; `first` is the first listed processor.
    virtual bool CanAddProcessors(const ProcessorNode& first) = 0;

    /// Whether the entries that add processors are enabled; `first` as above.
    virtual bool IsAddProcessorsEnabled(const ProcessorNode& first) = 0;

    /// Renames a processor; false refuses the name.
    virtual bool RenameProcessor(const QUuid& id, const QString& name) = 0;

    /// Output count for the processors added next.
    virtual void SetNewProcessorOutputs(int outputs) = 0;

    /// Creates a group from `group` and returns its identity.
    virtual QUuid CreateGroup(const ProcessorGroupNode& group) = 0;

    /// Dissolves a group; its processors stay.
    virtual void Ungroup(const QUuid& id) = 0;

    /// Renames a group.
    virtual void RenameGroup(const QUuid& id, const QString& name) = 0;

    /// The user's selection changed: `focus` is the last selected row from the top, `processors`
    /// all selected ones, `groups` all selected groups, `previous` the processor that was current
    /// before the current one.
    virtual void ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                 const QList<SGroupSelection>& groups, const QUuid& previous) = 0;

    /// When true, "Processors only" detects everything, drags are refused and the menu of several
    /// selected rows stays closed.
    virtual bool IsRestrictedMode() = 0;

    /// Vetoes "Delete" for one processor in the menu of several selected rows.
    virtual bool IsDeleteBlocked(const QUuid& id) = 0;

    /// The answer behind HostCheckRole, asked anew at every read.
    virtual bool CheckProcessor(const ProcessorNode& processor) = 0;

    /// Whether new processors are given IP addresses; otherwise they are added by count.
    virtual bool UsesIpAddressing() = 0;

    /// Whether the "Processor1 IP:" line is shown and adding leaves the IP list alone.
    virtual bool IsLanUsbMode() = 0;

    /// Addresses for the "Processor1 IP:" line.
    virtual QList<quint32> GetLanUsbProcessorIps() = 0;

    /// Limit of a name, in encoded bytes.
    virtual int GetNameMaxBytes() = 0;

    /// Whether names are encoded as UTF-8; otherwise as GBK.
    virtual bool IsNameUtf8() = 0;

    /// The host's current processor. Asked on the notifying thread.
    virtual QUuid GetCurrentProcessorId() = 0;

    /// Merges the online processors' addresses into the IP list.
    virtual quint32 ReadOnlineIPAddresses() = 0;

    /// The IP list as two parallel lists.
    virtual void GetIPNameLists(QStringList& ips, QStringList& names) = 0;

    /// The IP list as entries.
    virtual void GetIPList(QStringList& entries) = 0;

    /// Empties the IP list.
    virtual void ClearIPList() = 0;

    /// Removes the entry with this address, given in network byte order.
    virtual void DeleteIPAddress(quint32 networkAddress) = 0;

    /// Reads the address file at `path` and merges it into the IP list.
    virtual quint32 ImportIPFile(const QString& path) = 0;

    /// Entry `row` of the IP list.
    virtual QString GetIPEntry(int row) = 0;

    /// A positive value fixes the output count of new processors.
    virtual int GetFixedOutputCount() = 0;

    /// 2 is multi-selection.
    virtual int GetSelectionMode() = 0;

    /// The host's multi-selection.
    virtual QList<QUuid> GetSelectedProcessors() = 0;

    /// Shows the "IP address management..." button, steers adding to the IP list, and asks for
    /// PreDeleteProcessors before a delete.
    virtual bool IsIpManagementAvailable() = 0;

    /// Adds processors to `group` for entries picked from the IP list.
    virtual void AddProcessorsFromIpList(const QUuid& group, const QStringList& entries) = 0;

    /// Announced before DeleteProcessors when IsIpManagementAvailable answers true.
    virtual void PreDeleteProcessors(const QList<QUuid>& processors) = 0;

    /// Filter of ITargetSelectAreaInterface::GetProcessorTree. The tree is not locked meanwhile:
    /// the host may raise events in here and wait for them, on any thread.
    virtual bool AcceptProcessorForSnapshot(const ProcessorNode& processor) = 0;

    /// The host shows a passing notice.
    virtual void ShowTipMessage(const QString& text) = 0;

    /// Whether the front-panel entry is offered.
    virtual bool IsFrontPanelHighlightAvailable() = 0;

    /// Whether the front panel of `id` is lit.
    virtual bool IsFrontPanelHighlighted(const QUuid& id) = 0;

    /// Lights or darkens the clicked processor's front panel.
    virtual void SetFrontPanelHighlight(bool on) = 0;
};
