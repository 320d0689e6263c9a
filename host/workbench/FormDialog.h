#pragma once

#include <QDialog>

class QDialogButtonBox;
class QFormLayout;
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
    QFormLayout* form() const { return m_form; }
    QDialogButtonBox* buttons() const { return m_buttons; }

    /// Adds a row; the label names `field` for screen readers too.
    void addField(const QString& label, QWidget* field);

    /// Takes over what was entered; a text says what is wrong with it.
    virtual QString complete() = 0;

private:
    QFormLayout* m_form;         // of the dialog's layout
    QLabel* m_objection;         // Qt child
    QDialogButtonBox* m_buttons; // Qt child
};
