#include "host/workbench/store/ChangeTitle.h"

#include <QCoreApplication>

namespace {

constexpr int kNameShown = 40;

struct Messages
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
        return Messages::tr("report of a processor");
    case ChangeKind::Current:
        return Messages::tr("choice of the current processor");
    case ChangeKind::AddressCheck:
        return Messages::tr("check of an address");
    case ChangeKind::IpList:
        return Messages::tr("change of the IP list");
    case ChangeKind::Online:
        return records(title, Messages::tr("state of %1"), Messages::tr("state of %1 processors"));
    case ChangeKind::Outputs:
        return Messages::tr("number of outputs");
    case ChangeKind::Answers:
        return Messages::tr("handler answers");
    case ChangeKind::DetectStrategy:
        return Messages::tr("detection strategy");
    case ChangeKind::LanUsb:
        return Messages::tr("LAN-USB");
    case ChangeKind::DeviceSet:
        return Messages::tr("choice of the device set");
    case ChangeKind::DeviceSets:
        return Messages::tr("device sets");
    case ChangeKind::Faults:
        return Messages::tr("faults");
    case ChangeKind::Network:
        return Messages::tr("network");
    case ChangeKind::Membership:
    case ChangeKind::Move:
        return records(title, Messages::tr("move of %1"), Messages::tr("move of %1 processors"));
    case ChangeKind::MonitorWarning:
        return records(title, Messages::tr("monitor warning of %1"),
                       Messages::tr("monitor warning of %1 processors"));
    case ChangeKind::Redundancy:
        return records(title, Messages::tr("redundancy of %1"),
                       Messages::tr("redundancy of %1 processors"));
    case ChangeKind::Protection:
        return records(title, Messages::tr("protection of %1"),
                       Messages::tr("protection of %1 processors"));
    case ChangeKind::Address:
        return records(title, Messages::tr("address of %1"), QString());
    case ChangeKind::Field:
        return records(title, Messages::tr("change of %1"), QString());
    case ChangeKind::Rename:
        return records(title, Messages::tr("rename of %1"), QString());
    case ChangeKind::AddProcessors:
        return records(title, Messages::tr("addition of %1"),
                       Messages::tr("addition of %1 processors"));
    case ChangeKind::AddGroup:
        return records(title, Messages::tr("addition of group %1"), QString());
    case ChangeKind::RemoveProcessors:
        return records(title, Messages::tr("removal of %1"),
                       Messages::tr("removal of %1 processors"));
    case ChangeKind::Ungroup:
        return records(title, Messages::tr("ungrouping of %1"), QString());
    case ChangeKind::Detection:
        return Messages::tr("detection");
    }
    return {};
}
