#include "ipmanage/AddBothIpDialog.h"

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

#include <utility>

CAddBothIpDialog::CAddBothIpDialog(bool ipManagementMode, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_ipManagementMode(ipManagementMode)
{
    Init();
    const QStringList proposed = defaultAddresses(2, ipManagementMode);
    m_first->setText(proposed.value(0));
    m_second->setText(proposed.value(1));
}

QList<quint32> CAddBothIpDialog::addresses() const
{
    return {addressOfText(m_first->text()), addressOfText(m_second->text())};
}

void CAddBothIpDialog::OnAccept()
{
    const QString message = refusal();
    if (!message.isEmpty()) {
        tellUser(this, message);
        return;
    }
    if (m_ipManagementMode) {
        HostIPList::add(m_first->text(), QString());
        HostIPList::add(m_second->text(), QString());
        HostIPList::save();
    }
    done(Accepted);
}

void CAddBothIpDialog::OnReject()
{
    done(Rejected);
}

void CAddBothIpDialog::InitWidgets()
{
    SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
    EnableDialogBtn(QDialogButtonBox::Ok, true);
    m_firstLabel = new QLabel(this);
    m_first = new CIPLineEdit(this);
    EntryForm::sizeField(m_first);
    m_secondLabel = new QLabel(this);
    m_second = new CIPLineEdit(this);
    EntryForm::sizeField(m_second);
    setFixedSize(EntryForm::kDialogWidth, EntryForm::kTwoRowsHeight);
    retranslate();
}

void CAddBothIpDialog::InitLayout(QBoxLayout* body)
{
    QFormLayout* form = EntryForm::addTo(body, {16, 0, 16, 14});
    EntryForm::addRow(form, m_firstLabel, 48, m_first);
    EntryForm::addRow(form, m_secondLabel, 48, m_second);
}

void CAddBothIpDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

/// Why the addresses cannot be taken; empty when they can.
QString CAddBothIpDialog::refusal() const
{
    const std::pair<const CIPLineEdit*, IPField> fields[] = {{m_first, IPField::First},
                                                             {m_second, IPField::Second}};
    for (const auto& [edit, field] : fields) {
        if (edit->text().isEmpty())
            return ipEmptyMessage(field);
    }
    if (m_first->text() == m_second->text())
        return ipSameMessage();
    for (const auto& [edit, field] : fields) {
        int code = 0;
        if (HostIPList::rejects(addressOfText(edit->text()), &code, !m_ipManagementMode))
            return ipCheckMessage(static_cast<quint32>(code), field);
    }
    return {};
}

void CAddBothIpDialog::retranslate()
{
    setWindowTitle(tr("Add IP"));
    EntryForm::name(m_firstLabel, m_first, tr("IP 1"));
    EntryForm::name(m_secondLabel, m_second, tr("IP 2"));
}
