#pragma once

#include "Interface/AbstractLayerInterface.h"
#include "Interface/ProcessorNode.h"

#include <QList>
#include <QUuid>

#include <string>
#include <vector>

/// A processor with a LAN-USB connection that the LAN-USB warning lists. All texts are UTF-8.
struct LanUsbProcessorInfo
{
    std::string ip;            ///< The processor's IP address as text.
    std::string processorName; ///< Its display name.
    std::string deviceName;    ///< The device that does not support LAN-USB.
};

/// A copy of the tree with the records of its rows.
struct ProcessorTreeSnapshot
{
    QList<ProcessorGroupNode> groups; ///< In tree order, each with its processors in tree order.
    QList<ProcessorNode> processors;  ///< The processors directly under the root, in tree order.
};

/// The interface through which a host controls the target selection area. The order of the
/// operations is part of the binary contract. All operations: GUI thread. The defaults do nothing.
class ITargetSelectAreaInterface : public IAbstractLayerInterface
{
public:
    /// Starts a detection of all devices. Returns the handler's status code, 0 for success.
    virtual quint32 DetectDevices() { return 0; }

    /// Copies the tree to `out`. With `onlyAccepted`, leaves out the processors for which the
    /// handler's AcceptProcessorForSnapshot returns false; empty groups are kept.
    virtual void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
    {
        Q_UNUSED(out)
        Q_UNUSED(onlyAccepted)
    }

    /// Sets whether the panel is read-only, in which case it offers no changes.
    virtual void SetReadOnly(bool readOnly) { Q_UNUSED(readOnly) }

    /// Selects the row of `id`. Has no effect if the row is unknown or already selected.
    virtual void SetCurrentProcessor(const QUuid& id) { Q_UNUSED(id) }

    /// Stores `locked` under `key`, a number chosen by the host, and applies it at once.
    virtual void SetOperationLock(int key, bool locked)
    {
        Q_UNUSED(key)
        Q_UNUSED(locked)
    }

    /// Removes all groups with their processors. Processors directly under the root are kept.
    virtual void RemoveAllGroups() {}

    /// Repaints the tree. The host calls it when the warning marks of rows have changed.
    virtual void UpdateMonitorWarningState() {}

    /// Applies the lock stored under `key`; not locked if there is none.
    virtual void ApplyOperationLock(int key) { Q_UNUSED(key) }

    /// Queues a warning that lists `processors`, which are copied, and returns at once.
    virtual void ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& processors)
    {
        Q_UNUSED(processors)
    }

    /// Returns the handler's processors of the project, in the host's order.
    virtual QList<ProcessorNode> GetAllProcessorNodes() { return {}; }
};
