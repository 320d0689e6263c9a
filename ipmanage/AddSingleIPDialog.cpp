#include "ipmanage/AddSingleIPDialog.h"

#include "Interface/ProjectLimits.h"
#include "base/IPText.h"
#include "host/widgets/IPLineEdit.h"
#include "ipmanage/HostIPList.h"

#include <QLineEdit>

CAddSingleIPDialog::CAddSingleIPDialog(bool ipManagementMode, QWidget* parent)
    : IPEntryDialog(ipManagementMode, 10, parent)
{
    Init();
    propose({m_address});
}

quint32 CAddSingleIPDialog::address() const
{
    return addressOfText(m_address->text());
}

void CAddSingleIPDialog::createFields()
{
    m_address = addAddressField(54);
    if (isForIPList())
        m_name = addNameField(48);
}

QString CAddSingleIPDialog::title() const
{
    return tr("Add IP");
}

QStringList CAddSingleIPDialog::labels() const
{
    return {tr("IP address"), tr("Name")};
}

QString CAddSingleIPDialog::refusal() const
{
    return hostRefusal(m_address, IPField::Single);
}

bool CAddSingleIPDialog::save()
{
    if (!isForIPList())
        return true;
    if (HostIPList::count() > ProjectLimits::kMaxIpEntries)
        return false;
    HostIPList::add(m_address->text(), m_name->text());
    HostIPList::save();
    return true;
}
