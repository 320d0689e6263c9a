#include "ipmanage/ModifyIPDialog.h"

#include "Interface/IPStatusCodes.h"
#include "host/widgets/IPLineEdit.h"
#include "ipmanage/EntryForm.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPCheckMessages.h"
#include "ipmanage/IPText.h"
#include "plugin/UserMessages.h"

#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

#include <utility>

CModifyIPDialog::CModifyIPDialog(int row, QString name, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_row(row)
    , m_nameOnOpening(std::move(name))
{
    Init();
    loadEntry();
}

void CModifyIPDialog::OnAccept()
{
    if (m_address->text().isEmpty()) {
        tellUser(this, ipEmptyMessage(IPField::Change));
        return;
    }
    int code = 0;
    if (isRefused(&code)) {
        tellUser(this, ipCheckMessage(static_cast<quint32>(code), IPField::Change));
        return;
    }
    HostIPList::modify(m_row, m_address->text(), m_name->text());
    done(Accepted);
}

void CModifyIPDialog::OnReject()
{
    done(Rejected);
}

void CModifyIPDialog::InitWidgets()
{
    SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
    m_addressLabel = new QLabel(this);
    m_address = new CIPLineEdit(this);
    EntryForm::sizeField(m_address);
    m_nameLabel = new QLabel(this);
    m_name = new QLineEdit(this);
    m_name->setMaxLength(EntryForm::kMaxNameLength);
    m_name->setText(m_nameOnOpening);
    EntryForm::sizeField(m_name);
    setFixedSize(EntryForm::kDialogWidth, EntryForm::kTwoRowsHeight);
    moveBesideParent();
    retranslate();
}

void CModifyIPDialog::InitLayout(QBoxLayout* body)
{
    QFormLayout* form = EntryForm::addTo(body, {16, 0, 16, 14});
    EntryForm::addRow(form, m_addressLabel, 54, m_address);
    EntryForm::addRow(form, m_nameLabel, 48, m_name);
}

void CModifyIPDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

/// The entry's own address counts as used too; leaving it as it is must be possible.
bool CModifyIPDialog::isRefused(int* code) const
{
    const QString text = m_address->text();
    if (!HostIPList::rejects(addressOfText(text), code, false))
        return false;
    return static_cast<quint32>(*code) != IPCHECK_USED || text != m_addressOnOpening;
}

void CModifyIPDialog::loadEntry()
{
    HostIPList::refresh();
    m_address->setText(addressOfEntry(HostIPList::entry(m_row)));
    // As the field writes it: without leading zeros.
    m_addressOnOpening = m_address->text();
}

/// Up and to the left of the parent, so that the entry being changed stays in sight.
void CModifyIPDialog::moveBesideParent()
{
    if (const QWidget* parent = parentWidget())
        move(parent->x() - parent->width() + 37, parent->y() - parent->height() + 83);
}

void CModifyIPDialog::retranslate()
{
    setWindowTitle(tr("Change IP address"));
    EntryForm::name(m_addressLabel, m_address, tr("IP address"));
    EntryForm::name(m_nameLabel, m_name, tr("Name"));
}
