#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/ObserverPattern"
#include "Interface/TargetSelectAreaInterface.h"
#include "plugin/GuiCalls.h"
#include "plugin/LendableLock.h"
#include "plugin/Singleton.h"

#include <QList>
#include <QObject>
#include <QUuid>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

class CProcessorTreeModel;
class CWorkThread;
class ITargetSelectInterfaceHandler;

/// The bridge from the host: the panel's one observer, owner of the processor tree model and of the
/// work thread. Turns numbered host events into changes of the model and calls of the panel's
/// slots.
///
/// Events come on any thread of the host's, the GUI thread included. Those that change the model
/// have changed it when Update() returns, but for "reset" and "remove", which off the GUI thread
/// are queued; a later event waits for them. One that a host raises on the GUI thread while it is
/// told of a selection may find rows coming or going, and then follows as soon as they have. The
/// rest goes to the work thread and from there to the panel. Without a panel or a handler, and
/// after the application began to quit, events do nothing.
class CTargetSelectData final : public QObject,
                                public CObserver,
                                public CSingleton<CTargetSelectData>
{
    Q_OBJECT

public:
    /// The bridge of the process, created on first use. Any thread; it and its model live on the
    /// GUI thread all the same.
    static CTargetSelectData* Instance();

    explicit CTargetSelectData(QObject* parent = nullptr);

    /// Ends the work thread after the job in hand and releases every thread that waits here.
    ~CTargetSelectData() override;

    /// Called by the host's subject for each event, on its notifying thread.
    void Update(CSubject* subject) override;

    /// The model; valid as long as the bridge. Any thread may ask, the GUI thread may use it.
    CProcessorTreeModel* GetModel();

    /// The model back to its root alone. GUI thread.
    void ResetModel();

    /// Removes every group with its processors. GUI thread.
    void RemoveAllGroups();

    /// Whether the host allows no changes. Any thread.
    bool IsReadOnly();
    void SetReadOnly(bool readOnly);

    /// While set, the host's "current processor" events are ignored: they echo the user's own
    /// choice, which is being reported. Any thread.
    bool IsSelectionEchoGuarded() const;
    void SetSelectionEchoGuard(bool guarded);

    /// Fills `out` with the tree as it stands, records as the rows hold them. With `onlyAccepted`
    /// the host is asked about each processor afterwards, with no lock held. GUI thread.
    void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted);

    /// Takes events, again after Stop(). GUI thread.
    void Start();

    /// Takes no more events: lets those in progress end, then ends the work thread. Happens by
    /// itself when the application quits. GUI thread.
    void Stop();

    /// The calls on their way to the GUI thread.
    CGuiCalls& guiCalls() { return m_calls; }

private:
    using Handler = ITargetSelectInterfaceHandler;
    class CUpdateInProgress;

    void dispatch(CSubject* subject);
    void addGroup(const QUuid& id);
    void addProcessor(const QUuid& id);
    void addProcessors(const QList<QUuid>& ids);
    void removeNode(const QUuid& id);
    void removeNodes(const QList<QUuid>& ids);
    void refreshProcessor(const QUuid& id, bool onlyProcessors);
    void updateMonitorState(const QList<QUuid>& ids);
    void rewriteRecord(const QUuid& id);

    void showCurrentProcessor(QUuid current, quint32 reports);
    void postJob(quint32 event, std::function<void()> job);
    void postToPanel(std::function<void(QObject*)> call);
    bool askHost(const std::function<void(Handler&)>& question);
    void changeModel(const std::function<void()>& change);
    void postChange(const std::function<void()>& change);
    bool settle();
    bool isKnown(const QUuid& id);

    std::unique_ptr<CWorkThread> m_workThread;
    CLendableLock m_lock;
    std::unique_ptr<CProcessorTreeModel> m_model;
    std::atomic<bool> m_readOnly{false};
    std::atomic<bool> m_selectionEchoGuard{false};
    std::atomic<quint32> m_reports{0}; // of the user's own choices
    CGuiCalls m_calls;

    std::mutex m_updatesMutex;
    std::condition_variable m_updatesChanged;
    int m_updatesInProgress = 0;
    bool m_stopped = false;
};
