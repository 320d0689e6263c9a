#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"
#include "host/workbench/addresses/IpList.h"
#include "host/workbench/addresses/PcNetworkReader.h"
#include "host/workbench/handler/CallTrace.h"
#include "host/workbench/network/DeviceNetwork.h"

#include <QObject>

#include <functional>
#include <mutex>

class Notifier;
class ProjectStore;

/// The handler of the host: answers the questions of the panel from the project and carries out its
/// requests. Adds every call to the log.
///
/// Thread-safe. Holds no lock while events are raised. The arguments of the constructor must
/// outlive it.
class WorkbenchHandler final : public ITargetSelectInterfaceHandler
{
public:
    /// `network` reads the network of the PC.
    WorkbenchHandler(ProjectStore& store, Notifier& notifier, TraceModel& trace,
                     PcNetworkCache::Reader network = readPcNetwork);

    /// Shows a notice of the panel. Set before the panel is initialised; called on the GUI thread.
    std::function<void(const QString&)> showTip;

    /// Filters the log by these words. Set and called like showTip.
    std::function<void(const QString&)> showInLog;

    /// Shows the progress of a detection, which is finished when both numbers are equal. Set and
    /// called like showTip.
    std::function<void(int done, int total)> showProgress;

    /// Shows that a detection has ended early. Set and called like showTip.
    std::function<void(int found)> showCancelled;

    /// Ends the detection in progress, if there is one and it waits for something. GUI thread.
    void cancelDetection();
    bool isDetecting() const { return m_detecting; }

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
    /// The state that calls of the panel set for later calls.
    struct Session
    {
        QList<QUuid> selected;
        int selectedIn = 0; ///< The number of the project that `selected` is about.
        QUuid frontPanel;   ///< The row of the last IsFrontPanelHighlighted().
        QList<QUuid> announcedDeletion;
        QList<QUuid> addedByCount; ///< Processors that SetNewProcessorOutputs() applies to.
    };

    template <typename Ask>
    auto ask(const Ask& question) const;
    DetectionEnd detect();
    DetectionEnd detectInProject();
    DetectionEnd detectOnNetwork();
    void pauseDetection(int milliseconds);
    void edit(const char* function, const std::function<void()>& change);
    void carryOut(const char* function, const std::function<void()>& change);
    void addWithAddresses(const char* function, const QUuid& group,
                          const QList<quint32>& addresses);
    void changeIpList(const char* function, const QString& what,
                      const std::function<IpRefusal(IpList&)>& change);

    ProjectStore& m_store;
    Notifier& m_notifier;
    CallTrace m_trace;
    PcNetworkCache m_network; // GUI thread
    std::mutex m_mutex;
    Session m_session;                // guarded by m_mutex
    DeviceNetwork m_devices{m_store}; // GUI thread
    bool m_detecting = false;         // GUI thread
    bool m_cancelled = false;         // GUI thread; the detection in progress
    QObject m_later;                  // the context of delayed calls
};
