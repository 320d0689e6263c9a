#include "host/workbench/dialogs/LockDialog.h"

#include <QComboBox>
#include <QSpinBox>

namespace {

constexpr int kLargestKey = 9999;

} // namespace

LockDialog::LockDialog(QWidget* parent)
    : FormDialog(tr("Lock by key"), parent)
    , m_key(new QSpinBox(this))
    , m_what(new QComboBox(this))
{
    m_key->setRange(-kLargestKey, kLargestKey);
    m_what->addItems({tr("Lock"), tr("Unlock"), tr("Apply")});
    addField(tr("&Key"), m_key);
    addField(tr("&Do"), m_what);
    m_key->setFocus();
    m_key->selectAll();
}

QString LockDialog::complete()
{
    emit chosen(m_key->value(), static_cast<What>(m_what->currentIndex()));
    return {};
}
