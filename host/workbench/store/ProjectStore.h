#pragma once

#include "host/workbench/events/HostEvent.h"
#include "host/workbench/project/Project.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

class Notifier;

/// The host's project: keeps it, changes it, and raises the events that belong to each change once
/// the change is made and nothing is locked any more.
///
/// Any thread may ask and change; the order of events is that of the changes when those are made on
/// one thread, the GUI thread.
class ProjectStore final : public QObject
{
    Q_OBJECT

public:
    explicit ProjectStore(Notifier& notifier, QObject* parent = nullptr);

    /// A copy of everything.
    Project snapshot() const;

    /// What `ask` answers, called with the project while nobody changes it. Keep it short; it must
    /// not come back here.
    template <typename Ask>
    auto read(const Ask& ask) const
    {
        const std::lock_guard guard(m_mutex);
        return ask(m_project);
    }

    /// Whether there are changes since the last replace() or markSaved().
    bool isModified() const;
    void markSaved();

    /// Another project: tree, device sets, strategy, LAN-USB and current processor are announced.
    void replace(const Project& project);

    /// Changes with every replace().
    int projectNumber() const { return m_projectNumber; }

    /// Announces the tree as it is, for a panel that shows something else.
    void announceTree();

    /// Announces everything again, for a panel that has just been initialised.
    void announceAll();

    QList<QUuid> addProcessors(const QUuid& group, int count);
    QList<QUuid> addProcessors(const QUuid& group, const QList<quint32>& addresses);
    QUuid addGroup(const ProcessorGroupNode& group);
    void removeProcessors(const QList<QUuid>& ids);
    void ungroup(const QUuid& id);
    bool renameProcessor(const QUuid& id, const QString& name);

    /// No event says that a group was renamed; with `announce` the whole tree is announced anew.
    void renameGroup(const QUuid& id, const QString& name, bool announce);

    /// Moves on the host's initiative: announced as removal and addition.
    void regroup(const QList<QUuid>& ids, const QUuid& group);

    /// Moves that the panel has made already: announced as changes of the records.
    void storeMembership(const QList<QUuid>& ids, const QUuid& group);

    void setOnline(const QList<QUuid>& ids, bool online);

    /// With kNoProcessorAddress the processor is addressed by number from here on, else by address.
    void setAddress(const QUuid& id, quint32 address);

    /// 1 for processors that have a backup, 2 for backups, 0 for others.
    void setRedundancyMode(const QList<QUuid>& ids, qint32 mode);

    /// Protection is kept in the record as hostFlag13.
    void setProtected(const QList<QUuid>& ids, bool isProtected);

    /// The number of outputs is kept in the record as hostAttribute11.
    void setOutputs(const QList<QUuid>& ids, qint32 outputs);

    /// Lights or darkens the front panel of a processor or a group. No event tells of it.
    void setFrontPanel(const QUuid& id, bool lit);

    /// The monitor warning is kept in the record as hostFlag17.
    void setMonitorWarning(const QList<QUuid>& ids, bool warning);

    void setCurrentProcessor(const QUuid& id);
    void setDeviceSets(const QList<DeviceSet>& sets, const GUID& current);

    /// The panel's user chose a device set. The panel shows it already; nothing is announced.
    void chooseDeviceSet(const GUID& id);

    void setDetectStrategy(int strategy);
    void setLanUsb(bool on, const QList<quint32>& addresses);

    /// A detection found these processors: they are online from here on.
    void markFound(const QList<QUuid>& ids);

    /// Announces the device sets as they are.
    void announceDeviceSets();

    /// Other answers; detection strategy and LAN-USB are announced when they changed.
    void setAnswers(const HandlerAnswers& answers);

    /// Changes of what no event tells of.
    void changeAnswers(const std::function<void(HandlerAnswers&)>& change);

    /// `change` returns whether it changed anything.
    void changeIpList(const std::function<bool(IpList&)>& change);

    /// Adds the addresses of the processors that are online to the IP list, each under its
    /// processor's name, as many as there is room for; those that it holds already are passed over.
    /// Returns a host code.
    quint32 mergeOnlineAddresses();

    /// Adds the entries of an address file, as many as there is room for. What is not added is told
    /// in the log. A file whose entries are all there already, or find no room, is a success that
    /// adds nothing. Returns a host code.
    quint32 importIpFile(const QString& path);

    /// The addresses that a new processor cannot have because another one has them.
    QSet<quint32> processorAddresses() const;

    /// The code with which the next check of an address is to be rejected whatever it is, 0 for
    /// none. Counts.
    quint32 takeForcedIpCheck();

signals:
    /// Something changed. Emitted on the thread of the change, before its events are raised.
    void changed();

    /// The IP list changed, and nothing else did. Emitted instead of changed().
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
