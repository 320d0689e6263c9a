#include "ipmanage/DefaultAddresses.h"

#include "base/GuiThread.h"
#include "base/IPText.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPProposal.h"
#include "ipmanage/LocalAddresses.h"

QStringList defaultAddresses(int wanted, bool ipManagementMode)
{
    Q_ASSERT(isGuiThread());
    Q_ASSERT(wanted == 1 || wanted == 2);
    if (ipManagementMode)
        HostIPList::refresh();
    const auto isRejected = [ipManagementMode](quint32 address) {
        return HostIPList::rejects(address, nullptr, !ipManagementMode);
    };
    QStringList texts;
    const QList<quint32> proposed =
        proposeIPAddresses(proposalBase(localAddresses()), wanted, isRejected);
    for (const quint32 address : proposed)
        texts.append(addressText(address));
    return texts;
}
