#include "ipmanage/AddSingleIPDialog.h"

#include "host/widgets/IPLineEdit.h"
#include "ipmanage/DefaultAddresses.h"
#include "ipmanage/EntryForm.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPCheckMessages.h"
#include "ipmanage/IPText.h"
#include "plugin/UserMessages.h"

#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

CAddSingleIPDialog::CAddSingleIPDialog(bool ipManagementMode, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_ipManagementMode(ipManagementMode)
{
    Init();
    const QStringList proposed = defaultAddresses(1, ipManagementMode);
    if (!proposed.isEmpty())
        m_address->setText(proposed.first());
}

quint32 CAddSingleIPDialog::address() const
{
    return addressOfText(m_address->text());
}

void CAddSingleIPDialog::OnAccept()
{
    int code = 0;
    if (HostIPList::rejects(address(), &code, !m_ipManagementMode)) {
        tellUser(this, ipCheckMessage(static_cast<quint32>(code), IPField::Single));
        return;
    }
    if (m_ipManagementMode) {
        if (HostIPList::count() > HostIPList::kMaxEntries)
            return;
        HostIPList::add(m_address->text(), m_name->text());
        HostIPList::save();
    }
    done(Accepted);
}

void CAddSingleIPDialog::OnReject()
{
    done(Rejected);
}

void CAddSingleIPDialog::InitWidgets()
{
    SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
    EnableDialogBtn(QDialogButtonBox::Ok, true);
    m_addressLabel = new QLabel(this);
    m_address = new CIPLineEdit(this);
    EntryForm::sizeField(m_address);
    if (m_ipManagementMode) {
        m_nameLabel = new QLabel(this);
        m_name = new QLineEdit(this);
        m_name->setMaxLength(EntryForm::kMaxNameLength);
        EntryForm::sizeField(m_name);
    }
    setFixedSize(EntryForm::kDialogWidth,
                 m_ipManagementMode ? EntryForm::kTwoRowsHeight : EntryForm::kOneRowHeight);
    retranslate();
}

void CAddSingleIPDialog::InitLayout(QBoxLayout* body)
{
    QFormLayout* form = EntryForm::addTo(body, {10, 0, 16, 14});
    EntryForm::addRow(form, m_addressLabel, 54, m_address);
    if (m_name)
        EntryForm::addRow(form, m_nameLabel, 48, m_name);
}

void CAddSingleIPDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

void CAddSingleIPDialog::retranslate()
{
    setWindowTitle(tr("Add IP"));
    EntryForm::name(m_addressLabel, m_address, tr("IP address"));
    if (m_name)
        EntryForm::name(m_nameLabel, m_name, tr("Name"));
}
