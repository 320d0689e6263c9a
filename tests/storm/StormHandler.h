#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"
#include "tests/storm/StormProject.h"

#include <mutex>
#include <optional>

class StormHost;

/// A handler of the storm's host, which replaces its handlers now and then. A replaced handler
/// answers with the project at the time of its replacement.
class StormHandler final : public ITargetSelectInterfaceHandler
{
public:
    explicit StormHandler(StormHost& host)
        : m_host(host)
    {
    }

    void retire();

    void SetObserver(CObserver* observer) override;
    void AppendContextMenu(EPrcTreeNodeType, const QUuid&, bool, QMenu*) override {}
    quint32 DetectAllDevices() override { return 0; }
    void DetectProcessorsOnly() override {}
    QString GetDeviceSetText(const SDeviceSetInfo& set) override;
    bool ConfirmDeviceSetChange(const SDeviceSetInfo&, int) override { return true; }
    bool CheckIPAddress(quint32, int*, bool) override { return false; }
    int GetIPCount(int) override { return 2; }
    void AddIPAddress(const QString&, const QString&) override {}
    void SaveIPList() override {}
    void RefreshIPList() override {}
    void ModifyIPAddress(int, const QString&, const QString&) override {}
    bool IpListChanged(const QStringList&, const QStringList&) override { return false; }
    int GetDeviceSetTexts(QStringList& texts) override;
    bool ShowProcessorMoreButton() override;
    bool ShowNodeMoreButton() override;
    QList<ProcessorNode> GetAllProcessorNodes() override;
    QList<ProcessorGroupNode> GetAllGroupNodes() override;
    ProcessorGroupNode GetGroupNode(const QUuid& id) override;
    void AddProcessors(const QUuid&, int) override {}
    void AddProcessorsWithIps(const QUuid&, const QList<quint32>&) override {}
    void DeleteProcessors(const QList<QUuid>& ids) override;
    void SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                           const QList<QUuid>& ids) override;
    ProcessorNode GetProcessorNode(const QUuid& id) override;
    bool CanRenameProcessor(const QUuid&) override { return true; }
    bool CanAddProcessors(const ProcessorNode&) override { return true; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return true; }
    bool RenameProcessor(const QUuid& id, const QString& name) override;
    void SetNewProcessorOutputs(int) override {}
    QUuid CreateGroup(const ProcessorGroupNode&) override { return {}; }
    void Ungroup(const QUuid& id) override;
    void RenameGroup(const QUuid& id, const QString& name) override;
    void ReportSelection(const QUuid& focus, const QList<QUuid>& ids,
                         const QList<SGroupSelection>& groups, const QUuid& previous) override;
    bool IsRestrictedMode() override { return false; }
    bool IsDeleteBlocked(const QUuid&) override { return false; }
    bool CheckProcessor(const ProcessorNode& processor) override;
    bool UsesIpAddressing() override { return true; }
    bool IsLanUsbMode() override;
    QList<quint32> GetLanUsbProcessorIps() override;
    int GetNameMaxBytes() override { return 64; }
    bool IsNameUtf8() override { return true; }
    QUuid GetCurrentProcessorId() override;
    quint32 ReadOnlineIPAddresses() override { return 0; }
    void GetIPNameLists(QStringList& ips, QStringList& names) override;
    void GetIPList(QStringList& entries) override;
    void ClearIPList() override {}
    void DeleteIPAddress(quint32) override {}
    quint32 ImportIPFile(const QString&) override { return 0; }
    QString GetIPEntry(int) override { return QStringLiteral("10.0.0.1(One)"); }
    int GetFixedOutputCount() override { return 0; }
    int GetSelectionMode() override;
    QList<QUuid> GetSelectedProcessors() override;
    bool IsIpManagementAvailable() override;
    void AddProcessorsFromIpList(const QUuid&, const QStringList&) override {}
    void PreDeleteProcessors(const QList<QUuid>&) override {}
    bool AcceptProcessorForSnapshot(const ProcessorNode& processor) override;
    void ShowTipMessage(const QString&) override {}
    bool IsFrontPanelHighlightAvailable() override { return false; }
    bool IsFrontPanelHighlighted(const QUuid&) override { return false; }
    void SetFrontPanelHighlight(bool) override {}

private:
    template <typename Answer>
    auto answer(const char* question, Answer&& compute);
    StormProject::State state() const;

    StormHost& m_host;
    mutable std::mutex m_mutex;
    std::optional<StormProject::State> m_retired;
};
