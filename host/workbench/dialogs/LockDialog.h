#pragma once

#include "host/workbench/dialogs/FormDialog.h"

class QComboBox;
class QSpinBox;

/// Asks for the key of a lock and for what to do with that lock.
class LockDialog final : public FormDialog
{
    Q_OBJECT

public:
    enum What { Lock, Unlock, Apply };

    explicit LockDialog(QWidget* parent);

signals:
    void chosen(int key, LockDialog::What what);

protected:
    QString complete() override;

private:
    QSpinBox* m_key;   // Qt child
    QComboBox* m_what; // Qt child
};
