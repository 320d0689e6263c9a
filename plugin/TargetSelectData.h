#pragma once

#include "Interface/ObserverPattern"
#include "Interface/TargetSelectAreaInterface.h"
#include "base/PanelBridge.h"
#include "plugin/Singleton.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

class CGuiCalls;
class CPanelEvents;
class CProcessorTreeModel;
class CTreeEvents;
class CWorkThread;

/// The bridge from the host: the panel's one observer, owner of the processor tree model and of the
/// work thread. Decodes numbered host events and hands each to whoever acts on it: CTreeEvents
/// changes the model, CPanelEvents calls the panel.
///
/// Three laws hold for every event, whatever the host does:
/// 1. The host's last word wins (CEventOrder): after the last event has been told and the GUI
///    thread has run its queue, the tree equals the host's project.
/// 2. An answer is checked (CHostAnswer): a record that is not the one that was asked for changes
///    nothing.
/// 3. Nobody stands (CGuiCalls): the GUI thread waits for no other thread, and another thread waits
///    for the GUI thread within one bound for each event, together with those that the host raises
///    while it answers for it.
///
/// Events come on any thread of the host's, the GUI thread included. Those that change the model
/// have changed it when Update() returns, but for "reset" and "remove", which off the GUI thread
/// are queued and waited for by a later event; for an event whose thread did not wait any longer;
/// and for one that a host raises on the GUI thread while rows change or are painted, or inside a
/// question that another event asks. Those follow as soon as they can. Without a panel, and after
/// the application began to quit, events do nothing; without a handler those do nothing that need
/// one.
class CTargetSelectData final : public QObject,
                                public CObserver,
                                public IPanelBridge,
                                public CSingleton<CTargetSelectData>
{
    Q_OBJECT

public:
    /// The bridge of the process, created on first use. Any thread; it and its model live on the
    /// GUI thread all the same.
    static CTargetSelectData* Instance();

    explicit CTargetSelectData(QObject* parent = nullptr);

    /// Ends the work thread after the job in hand, without waiting for a job that is inside a
    /// question to the host, and releases every thread that waits here. Other threads may be inside
    /// an event then; the GUI thread is not.
    ~CTargetSelectData() override;

    /// Called by the host's subject for each event, on its notifying thread.
    void Update(CSubject* subject) override;

    /// The model; valid as long as the bridge. Any thread may ask, the GUI thread may use it.
    CProcessorTreeModel* GetModel();

    /// The model back to its root alone, behind what is queued. GUI thread.
    void ResetModel();

    /// Removes every group with its processors. GUI thread.
    void RemoveAllGroups();

    void SetReadOnly(bool readOnly);

    bool IsReadOnly() const override;
    bool IsSelectionEchoGuarded() const override;
    void SetSelectionEchoGuard(bool guarded) override;
    void changeTree(std::function<void()> change) override;
    void noteChange() override;

    /// Fills `out` with the tree as it stands, records as the rows hold them. With `onlyAccepted`
    /// the host is asked about each processor afterwards, with no lock held. GUI thread.
    void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted);

    /// Names the panel whose slots events call; null when it goes. GUI thread.
    void setPanel(QObject* panel);

    /// Takes events, again after Stop(). GUI thread.
    void Start();

    /// Takes no more events, releases all threads that wait, and ends the work thread; a job that
    /// is inside a question to the host is left behind after a moment. Happens by itself when the
    /// application quits. GUI thread.
    void Stop();

    /// The calls on their way to the GUI thread.
    CGuiCalls& guiCalls() { return *m_calls; }

private:
    void dispatch(const CSubject& subject);

    std::unique_ptr<CProcessorTreeModel> m_model;
    // Shared with the threads and jobs that are inside an event.
    const std::shared_ptr<CWorkThread> m_workThread;
    const std::shared_ptr<CGuiCalls> m_calls;
    const std::shared_ptr<CTreeEvents> m_treeEvents;
    const std::shared_ptr<CPanelEvents> m_panelEvents;
    std::atomic<bool> m_readOnly{false};
    std::atomic<bool> m_selectionEchoGuard{false};
    std::atomic<bool> m_stopped{false};
};
