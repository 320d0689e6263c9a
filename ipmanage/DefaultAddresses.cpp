#include "ipmanage/DefaultAddresses.h"

#include "base/IPText.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPProposal.h"
#include "ipmanage/LocalAddresses.h"

QStringList defaultAddresses(int wanted, bool ipManagementMode)
{
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
