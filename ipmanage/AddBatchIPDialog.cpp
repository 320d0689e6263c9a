#include "ipmanage/AddBatchIPDialog.h"

#include "Interface/ProjectLimits.h"
#include "base/IPText.h"
#include "host/widgets/IPLineEdit.h"
#include "host/widgets/SpinBox.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPRun.h"

CAddBatchIPDialog::CAddBatchIPDialog(bool ipManagementMode, QWidget* parent)
    : IPEntryDialog(ipManagementMode, 12, parent)
{
    Init();
    propose({m_start});
}

void CAddBatchIPDialog::OnAccept()
{
    m_addedTexts.clear();
    IPEntryDialog::OnAccept();
}

void CAddBatchIPDialog::InitWidgets()
{
    IPEntryDialog::InitWidgets();
    // Asks the host, which may change the language in its answer, so the labels must exist by now.
    limitCount();
}

void CAddBatchIPDialog::createFields()
{
    m_count = new CSpinBox(this);
    addField(m_count, 50);
    m_start = addAddressField(54);
}

QString CAddBatchIPDialog::title() const
{
    // The IP list uses this title too.
    return tr("Custom add processor");
}

QStringList CAddBatchIPDialog::labels() const
{
    return {tr("Number"), tr("IP address")};
}

QString CAddBatchIPDialog::refusal() const
{
    if (m_start->text().isEmpty())
        return ipEmptyMessage(IPField::Batch);
    return hostRefusal(m_start, IPField::Batch);
}

bool CAddBatchIPDialog::save()
{
    if (!generate())
        return false;
    if (isForIPList())
        HostIPList::save();
    return true;
}

/// Limits the number to the free places. It is at least 1, because a spin box needs a valid range.
void CAddBatchIPDialog::limitCount()
{
    const int room = isForIPList() ? ProjectLimits::kMaxIpEntries - qMax(0, HostIPList::count())
                                   : ProjectLimits::kMaxProcessors - HostIPList::processorCount();
    m_count->setRange(1, qMax(1, room));
}

/// Returns false when the host handler disappeared during the run.
bool CAddBatchIPDialog::generate()
{
    bool complete = true;
    const auto isRejected = [this](quint32 address) {
        return HostIPList::isThere() && HostIPList::rejects(address, nullptr, !isForIPList());
    };
    const auto take = [this, &complete](quint32 address) {
        complete = HostIPList::isThere();
        if (!complete)
            return false;
        if (!isForIPList()) {
            m_addresses.append(address);
            return true;
        }
        const QString text = addressText(address);
        HostIPList::add(text, QString());
        m_addedTexts.append(text);
        return true;
    };
    m_addresses.clear();
    generateIPRun(addressOfText(m_start->text()), m_count->value(), isRejected, take);
    return complete;
}
