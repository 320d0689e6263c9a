#pragma once

#include <QString>

/// What a change does to the project. A step that has changes of several kinds is named after the
/// last of them in this order.
enum class ChangeKind {
    Report, ///< Of a device: it comes by itself, and joins the step before it.
    Current,
    AddressCheck,
    IpList,
    Online,
    Outputs,
    Answers,
    DetectStrategy,
    LanUsb,
    DeviceSet,
    DeviceSets,
    Faults,
    Network,
    Membership,
    MonitorWarning,
    Redundancy,
    Protection,
    Address,
    Field,
    Rename,
    Move,
    AddProcessors,
    AddGroup,
    RemoveProcessors,
    Ungroup,
    Detection,
};

/// Names a change, for the Edit menu.
struct ChangeTitle
{
    ChangeKind kind = ChangeKind::Current;
    QString name;  ///< Of the record that is changed, or of the field.
    int count = 1; ///< How many records are changed.
};

/// Returns the name of the change in the current language, such as "rename of Stage 3". Long names
/// are shortened.
QString changeTitleText(const ChangeTitle& title);
