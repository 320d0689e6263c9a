#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"

#include <QThread>
#include <QVector>

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

/// A host in memory. Keeps a project of groups and processors, answers every question from plain
/// members that a test sets, and remembers what it was asked, in which order and on which thread.
///
/// The lists are guarded: records may be asked for on any thread while a test changes them through
/// setProject(). Members without a guard are set before events flow.
class FakeHandler final : public ITargetSelectInterfaceHandler
{
public:
    struct Call
    {
        QString name;
        QString argument;
        QThread* thread;
    };

    // What the panel asked.
    QVector<Call> calls() const;
    QStringList callNames() const;
    int callCount(const QString& name) const;
    void clearCalls();

    // The project.
    void setProject(const QList<ProcessorGroupNode>& groups,
                    const QList<ProcessorNode>& processors);
    void setProcessor(const ProcessorNode& processor);
    void setGroup(const ProcessorGroupNode& group);
    void removeProcessor(const QUuid& id);
    void removeGroup(const QUuid& id); ///< Its processors belong to no group then.
    QList<ProcessorNode> processors() const;
    QList<ProcessorGroupNode> groups() const;

    /// Run inside the question of that name, before it is answered, on the asking thread.
    std::function<void(const QString& name)> inside;

    /// Runs `action` there, once.
    void doInside(const QString& question, std::function<void()> action);

    /// Run when the answer to a question for records is fixed, before it is returned, on the asking
    /// thread: what the project becomes meanwhile is newer than the answer. `id` is null for lists.
    std::function<void(const QString& name, const QUuid& id)> answered;

    /// What GetProcessorNode and GetGroupNode answer, whatever they are asked.
    std::optional<ProcessorNode> answerProcessor;
    std::optional<ProcessorGroupNode> answerGroup;

    // Answers.
    CObserver* observer = nullptr;
    QUuid currentProcessor;
    bool checkProcessor = false;
    bool acceptForSnapshot = true;
    std::function<bool(const ProcessorNode&)> acceptProcessor;
    bool confirmDeviceSet = true;
    bool ipManagementAvailable = false;
    bool lanUsbMode = false;
    bool restrictedMode = false;
    quint32 detectResult = 0;
    QList<quint32> lanUsbIps;
    QStringList deviceSetTexts;
    /// What GetDeviceSetTexts answers instead of the length of that list.
    std::optional<int> deviceSetTextCount;
    bool showProcessorMoreButton = false;
    bool showNodeMoreButton = false;
    int nameMaxBytes = 64;
    bool nameUtf8 = true;
    bool acceptRename = true;
    int fixedOutputCount = 0;
    int selectionMode = 0;
    QList<QUuid> selectedProcessors;
    bool canRename = false;
    bool canAdd = false;
    bool addEnabled = false;
    bool usesIpAddressing = false;
    bool frontPanelAvailable = false;
    bool frontPanelLit = false;
    QList<QUuid> deleteBlocked;
    QUuid createdGroup; ///< Null creates another one each time.
    bool refusesGroups = false;
    std::function<void(QMenu& menu)> appendEntries;

    /// The IP list as entries. Requests to add, modify, delete and clear change it.
    QStringList ipList;
    /// What GetIPNameLists answers instead of the addresses and names in ipList.
    std::optional<QStringList> ipAddresses;
    std::optional<QStringList> ipNames;
    /// What GetIPCount answers instead of the length of ipList.
    std::optional<int> ipCount;
    /// The code an address is rejected with; 0 accepts it, as does having no such function.
    std::function<quint32(quint32 address, bool processorMode)> checkIp;
    bool ipListChanged = false;
    quint32 readOnlineResult = 0;
    quint32 importResult = 0;

    struct Membership
    {
        ProcessorGroupNode group;
        QUuid groupId;
        QList<QUuid> processors;
    };
    QVector<Membership> memberships;

    struct Selection
    {
        QUuid focus;
        QList<QUuid> processors;
        QList<SGroupSelection> groups;
        QUuid previous;
    };
    QVector<Selection> selections;

    void SetObserver(CObserver* newObserver) override;
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
    void DeleteProcessors(const QList<QUuid>& ids) override;
    void SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                           const QList<QUuid>& ids) override;
    ProcessorNode GetProcessorNode(const QUuid& id) override;
    bool CanRenameProcessor(const QUuid& id) override;
    bool CanAddProcessors(const ProcessorNode& first) override;
    bool IsAddProcessorsEnabled(const ProcessorNode& first) override;
    bool RenameProcessor(const QUuid& id, const QString& name) override;
    void SetNewProcessorOutputs(int outputs) override;
    QUuid CreateGroup(const ProcessorGroupNode& group) override;
    void Ungroup(const QUuid& id) override;
    void RenameGroup(const QUuid& id, const QString& name) override;
    void ReportSelection(const QUuid& focus, const QList<QUuid>& ids,
                         const QList<SGroupSelection>& byGroup, const QUuid& previous) override;
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
    void PreDeleteProcessors(const QList<QUuid>& ids) override;
    bool AcceptProcessorForSnapshot(const ProcessorNode& processor) override;
    void ShowTipMessage(const QString& text) override;
    bool IsFrontPanelHighlightAvailable() override;
    bool IsFrontPanelHighlighted(const QUuid& id) override;
    void SetFrontPanelHighlight(bool on) override;

private:
    void note(const char* name, const QString& argument = QString());
    template <typename Answer>
    Answer fixed(const char* name, const QUuid& id, Answer answer);

    // Each answer is a list of its own: ThreadSanitizer does not see how Qt synchronises the copies
    // of a list that changes in place.
    mutable std::mutex m_mutex;
    std::vector<Call> m_calls;
    std::vector<ProcessorGroupNode> m_groups;
    std::vector<ProcessorNode> m_processors;
};
