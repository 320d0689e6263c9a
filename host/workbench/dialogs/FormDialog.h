#pragma once

#include <QDialog>

class QDialogButtonBox;
class QFormLayout;
class QHBoxLayout;
class QLabel;

/// A dialog of labelled fields with OK and Cancel. Deletes itself when it is closed.
class FormDialog : public QDialog
{
    Q_OBJECT

public:
    FormDialog(const QString& title, QWidget* parent);

    /// Closes the dialog if complete() returns no error, else shows the error.
    void accept() override;

protected:
    /// Returns the layout of the current column.
    QFormLayout* form() const { return m_form; }
    QDialogButtonBox* buttons() const { return m_buttons; }

    /// Starts a new column; later fields are added to it.
    void startColumn();

    /// Adds a row. The label also becomes the accessible name of `field`.
    void addField(const QString& label, QWidget* field);

    /// Applies the input, or returns a text that says what is wrong with it.
    virtual QString complete() = 0;

private:
    QHBoxLayout* m_columns;        // of the dialog's layout
    QFormLayout* m_form = nullptr; // of m_columns
    QLabel* m_objection;           // Qt child
    QDialogButtonBox* m_buttons;   // Qt child
};
