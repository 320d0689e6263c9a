#include "ipmanage/EntryForm.h"

#include <QBoxLayout>
#include <QFont>
#include <QFontMetrics>
#include <QFormLayout>
#include <QLabel>

namespace EntryForm {

namespace {

constexpr int kFieldWidth = 172;
constexpr int kRowHeight = 24;

// Per cent of a font's width; below that, nobody reads with pleasure.
constexpr int kLeastStretch = 60;

/// Brings the text of `label` within its width; not every font is as narrow as the forms are.
void condense(QLabel* label)
{
    label->setFont(QFont());
    QFont font = label->font();
    const auto isTooWide = [label] {
        return label->fontMetrics().horizontalAdvance(label->text()) > label->maximumWidth();
    };
    for (int stretch = QFont::Unstretched; isTooWide() && stretch > kLeastStretch; --stretch) {
        font.setStretch(stretch);
        label->setFont(font);
    }
}

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
    condense(label);
    form->addRow(label, field);
}

void name(QLabel* label, QWidget* field, const QString& text)
{
    label->setText(text);
    condense(label);
    field->setAccessibleName(text);
}

} // namespace EntryForm
