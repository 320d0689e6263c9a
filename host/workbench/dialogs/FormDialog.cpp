#include "host/workbench/dialogs/FormDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kMinimumWidth = 368; ///< Without the margins.

} // namespace

FormDialog::FormDialog(const QString& title, QWidget* parent)
    : QDialog(parent)
    , m_columns(new QHBoxLayout)
    , m_objection(new QLabel(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    m_columns->setSpacing(32);
    startColumn();
    m_objection->setWordWrap(true);
    m_objection->setTextFormat(Qt::PlainText);
    m_objection->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    // A minimum of the dialog's own would let it cut its fields.
    layout->addStrut(kMinimumWidth);
    layout->addLayout(m_columns);
    layout->addStretch(1);
    layout->addWidget(m_objection);
    layout->addWidget(m_buttons);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &FormDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &FormDialog::reject);
}

void FormDialog::accept()
{
    const QString objection = complete();
    m_objection->setText(objection);
    m_objection->setVisible(!objection.isEmpty());
    if (objection.isEmpty())
        QDialog::accept();
}

void FormDialog::startColumn()
{
    m_form = new QFormLayout;
    m_form->setHorizontalSpacing(16);
    m_form->setVerticalSpacing(8);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_columns->addLayout(m_form, 1);
}

void FormDialog::addField(const QString& label, QWidget* field)
{
    QString plain = label;
    field->setAccessibleName(plain.remove(QLatin1Char('&')));
    m_form->addRow(label, field);
}
