#pragma once

#include <QDialog>

class QDialogButtonBox;
class QFormLayout;
class QHBoxLayout;
class QLabel;

/// A dialog of labelled fields with OK and Cancel. Destroys itself when it is closed.
class FormDialog : public QDialog
{
    Q_OBJECT

public:
    FormDialog(const QString& title, QWidget* parent);

    /// Accepts when complete() has nothing to object to; else shows the objection.
    void accept() override;

protected:
    /// The column that fields are added to.
    QFormLayout* form() const { return m_form; }
    QDialogButtonBox* buttons() const { return m_buttons; }

    /// What is added from here on stands beside what is there.
    void startColumn();

    /// Adds a row; the label names `field` for screen readers too.
    void addField(const QString& label, QWidget* field);

    /// Takes over what was entered; a text says what is wrong with it.
    virtual QString complete() = 0;

private:
    QHBoxLayout* m_columns;        // of the dialog's layout
    QFormLayout* m_form = nullptr; // of m_columns
    QLabel* m_objection;           // Qt child
    QDialogButtonBox* m_buttons;   // Qt child
};
