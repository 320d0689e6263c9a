#pragma once

#include "host/workbench/dialogs/FormDialog.h"
#include "host/workbench/project/Project.h"

class ProjectStore;
class QComboBox;
class QListWidget;

/// The project's device sets, one text each, and which of them is the current one.
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
