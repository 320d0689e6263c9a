#pragma once

#include "Interface/ObserverPattern"
#include "Interface/TargetSelectInterfaceHandler.h"
#include "sdk/relay/Events.h"
#include "sdk/relay/Operations.h"

#include <QVariant>
#include <QVariantList>

#include <functional>
#include <memory>

/// A handler that stands before another one and sees each call and each event as a value.
///
/// By default it passes everything on. A subclass overrides call() and event(): it may look, change
/// what is passed on, leave it out, or do it later. A host assigns the relay to the layer's
/// m_controlHandler instead of its own handler and changes nothing else: SetObserver() gives it an
/// observer to attach to its subjects as before.
///
/// Thread-safe; call() and event() come on the threads on which the panel calls and the host
/// notifies. The relay must be owned by a std::shared_ptr. An event that the host tells after the
/// end of the relay reaches the panel unseen.
class CHandlerRelay : public ITargetSelectInterfaceHandler,
                      public std::enable_shared_from_this<CHandlerRelay>
{
public:
    /// A call of the panel. `arguments` are in the order of `operation.arguments`, each with the
    /// type that the interface names.
    struct Call
    {
        const Operations::Operation& operation;
        QVariantList arguments;
    };

    /// What the host returned, and the values of its out parameters. A default-constructed one is
    /// the default answer of each operation: false, 0, empty. A value of another type than the
    /// operation's counts as missing.
    struct Answer
    {
        QVariant result;
        QVariantList outs;
    };

    /// Asks the host with the arguments of the panel. May be copied, and called more than once,
    /// later and on another thread; keeps the host's handler alive.
    using Ask = std::function<Answer()>;

    /// Delivers an event to the panel, on the calling thread. May be copied, and called more than
    /// once, later and on another thread. An argument of unknown type cannot be kept: later, the
    /// panel gets one that it cannot read.
    using Deliver = std::function<void()>;

    /// Passes calls on to `host`, which may be null: then each answer is the default one.
    explicit CHandlerRelay(std::shared_ptr<ITargetSelectInterfaceHandler> host);

    /// Takes the place of `former`, whose observer the host gets again: attached once more to the
    /// same subject, it brings each event once. From SetObserver() on, its events come here.
    CHandlerRelay(std::shared_ptr<ITargetSelectInterfaceHandler> host, const CHandlerRelay& former);
    ~CHandlerRelay() override;

    CHandlerRelay(const CHandlerRelay&) = delete;
    CHandlerRelay& operator=(const CHandlerRelay&) = delete;

    /// Returns the handler that calls are passed on to.
    ITargetSelectInterfaceHandler* host() const { return m_host.get(); }

    /// Returns whether the panel has set its observer.
    bool isObserved() const;

    /// Delivers `event` to the panel's observer, on the calling thread and without a call of
    /// event(). Has no effect before the panel has set its observer.
    void tellPanel(const Events::Event& event) const;

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

protected:
    /// Returns the answer that the panel gets; this one is the host's. On the panel's thread: the
    /// GUI thread, its work thread, or the one that delivers an event.
    virtual Answer call(const Call& call, const Ask& ask);

    /// Brings `event` to the panel by calling `deliver`, or does otherwise. On the thread on which
    /// the host notifies.
    virtual void event(const Events::Event& event, const Deliver& deliver);

    /// Lets go of the handler that calls are passed on to. Events are still seen. No call may come
    /// any more.
    void releaseHost() { m_host.reset(); }

private:
    class Observer;

    template <typename Result, typename... Parameters, typename... Arguments>
    Result pass(const char* name, Result (ITargetSelectInterfaceHandler::*operation)(Parameters...),
                const Arguments&... arguments);

    std::shared_ptr<ITargetSelectInterfaceHandler> m_host;
    Observer* const m_observer; // lives as long as the process
};
