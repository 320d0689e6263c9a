#pragma once

#include "host/workbench/dialogs/FormDialog.h"
#include "host/workbench/project/Project.h"

class ProjectStore;
class QComboBox;
class QListWidget;

/// Edits the texts of the project's device sets and selects the current one.
class DeviceSetsDialog final : public FormDialog
{
    Q_OBJECT

public:
    /// `store` outlives the dialog.
    DeviceSetsDialog(ProjectStore& store, QWidget* parent);

protected:
    QString complete() override;

private:
    void add(const DeviceSet& set);
    void updateCurrent();

    ProjectStore& m_store;
    QListWidget* m_list;  // Qt child
    QComboBox* m_current; // Qt child
    QList<DeviceSet> m_sets;
};
