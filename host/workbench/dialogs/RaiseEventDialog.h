#pragma once

#include "host/workbench/dialogs/FormDialog.h"
#include "host/workbench/events/HostEvent.h"
#include "host/workbench/project/Project.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// Raises any event with any argument, including arguments of a wrong type.
class RaiseEventDialog final : public FormDialog
{
    Q_OBJECT

public:
    /// `project` supplies device sets and records, `selected` the proposed identities.
    RaiseEventDialog(Project project, const QList<QUuid>& selected, QWidget* parent);

signals:
    void chosen(const HostEvent& event);

protected:
    QString complete() override;

private:
    void followNumber();
    void followType();

    Project m_project;
    QList<QUuid> m_selected;
    QSpinBox* m_number; // Qt child
    QLabel* m_name;     // Qt child
    QComboBox* m_type;  // Qt child
    QLineEdit* m_value; // Qt child
};
