#pragma once

#include <QMargins>

class QBoxLayout;
class QFormLayout;
class QLabel;
class QWidget;

/// What the dialogs that enter addresses look like inside: a form of a few rows, label at the left,
/// field at the right.
namespace EntryForm {

constexpr int kDialogWidth = 260;
constexpr int kOneRowHeight = 114;
constexpr int kTwoRowsHeight = 146;

/// Longest name of an entry, in characters.
constexpr int kMaxNameLength = 32;

/// Makes `field` as large as every field of these dialogs.
void sizeField(QWidget* field);

/// An empty form in the dialog's body.
QFormLayout* addTo(QBoxLayout* body, const QMargins& margins);

/// Appends a row. `label` is the field's buddy and its accessible name, once it has a text.
void addRow(QFormLayout* form, QLabel* label, int labelWidth, QWidget* field);

/// Gives `label` its text, and `field` the same as its accessible name.
void name(QLabel* label, QWidget* field, const QString& text);

} // namespace EntryForm
