#include "host/workbench/store/ChangeTitle.h"

#include <QCoreApplication>

namespace {

constexpr int kNameShown = 40;

struct ChangeTitleMessages
{
    Q_DECLARE_TR_FUNCTIONS(ChangeTitle)
};

/// Returns "one" with the name of the only record, or "several" with the number of the records.
QString records(const ChangeTitle& title, const QString& one, const QString& several)
{
    if (title.count != 1)
        return several.arg(title.count);
    const QString name =
        title.name.size() > kNameShown ? title.name.left(kNameShown) + QChar(0x2026) : title.name;
    return one.arg(name);
}

} // namespace

QString changeTitleText(const ChangeTitle& title)
{
    switch (title.kind) {
    case ChangeKind::Report:
        return ChangeTitleMessages::tr("report of a processor");
    case ChangeKind::Current:
        return ChangeTitleMessages::tr("choice of the current processor");
    case ChangeKind::AddressCheck:
        return ChangeTitleMessages::tr("check of an address");
    case ChangeKind::IpList:
        return ChangeTitleMessages::tr("change of the IP list");
    case ChangeKind::Online:
        return records(title, ChangeTitleMessages::tr("state of %1"),
                       ChangeTitleMessages::tr("state of %1 processors"));
    case ChangeKind::Outputs:
        return ChangeTitleMessages::tr("number of outputs");
    case ChangeKind::Answers:
        return ChangeTitleMessages::tr("handler answers");
    case ChangeKind::DetectStrategy:
        return ChangeTitleMessages::tr("detection strategy");
    case ChangeKind::LanUsb:
        return ChangeTitleMessages::tr("LAN-USB");
    case ChangeKind::DeviceSet:
        return ChangeTitleMessages::tr("choice of the device set");
    case ChangeKind::DeviceSets:
        return ChangeTitleMessages::tr("device sets");
    case ChangeKind::Faults:
        return ChangeTitleMessages::tr("faults");
    case ChangeKind::Network:
        return ChangeTitleMessages::tr("network");
    case ChangeKind::Membership:
    case ChangeKind::Move:
        return records(title, ChangeTitleMessages::tr("move of %1"),
                       ChangeTitleMessages::tr("move of %1 processors"));
    case ChangeKind::MonitorWarning:
        return records(title, ChangeTitleMessages::tr("monitor warning of %1"),
                       ChangeTitleMessages::tr("monitor warning of %1 processors"));
    case ChangeKind::Redundancy:
        return records(title, ChangeTitleMessages::tr("redundancy of %1"),
                       ChangeTitleMessages::tr("redundancy of %1 processors"));
    case ChangeKind::Protection:
        return records(title, ChangeTitleMessages::tr("protection of %1"),
                       ChangeTitleMessages::tr("protection of %1 processors"));
    case ChangeKind::Address:
        return records(title, ChangeTitleMessages::tr("address of %1"), QString());
    case ChangeKind::Field:
        return records(title, ChangeTitleMessages::tr("change of %1"), QString());
    case ChangeKind::Rename:
        return records(title, ChangeTitleMessages::tr("rename of %1"), QString());
    case ChangeKind::AddProcessors:
        return records(title, ChangeTitleMessages::tr("addition of %1"),
                       ChangeTitleMessages::tr("addition of %1 processors"));
    case ChangeKind::AddGroup:
        return records(title, ChangeTitleMessages::tr("addition of group %1"), QString());
    case ChangeKind::RemoveProcessors:
        return records(title, ChangeTitleMessages::tr("removal of %1"),
                       ChangeTitleMessages::tr("removal of %1 processors"));
    case ChangeKind::Ungroup:
        return records(title, ChangeTitleMessages::tr("ungrouping of %1"), QString());
    case ChangeKind::Detection:
        return ChangeTitleMessages::tr("detection");
    }
    return {};
}
