#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"
#include "Interface/ProjectLimits.h"
#include "host/workbench/addresses/IpList.h"
#include "host/workbench/project/FaultRule.h"
#include "host/workbench/project/HostReply.h"
#include "host/workbench/project/NetworkSettings.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

/// One device set of the project and the text under which it is offered.
struct DeviceSet
{
    SDeviceSetInfo info{};
    QString text;
};

/// The strategy of a detection that asks the addresses of the IP list.
constexpr qint32 kDetectByAddress = 2;

/// The host's answers to the questions of the panel that are not about records.
struct HandlerAnswers
{
    qint32 detectStrategy = 0;
    quint32 detectResult = 0;
    qint32 detectPauseMs = 0; ///< How long a detection takes for each processor.
    qint32 selectionMode = 0;
    bool restrictedMode = false;
    bool usesIpAddressing = false;
    bool ipManagementAvailable = true;
    bool lanUsbMode = false;
    QList<quint32> lanUsbAddresses;
    qint32 nameMaxBytes = 64;
    bool nameUtf8 = true;
    qint32 fixedOutputCount = 0;
    qint32 newProcessorOutputs = 8;
    bool showProcessorMoreButton = true;
    bool showNodeMoreButton = true;
    bool canAddProcessors = true;
    bool addProcessorsEnabled = true;
    bool canRenameProcessors = true;
    bool acceptNewNames = true;
    bool uniqueNames = true; ///< The panel cannot give a processor the name of another.
    bool blockDelete = false;
    qint32 deleteSpares = 0; ///< How many of the requested processors a deletion keeps.
    HostReply hostReply = HostReply::WhenRaised;
    bool eventsOneByOne = false; ///< Raises 18 and 20 for each instead of 19 and 21.
    bool contextMenuEntries = true;
    bool confirmDeviceSetChange = true;
    bool snapshotAcceptsOffline = true;
    bool frontPanelHighlightAvailable = true;
    quint32 ipCheckCode = 0;    ///< CheckIPAddress rejects all with this code; 0 checks.
    qint32 ipCheckCount = 0;    ///< For how many more checks; 0 for all.
    quint32 readOnlineCode = 0; ///< Returned instead of reading; 0 reads.
    quint32 importCode = 0;     ///< Returned instead of importing; 0 imports.
};

/// The project of the host. A plain value that does not announce changes.
///
/// Identities are unique over groups and processors, the group of a processor exists or is null,
/// and there are at most ProjectLimits::kMaxProcessors processors: operations preserve that.
/// ProcessorGroupNode's list of processors stays empty in here; group() and allGroups() fill it in.
class Project final
{
public:
    QList<ProcessorGroupNode> groups;
    QList<ProcessorNode> processors;
    QList<DeviceSet> deviceSets;
    GUID currentDeviceSet{};
    QUuid currentProcessor;
    IpList ipList;
    HandlerAnswers answers;
    QList<FaultRule> faults;
    NetworkSettings network;
    QSet<QUuid> litFrontPanels; ///< Of processors and groups; not saved.

    const ProcessorNode* processor(const QUuid& id) const;
    ProcessorNode* processor(const QUuid& id);
    const ProcessorGroupNode* findGroup(const QUuid& id) const;
    bool hasGroup(const QUuid& id) const { return findGroup(id) != nullptr; }
    int roomForProcessors() const { return ProjectLimits::kMaxProcessors - processors.size(); }

    /// Returns the group's record with its processors, or a default-constructed record for an
    /// unknown identity.
    ProcessorGroupNode group(const QUuid& id) const;
    QList<ProcessorGroupNode> allGroups() const;

    /// Adds up to `count` processors without addresses, with the next numbers and as many
    /// outputs as the answers say, and returns their identities. An unknown group counts as the
    /// root.
    QList<QUuid> addProcessors(const QUuid& groupId, int count);

    /// Adds one processor for each address, as far as there is room.
    QList<QUuid> addProcessors(const QUuid& groupId, const QList<quint32>& addresses);

    /// Returns whether there is room for a group of that name.
    bool canAddGroup(const QString& name) const;

    /// Adds a group; a null or taken identity is replaced by a fresh one. Returns a null identity
    /// if canAddGroup() says no.
    QUuid addGroup(const ProcessorGroupNode& group);

    /// Removes the processors among `ids` and returns those removed. If the current processor is
    /// one of them, the first remaining one becomes current.
    QList<QUuid> removeProcessors(const QList<QUuid>& ids);

    /// Removes a group and puts its processors under the root.
    bool ungroup(const QUuid& id);

    bool renameProcessor(const QUuid& id, const QString& name);
    bool renameGroup(const QUuid& id, const QString& name);

    /// Moves processors to a group, or to the root if `groupId` is null. Returns those that moved.
    QList<QUuid> regroup(const QList<QUuid>& ids, const QUuid& groupId);

private:
    ProcessorNode& appendProcessor(const QUuid& groupId);
};
