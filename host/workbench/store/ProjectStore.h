#pragma once

#include "host/workbench/events/HostEvent.h"
#include "host/workbench/project/Project.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

class Notifier;

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

    /// Returns whether the project has changed since the last replace() or markSaved().
    bool isModified() const;
    void markSaved();

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
    void change(const std::function<HostEventList(Project&)>& change);

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

private:
    template <typename Change>
    void apply(const Change& change);
    void changeProcessors(const QList<QUuid>& ids, quint32 event,
                          const std::function<bool(ProcessorNode&)>& change);
    HostEventList everything() const;

    Notifier& m_notifier;
    std::atomic<int> m_projectNumber{0};
    mutable std::mutex m_mutex;
    Project m_project;                                         // guarded by m_mutex
    bool m_modified = false;                                   // guarded by m_mutex
    mutable std::optional<QSet<quint32>> m_processorAddresses; // guarded by m_mutex
};
