#include "ipmanage/AddBothIpDialog.h"

#include "base/IPText.h"
#include "host/widgets/IPLineEdit.h"
#include "ipmanage/HostIPList.h"

CAddBothIpDialog::CAddBothIpDialog(bool ipManagementMode, QWidget* parent)
    : IPEntryDialog(ipManagementMode, 16, parent)
{
    Init();
    propose({m_first, m_second});
}

QList<quint32> CAddBothIpDialog::addresses() const
{
    return {addressOfText(m_first->text()), addressOfText(m_second->text())};
}

void CAddBothIpDialog::createFields()
{
    m_first = addAddressField(48);
    m_second = addAddressField(48);
}

QString CAddBothIpDialog::title() const
{
    return tr("Add IP");
}

QStringList CAddBothIpDialog::labels() const
{
    return {tr("IP 1"), tr("IP 2")};
}

QString CAddBothIpDialog::refusal() const
{
    if (m_first->text().isEmpty())
        return ipEmptyMessage(IPField::First);
    if (m_second->text().isEmpty())
        return ipEmptyMessage(IPField::Second);
    if (m_first->text() == m_second->text())
        return ipSameMessage();
    const QString message = hostRefusal(m_first, IPField::First);
    return message.isEmpty() ? hostRefusal(m_second, IPField::Second) : message;
}

bool CAddBothIpDialog::save()
{
    if (isForIPList()) {
        HostIPList::add(m_first->text(), QString());
        HostIPList::add(m_second->text(), QString());
        HostIPList::save();
    }
    return true;
}
