#pragma once

#include "host/workbench/events/HostEvent.h"
#include "host/workbench/project/Project.h"
#include "host/workbench/store/ChangeTitle.h"

#include <QObject>
#include <QPointer>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

class Notifier;

/// A project with a number of its own, by which it is known again.
struct ProjectState
{
    Project project;
    int revision = 0;
};

/// A change that was made: for undo.
struct ProjectChange
{
    ChangeTitle title;
    int step = 0; ///< The same for changes that are undone together.
    ProjectState before;
    ProjectState after;
};

/// Holds the project of the host and changes it. Raises the events of a change after the change is
/// made and the lock is released.
///
/// Thread-safe. Events are raised in the order of the changes if all changes are made on one
/// thread, the GUI thread.
class ProjectStore final : public QObject
{
    Q_OBJECT

public:
    explicit ProjectStore(Notifier& notifier, QObject* parent = nullptr);

    /// Returns a copy of the project.
    Project snapshot() const;

    /// Calls `ask` with the project under the lock and returns its result. `ask` must be short and
    /// must not call this object.
    template <typename Ask>
    auto read(const Ask& ask) const
    {
        const std::lock_guard guard(m_mutex);
        return ask(m_project);
    }

    /// Returns whether the project is another one than that of the last replace() or markSaved().
    bool isModified() const;
    void markSaved();

    /// Returns whether `revision` is that of the state that is saved.
    bool isSaved(int revision) const;

    /// Makes the project count as modified although nothing has changed it since replace().
    void markUnsaved();

    /// Keeps the changes from now on until takeRecorded() takes them.
    void startRecording();

    /// Returns the changes since the last call, in the order in which they were made.
    std::vector<ProjectChange> takeRecorded();

    /// Returns the number of the step to which a change belongs that is made now. On the GUI thread
    /// a step lasts until control returns to the event loop, so that all requests of one click
    /// belong to it; on another thread each change is a step.
    int step();

    /// Ends the current step, if there is one. GUI thread.
    void endStep();

    /// Gives the project back a state that it had, and announces what differs. The front panels
    /// stay as they are. Returns false, without effect, while recorded changes are not taken.
    bool restore(const ProjectState& state);

    /// Changes fields of records. `change` names the change and returns whether there is one. The
    /// events follow from what differs.
    void edit(const std::function<bool(Project&, ChangeTitle&)>& change);

    /// Replaces the project and announces tree, device sets, strategy, LAN-USB and current
    /// processor.
    void replace(const Project& project);

    /// Returns a number that changes with every replace().
    int projectNumber() const { return m_projectNumber; }

    /// Announces the tree again, for a panel that shows another one.
    void announceTree();

    /// Announces everything again, for a panel that has just been initialised.
    void announceAll();

    QList<QUuid> addProcessors(const QUuid& group, int count);
    QList<QUuid> addProcessors(const QUuid& group, const QList<quint32>& addresses);
    QUuid addGroup(const ProcessorGroupNode& group);
    void removeProcessors(const QList<QUuid>& ids);
    void ungroup(const QUuid& id);
    bool renameProcessor(const QUuid& id, const QString& name);

    /// Renames a group. There is no event for that; with `announce` the whole tree is announced.
    void renameGroup(const QUuid& id, const QString& name, bool announce);

    /// Moves processors on behalf of the host. Announces a removal and an addition.
    void regroup(const QList<QUuid>& ids, const QUuid& group);

    /// Stores a move that the panel has already made. Announces changes of the records.
    void storeMembership(const QList<QUuid>& ids, const QUuid& group);

    /// Changes any fields of a record but its identity and its group; `change` returns whether it
    /// changed anything. Announces a change of the record.
    void changeProcessor(const QUuid& id, const std::function<bool(ProcessorNode&)>& change);

    void setOnline(const QList<QUuid>& ids, bool online);

    /// Sets the address; with kNoProcessorAddress the processor is then addressed by number.
    void setAddress(const QUuid& id, quint32 address);

    /// Sets the mode: 1 for processors with a backup, 2 for backups, 0 for others.
    void setRedundancyMode(const QList<QUuid>& ids, qint32 mode);

    /// Sets hostFlag13 of the records, which means protection here.
    void setProtected(const QList<QUuid>& ids, bool isProtected);

    /// Sets hostAttribute11 of the records, which means the number of outputs here.
    void setOutputs(const QList<QUuid>& ids, qint32 outputs);

