#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"
#include "benchmarks/support/Project.h"

/// A host that hands out the lists it was built with and refuses everything else, so that a figure
/// holds next to nothing of the host.
class StoredHandler : public ITargetSelectInterfaceHandler
{
public:
    explicit StoredHandler(Project project = {})
        : m_project(std::move(project))
    {
    }

    const Project& project() const { return m_project; }
    void setProject(const Project& project) { m_project = project; }

    /// The panel's observer, once it has registered.
    CObserver* observer() const { return m_observer; }

    /// Processors in all selections and all new memberships told of so far.
    qint64 reportedProcessors() const { return m_reportedProcessors; }
    qint64 regroupedProcessors() const { return m_regroupedProcessors; }

    void SetObserver(CObserver* observer) override { m_observer = observer; }
    void AppendContextMenu(EPrcTreeNodeType, const QUuid&, bool, QMenu*) override {}
    quint32 DetectAllDevices() override { return 0; }
    void DetectProcessorsOnly() override {}
    QString GetDeviceSetText(const SDeviceSetInfo&) override { return {}; }
    bool ConfirmDeviceSetChange(const SDeviceSetInfo&, int) override { return false; }
    bool CheckIPAddress(quint32, int*, bool) override { return false; }
    int GetIPCount(int) override { return 0; }
    void AddIPAddress(const QString&, const QString&) override {}
    void SaveIPList() override {}
    void RefreshIPList() override {}
    void ModifyIPAddress(int, const QString&, const QString&) override {}
    bool IpListChanged(const QStringList&, const QStringList&) override { return false; }
    int GetDeviceSetTexts(QStringList&) override { return 0; }
    bool ShowProcessorMoreButton() override { return false; }
    bool ShowNodeMoreButton() override { return false; }
    QList<ProcessorNode> GetAllProcessorNodes() override { return m_project.processors; }
    QList<ProcessorGroupNode> GetAllGroupNodes() override { return m_project.groups; }
    ProcessorGroupNode GetGroupNode(const QUuid&) override { return {}; }
    void AddProcessors(const QUuid&, int) override {}
    void AddProcessorsWithIps(const QUuid&, const QList<quint32>&) override {}
    void DeleteProcessors(const QList<QUuid>&) override {}
    void SetProcessorGroup(const ProcessorGroupNode&, const QUuid&,
                           const QList<QUuid>& processors) override
    {
        m_regroupedProcessors += processors.size();
    }
    ProcessorNode GetProcessorNode(const QUuid&) override { return {}; }
    bool CanRenameProcessor(const QUuid&) override { return false; }
    bool CanAddProcessors(const ProcessorNode&) override { return false; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return false; }
    bool RenameProcessor(const QUuid&, const QString&) override { return false; }
    void SetNewProcessorOutputs(int) override {}
    QUuid CreateGroup(const ProcessorGroupNode&) override { return {}; }
    void Ungroup(const QUuid&) override {}
    void RenameGroup(const QUuid&, const QString&) override {}
    void ReportSelection(const QUuid&, const QList<QUuid>& processors,
                         const QList<SGroupSelection>&, const QUuid&) override
    {
        m_reportedProcessors += processors.size();
    }
    bool IsRestrictedMode() override { return false; }
    bool IsDeleteBlocked(const QUuid&) override { return false; }
    bool CheckProcessor(const ProcessorNode&) override { return false; }
    bool UsesIpAddressing() override { return false; }
    bool IsLanUsbMode() override { return false; }
    QList<quint32> GetLanUsbProcessorIps() override { return {}; }
    int GetNameMaxBytes() override { return 0; }
    bool IsNameUtf8() override { return true; }
    QUuid GetCurrentProcessorId() override { return {}; }
    quint32 ReadOnlineIPAddresses() override { return 0; }
    void GetIPNameLists(QStringList&, QStringList&) override {}
    void GetIPList(QStringList&) override {}
    void ClearIPList() override {}
    void DeleteIPAddress(quint32) override {}
    quint32 ImportIPFile(const QString&) override { return 0; }
    QString GetIPEntry(int) override { return {}; }
    int GetFixedOutputCount() override { return 0; }
    int GetSelectionMode() override { return 0; }
    QList<QUuid> GetSelectedProcessors() override { return {}; }
    bool IsIpManagementAvailable() override { return false; }
    void AddProcessorsFromIpList(const QUuid&, const QStringList&) override {}
    void PreDeleteProcessors(const QList<QUuid>&) override {}
    bool AcceptProcessorForSnapshot(const ProcessorNode&) override { return true; }
    void ShowTipMessage(const QString&) override {}
    bool IsFrontPanelHighlightAvailable() override { return false; }
    bool IsFrontPanelHighlighted(const QUuid&) override { return false; }
    void SetFrontPanelHighlight(bool) override {}

private:
    Project m_project;
    qint64 m_reportedProcessors = 0;
    qint64 m_regroupedProcessors = 0;
    CObserver* m_observer = nullptr; // the panel's, lives as long as the process
};
