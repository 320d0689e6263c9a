#include "ipmanage/ModifyIPDialog.h"

#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "host/widgets/IPLineEdit.h"
#include "ipmanage/HostIPList.h"

#include <QLineEdit>

#include <utility>

CModifyIPDialog::CModifyIPDialog(int row, QString name, QWidget* parent)
    : IPEntryDialog(true, 16, parent)
    , m_row(row)
    , m_nameOnOpening(std::move(name))
{
    Init();
    loadEntry();
}

void CModifyIPDialog::InitWidgets()
{
    IPEntryDialog::InitWidgets();
    moveBesideParent();
}

void CModifyIPDialog::createFields()
{
    m_address = addAddressField(54);
    m_name = addNameField(48);
    m_name->setText(m_nameOnOpening);
}

QString CModifyIPDialog::title() const
{
    return tr("Change IP address");
}

QStringList CModifyIPDialog::labels() const
{
    return {tr("IP address"), tr("Name")};
}

QString CModifyIPDialog::refusal() const
{
    const QString text = m_address->text();
    if (text.isEmpty())
        return ipEmptyMessage(IPField::Change);
    // The host reports the entry's own address as used.
    if (text == m_addressOnOpening)
        return hostRefusal(m_address, IPField::Change, IPCHECK_USED);
    return hostRefusal(m_address, IPField::Change);
}

bool CModifyIPDialog::save()
{
    HostIPList::modify(m_row, m_address->text(), m_name->text());
    return true;
}

void CModifyIPDialog::loadEntry()
{
    HostIPList::refresh();
    m_address->setText(addressOfEntry(HostIPList::entry(m_row)));
    // The field removes leading zeros, so the host's own text may differ from it.
    m_addressOnOpening = m_address->text();
}

/// Moves the dialog up and to the left of its parent, so that the entry stays visible.
void CModifyIPDialog::moveBesideParent()
{
    if (const QWidget* parent = parentWidget())
        move(parent->x() - parent->width() + 37, parent->y() - parent->height() + 83);
}
