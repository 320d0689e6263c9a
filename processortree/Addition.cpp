#include "processortree/Addition.h"

#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/HostIPList.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/CustomAddProcessor.h"

#include <QPointer>
#include <QUuid>
#include <QWidget>

namespace {

enum class AddPath { Count, Addresses, IPList };

AddPath addPath()
{
    const bool usesAddresses = askHost(&Host::UsesIpAddressing);
    const bool managesAddresses = askHost(&Host::IsIpManagementAvailable);
    const bool lanUsb = askHost(&Host::IsLanUsbMode);
    if (managesAddresses && !lanUsb)
        return AddPath::IPList;
    return usesAddresses ? AddPath::Addresses : AddPath::Count;
}

std::optional<Addition> askForCount(AddKind kind, QWidget* parent)
{
    Addition addition;
    addition.count = kind == AddKind::One ? 1 : 2;
    if (kind != AddKind::Custom)
        return addition;
    const QPointer<QWidget> alive(parent);
    const int preset = askHost(&Host::GetFixedOutputCount);
    if (!alive)
        return {};
    CCustomAddProcessor dialog(preset, parent);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const auto [count, outputs] = dialog.addition();
    addition.count = count;
    addition.outputs = outputs;
    return addition;
}

std::optional<Addition> askForAddresses(AddKind kind, bool forList, QWidget* parent)
{
    Addition addition;
    if (kind == AddKind::One) {
        CAddSingleIPDialog dialog(forList, parent);
        if (dialog.exec() != QDialog::Accepted)
            return {};
        addition.addresses = {dialog.address()};
    } else if (kind == AddKind::Two) {
        CAddBothIpDialog dialog(forList, parent);
        if (dialog.exec() != QDialog::Accepted)
            return {};
        addition.addresses = dialog.addresses();
    } else {
        CAddBatchIPDialog dialog(forList, parent);
        if (dialog.exec() != QDialog::Accepted)
            return {};
        addition.addresses = dialog.addresses();
    }
    return addition;
}

/// The dialog puts its addresses into the host's list; what is new there is what it produced.
std::optional<Addition> askForEntries(AddKind kind, QWidget* parent)
{
    const QPointer<QWidget> alive(parent);
    QStringList before = HostIPList::entries();
    if (!alive || !askForAddresses(kind, true, parent))
        return {};
    Addition addition;
    const QStringList after = HostIPList::entries();
    for (const QString& entry : after) {
        if (!before.removeOne(entry))
            addition.entries.append(entry);
    }
    return addition;
}

} // namespace

std::optional<Addition> askForAddition(AddKind kind, QWidget* parent)
{
    const QPointer<QWidget> alive(parent);
    const AddPath path = addPath();
    if (!alive)
        return {};
    switch (path) {
    case AddPath::Count:
        return askForCount(kind, parent);
    case AddPath::Addresses:
        return askForAddresses(kind, false, parent);
    case AddPath::IPList:
        return askForEntries(kind, parent);
    }
    return {};
}

void requestAddition(const QUuid& group, const Addition& addition)
{
    if (!addition.addresses.isEmpty())
        askHost(&Host::AddProcessorsWithIps, group, addition.addresses);
    else if (!addition.entries.isEmpty())
        askHost(&Host::AddProcessorsFromIpList, group, addition.entries);
    else if (addition.count > 0)
        askHost(&Host::AddProcessors, group, addition.count);
    if (addition.outputs)
        askHost(&Host::SetNewProcessorOutputs, *addition.outputs);
}
