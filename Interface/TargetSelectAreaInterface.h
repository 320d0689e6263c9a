#pragma once

#include "Interface/AbstractLayerInterface.h"
#include "Interface/ProcessorNode.h"

#include <QList>
#include <QUuid>

#include <string>
#include <vector>

/// A processor on a LAN-USB link, as the LAN-USB warning lists it. All texts are UTF-8.
struct LanUsbProcessorInfo
{
    std::string ip;            ///< The processor's IP address as text.
    std::string processorName; ///< Its display name.
    std::string deviceName;    ///< The device that does not support LAN-USB.
};

/// The tree as it stands, records as the rows hold them.
struct ProcessorTreeSnapshot
{
    QList<ProcessorGroupNode> groups; ///< In tree order, each with its processors in tree order.
    QList<ProcessorNode> processors;  ///< Those directly under the root, in tree order.
};

/// How a host drives the target selection area. All operations: GUI thread. The order of the
/// operations is binary contract. The defaults do nothing.
class ITargetSelectAreaInterface : public IAbstractLayerInterface
{
public:
    /// Starts a detection of all devices; returns the handler's status code unchanged, 0 for
    /// success.
    virtual quint32 DetectDevices() { return 0; }

    /// Fills `out` from the tree. With `onlyAccepted` each processor is offered to the handler's
    /// AcceptProcessorForSnapshot and left out when that answers false; groups stay even when
    /// empty.
    virtual void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
    {
        Q_UNUSED(out)
        Q_UNUSED(onlyAccepted)
    }

    /// While `readOnly` is set the panel offers no changes.
    virtual void SetReadOnly(bool readOnly) { Q_UNUSED(readOnly) }

    /// Selects the row of `id`; an unknown or already selected one changes nothing.
    virtual void SetCurrentProcessor(const QUuid& id) { Q_UNUSED(id) }

    /// Records `locked` under `key`, an opaque number of the host's, and follows it at once.
    virtual void SetOperationLock(int key, bool locked)
    {
        Q_UNUSED(key)
        Q_UNUSED(locked)
    }

    /// Removes every group with the processors in it; processors directly under the root stay.
    virtual void RemoveAllGroups() {}

    /// Repaints the tree, after the host changed what the rows' marks show.
    virtual void UpdateMonitorWarningState() {}

    /// Follows the lock recorded under `key`; a key never set counts as not locked.
    virtual void ApplyOperationLock(int key) { Q_UNUSED(key) }

    /// Queues a warning that lists `processors` (copied) and returns at once.
    virtual void ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& processors)
    {
        Q_UNUSED(processors)
    }

    /// The project's processors in host order, straight from the handler.
    virtual QList<ProcessorNode> GetAllProcessorNodes() { return {}; }
};
