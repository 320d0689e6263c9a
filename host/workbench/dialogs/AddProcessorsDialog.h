#pragma once

#include "host/workbench/dialogs/FormDialog.h"

#include <QUuid>

class ProjectStore;
class QComboBox;
class QLineEdit;
class QSpinBox;

/// Adds several processors, with consecutive addresses from a first one on or without addresses.
class AddProcessorsDialog final : public FormDialog
{
    Q_OBJECT

public:
    /// `group` is preselected. `store` outlives the dialog.
    AddProcessorsDialog(ProjectStore& store, const QUuid& group, QWidget* parent);

protected:
    QString complete() override;

private:
    ProjectStore& m_store;
    QComboBox* m_group;   // Qt child
    QSpinBox* m_count;    // Qt child
    QLineEdit* m_address; // Qt child
};
