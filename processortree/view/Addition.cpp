#include "processortree/view/Addition.h"

#include "base/IPText.h"
#include "base/TargetSelectHandler.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/HostIPList.h"
#include "processortree/view/CustomAddProcessor.h"

#include <QPointer>
#include <QUuid>
#include <QWidget>

#include <algorithm>

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

std::optional<Addition> askForCount(AddKind kind, int lastOutputs, QWidget* parent)
{
    Addition addition;
    addition.count = kind == AddKind::One ? 1 : 2;
    if (kind != AddKind::Custom)
        return addition;
    const QPointer<QWidget> alive(parent);
    const int fixed = askHost(&Host::GetFixedOutputCount);
    if (!alive)
        return {};
    addition.areOutputsFixed = fixed > 0;
    // A box that shows no choice would leave the number open, and the user would not notice.
    const int proposed = lastOutputs > 0 ? lastOutputs : CCustomAddProcessor::kFewestOutputs;
    CCustomAddProcessor dialog(addition.areOutputsFixed ? fixed : proposed, parent);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const auto [count, outputs] = dialog.countAndOutputs();
    addition.count = count;
    if (outputs > 0)
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
        const QStringList added = dialog.addedTexts();
        for (const QString& text : added)
            addition.addresses.append(addressOfText(text));
    }
    return addition;
}

/// The dialog puts its addresses into the host's list; their entries are what it produced, whatever
/// else came into the list meanwhile.
std::optional<Addition> askForEntries(AddKind kind, QWidget* parent)
{
    const QPointer<QWidget> alive(parent);
    HostIPList::entries(); // a host may bring its list up to date when it is asked
    const std::optional<Addition> produced =
        alive ? askForAddresses(kind, true, parent) : std::nullopt;
    if (!produced)
        return {};
    Addition addition;
    const QStringList entries = HostIPList::entries();
    for (const quint32 address : produced->addresses) {
        const auto isIts = [address](const QString& entry) {
            return addressOfText(addressOfEntry(entry)) == address;
        };
        const auto entry = std::find_if(entries.begin(), entries.end(), isIts);
        if (entry != entries.end())
            addition.listEntries.append(*entry);
    }
    return addition;
}

} // namespace

std::optional<Addition> askForAddition(AddKind kind, int outputs, QWidget* parent)
{
    const QPointer<QWidget> alive(parent);
    const AddPath path = addPath();
    if (!alive)
        return {};
    switch (path) {
    case AddPath::Count:
        return askForCount(kind, outputs, parent);
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
    else if (!addition.listEntries.isEmpty())
        askHost(&Host::AddProcessorsFromIpList, group, addition.listEntries);
    else if (addition.count > 0)
        askHost(&Host::AddProcessors, group, addition.count);
    if (addition.outputs)
        askHost(&Host::SetNewProcessorOutputs, *addition.outputs);
}
