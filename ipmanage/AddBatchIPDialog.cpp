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
    m_addresses.clear();
    if (!generate(start))
        return;
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
    m_addressLabel = new QLabel(this);
    m_start = new CIPLineEdit(this);
    EntryForm::sizeField(m_start);
    m_addedTexts.clear();
    setFixedSize(EntryForm::kDialogWidth, EntryForm::kTwoRowsHeight);
    retranslate();
    // Last: the host may change the language in its answer.
    limitCount();
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

/// To what there is room for; one at least, so that the field holds a number.
void CAddBatchIPDialog::limitCount()
{
    constexpr int most = HostIPList::kMaxEntries;
    const int taken = m_ipManagementMode ? HostIPList::count() : HostIPList::processorCount();
    m_count->setRange(1, most - qBound(0, taken, most - 1));
}

/// False when the host was lost on the way.
bool CAddBatchIPDialog::generate(quint32 start)
{
    bool complete = true;
    const auto isRejected = [this](quint32 address) {
        return HostIPList::isThere() && HostIPList::rejects(address, nullptr, !m_ipManagementMode);
    };
    const auto take = [this, &complete](quint32 address) {
        complete = HostIPList::isThere();
        if (!complete)
            return false;
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
    return complete;
}

void CAddBatchIPDialog::retranslate()
{
    // The title is the same for addresses of the IP list.
    setWindowTitle(tr("Custom add processor"));
    EntryForm::name(m_countLabel, m_count, tr("Number"));
    EntryForm::name(m_addressLabel, m_start, tr("IP address"));
}