    /// Lights or darkens the front panel of a processor or a group. Raises no event.
    void setFrontPanel(const QUuid& id, bool lit);

    /// Sets hostFlag17 of the records, which means a monitor warning here.
    void setMonitorWarning(const QList<QUuid>& ids, bool warning);

    void setCurrentProcessor(const QUuid& id);
    void setDeviceSets(const QList<DeviceSet>& sets, const GUID& current);

    /// Stores the device set that the user chose in the panel. Raises no event.
    void chooseDeviceSet(const GUID& id);

    void setDetectStrategy(int strategy);
    void setLanUsb(bool on, const QList<quint32>& addresses);

    /// Sets the processors that a detection found online.
    void markFound(const QList<QUuid>& ids);

    /// Announces the device sets again.
    void announceDeviceSets();

    /// Replaces the answers; announces the detection strategy and LAN-USB if they changed.
    void setAnswers(const HandlerAnswers& answers);

    /// Replaces the rules by which the host makes faults. Raises no event.
    void setFaults(const QList<FaultRule>& faults);

    /// Changes answers for which there is no event.
    void changeAnswers(const std::function<void(HandlerAnswers&)>& change);

    /// Changes anything, as a detection does; `change` returns the events to raise, none if nothing
    /// changed.
    void change(ChangeKind kind, const std::function<HostEventList(Project&)>& change);

    /// Sets the network in which the host detects. Raises no event.
    void setNetwork(const NetworkSettings& network);

    /// Changes the IP list; `change` returns whether it changed anything.
    void changeIpList(const std::function<bool(IpList&)>& change);

    /// Adds the addresses of the online processors to the IP list under the names of the
    /// processors, as many as there is room for. Skips addresses that are already in the list.
    /// Returns a host code.
    quint32 mergeOnlineAddresses();

    /// Adds the entries of an address file to the IP list, as many as there is room for. Logs the
    /// entries that are not added; adding none is no error. Returns a host code.
    quint32 importIpFile(const QString& path);

    /// Returns the addresses of all processors.
    QSet<quint32> processorAddresses() const;

    /// Returns the code that the next check of an address has to return, or 0 for none. Counts the
    /// check.
    quint32 takeForcedIpCheck();

signals:
    /// Emitted after a change, on the thread of the change, before its events are raised.
    void changed();

    /// Emitted instead of changed() if only the IP list changed.
    void ipListChanged();

    /// Emitted after changed() or ipListChanged() when there are recorded changes.
    void recorded();

    /// Emitted before changed() when another project has replaced the former one.
    void replaced();

private:
    friend class ProjectStep;

    /// Changes the project, names the change, and returns the events to raise, none if nothing
    /// changed.
    using Change = std::function<HostEventList(Project&, ChangeTitle&)>;

    void apply(const Change& change);
    bool modify(const std::function<bool(Project&, ChangeTitle&)>& change,
                void (ProjectStore::*signal)() = &ProjectStore::changed);
    void changeProcessors(ChangeKind kind, const QList<QUuid>& ids, quint32 event,
                          const std::function<bool(ProcessorNode&)>& change);
    HostEventList everything() const;

    Notifier& m_notifier;
    std::atomic<int> m_projectNumber{0};
    mutable std::mutex m_mutex;
    Project m_project;                                         // guarded by m_mutex
    int m_revision = 0;                                        // guarded by m_mutex
    int m_savedRevision = 0;                                   // guarded by m_mutex
    int m_lastRevision = 0;                                    // guarded by m_mutex
    bool m_isRecording = false;                                // guarded by m_mutex
    std::vector<ProjectChange> m_recorded;                     // guarded by m_mutex
    mutable std::optional<QSet<quint32>> m_processorAddresses; // guarded by m_mutex
    std::atomic<int> m_lastStep{0};
    int m_step = 0;              // GUI thread
    int m_forcedStep = 0;        // GUI thread
    QPointer<QObject> m_stepEnd; // Qt child; its deletion ends the step; GUI thread
};

/// While it exists, changes belong to a step that began earlier: a request that the host carries
/// out late is undone together with the others of its time. GUI thread.
class ProjectStep final
{
public:
    ProjectStep(ProjectStore& store, int step);
    ~ProjectStep();
    ProjectStep(const ProjectStep&) = delete;
    ProjectStep& operator=(const ProjectStep&) = delete;

private:
    ProjectStore& m_store;
    int m_former;
};
