#pragma once

#include "Interface/HostEvents.h"
#include "Interface/TargetSelectHandlerBase.h"
#include "sdk/validate/Project.h"
#include "sdk/validate/Threads.h"

#include <atomic>
#include <memory>
#include <mutex>

/// A right host: its records are those of its project, it carries out what is requested, and tells
/// of that. It tells of changes of the project when a test asks it to.
class OracleHost final : public CTargetSelectHandlerBase
{
public:
    Project project;

    // What it answers besides. Set on the GUI thread while nobody asks.
    quint32 detectCode = 0;
    bool hasIpManagement = false;
    bool hasLanUsb = false;
    quint32 lanUsbAddress = 0;
    QUuid current;
    QList<QUuid> refused; ///< For snapshots.

    // What it was asked.
    std::atomic<int> registrations{0};
    std::atomic<int> detections{0};
    QUuid reportedFocus;
    int reports = 0;

    CObserver* observer() const { return m_observer; }

    /// Tells an event on the calling thread.
    template <typename Event, typename... Arguments>
    void tellHere(Arguments... arguments)
    {
        const Call call(QStringLiteral("event %1 on %2")
                            .arg(Event::number)
                            .arg(isGuiThread() ? QStringLiteral("the GUI thread")
                                               : QStringLiteral("a host's thread")));
        CSubject subject;
        subject.Attach(m_observer);
        Event::tell(subject, arguments...);
    }

    /// Tells an event on another thread, while this one, the GUI thread, handles its events.
    template <typename Event, typename... Arguments>
    void tell(Arguments... arguments)
    {
        elsewhere([&] { tellHere<Event>(arguments...); });
    }

    void SetObserver(CObserver* panel) override;
    QList<ProcessorNode> GetAllProcessorNodes() override { return project.processors(); }
    QList<ProcessorGroupNode> GetAllGroupNodes() override { return project.groups(); }
    ProcessorNode GetProcessorNode(const QUuid& id) override { return project.processor(id); }
    ProcessorGroupNode GetGroupNode(const QUuid& id) override { return project.group(id); }
    QUuid GetCurrentProcessorId() override { return current; }
    bool AcceptProcessorForSnapshot(const ProcessorNode& node) override;
    bool ShowProcessorMoreButton() override { return true; }
    bool ShowNodeMoreButton() override { return true; }
    bool CanAddProcessors(const ProcessorNode&) override { return true; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return true; }
    quint32 DetectAllDevices() override;
    QString GetDeviceSetText(const SDeviceSetInfo& set) override;
    bool IsLanUsbMode() override { return hasLanUsb; }
    QList<quint32> GetLanUsbProcessorIps() override { return {lanUsbAddress}; }
    bool IsIpManagementAvailable() override { return hasIpManagement; }
    void ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                         const QList<SGroupSelection>& groups, const QUuid& previous) override;
    bool CanRenameProcessor(const QUuid&) override { return true; }
    bool RenameProcessor(const QUuid& id, const QString& name) override;

private:
    std::atomic<CObserver*> m_observer{nullptr}; // the panel's, lives until the process ends
};

/// Returns a host with one group, which has the first of three processors.
std::shared_ptr<OracleHost> hostOfThree();
