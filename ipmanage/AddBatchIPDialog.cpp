#include "ipmanage/AddBatchIPDialog.h"

#include "host/widgets/IPLineEdit.h"
#include "host/widgets/SpinBox.h"
#include "ipmanage/DefaultAddresses.h"
#include "ipmanage/EntryForm.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPCheckMessages.h"
#include "ipmanage/IPRun.h"
#include "ipmanage/IPText.h"
#include "plugin/UserMessages.h"

#include <QEvent>
#include <QFormLayout>
#include <QLabel>

CAddBatchIPDialog::CAddBatchIPDialog(bool ipManagementMode, QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
    , m_ipManagementMode(ipManagementMode)
{
    Init();
    const QStringList proposed = defaultAddresses(1, ipManagementMode);
    if (!proposed.isEmpty())
        m_start->setText(proposed.first());
}

void CAddBatchIPDialog::OnAccept()
{
    m_addedTexts.clear();
    if (m_start->text().isEmpty()) {
        tellUser(this, ipEmptyMessage(IPField::Batch));
        return;
    }
    const quint32 start = addressOfText(m_start->text());
    int code = 0;
    if (HostIPList::rejects(start, &code, !m_ipManagementMode)) {
        tellUser(this, ipCheckMessage(static_cast<quint32>(code), IPField::Batch));
        return;
    }
    generate(start);
    if (m_ipManagementMode)
        HostIPList::save();
    done(Accepted);
}

void CAddBatchIPDialog::OnReject()
{
    done(Rejected);
}

void CAddBatchIPDialog::InitWidgets()
{
    SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
    m_countLabel = new QLabel(this);
    m_count = new CSpinBox(this);
    EntryForm::sizeField(m_count);
    const int taken = m_ipManagementMode ? HostIPList::count() : HostIPList::processorCount();
    m_count->setRange(1, qBound(1, HostIPList::kMaxEntries - taken, HostIPList::kMaxEntries));
    m_addressLabel = new QLabel(this);
    m_start = new CIPLineEdit(this);
    EntryForm::sizeField(m_start);
    m_addedTexts.clear();
    setFixedSize(EntryForm::kDialogWidth, EntryForm::kTwoRowsHeight);
    retranslate();
}

void CAddBatchIPDialog::InitLayout(QBoxLayout* body)
{
    QFormLayout* form = EntryForm::addTo(body, {12, 0, 16, 14});
    EntryForm::addRow(form, m_countLabel, 50, m_count);
    EntryForm::addRow(form, m_addressLabel, 54, m_start);
}

void CAddBatchIPDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

void CAddBatchIPDialog::generate(quint32 start)
{
    const auto isRejected = [this](quint32 address) {
        return HostIPList::rejects(address, nullptr, !m_ipManagementMode);
    };
    const auto take = [this](quint32 address) {
        if (!m_ipManagementMode) {
            m_addresses.append(address);
            return true;
        }
        const QString text = addressText(address);
        HostIPList::add(text, QString());
        m_addedTexts.append(text);
        return true;
    };
    generateIPRun(start, m_count->value(), isRejected, take);
}

void CAddBatchIPDialog::retranslate()
{
    // The title is the same for addresses of the IP list.
    setWindowTitle(tr("Custom add processor"));
    EntryForm::name(m_countLabel, m_count, tr("Number"));
    EntryForm::name(m_addressLabel, m_start, tr("IP address"));
}
