#include "ipmanage/EntryForm.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QLabel>

namespace EntryForm {

namespace {

constexpr int kFieldWidth = 172;
constexpr int kRowHeight = 24;

} // namespace

void sizeField(QWidget* field)
{
    field->setFixedSize(kFieldWidth, kRowHeight);
}

QFormLayout* addTo(QBoxLayout* body, const QMargins& margins)
{
    auto* form = new QFormLayout;
    form->setContentsMargins(margins);
    form->setSpacing(8);
    form->setLabelAlignment(Qt::AlignRight);
    body->setContentsMargins(0, 12, 0, 0);
    body->addLayout(form);
    return form;
}

void addRow(QFormLayout* form, QLabel* label, int labelWidth, QWidget* field)
{
    label->setFixedSize(labelWidth, kRowHeight);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->addRow(label, field);
}

void name(QLabel* label, QWidget* field, const QString& text)
{
    label->setText(text);
    field->setAccessibleName(text);
}

} // namespace EntryForm
