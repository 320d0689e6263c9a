#pragma once

#include "host/workbench/dialogs/FormDialog.h"
#include "host/workbench/project/Project.h"

class ProjectStore;
class QComboBox;
class QPushButton;
class QTreeWidget;

/// Edits the fields of the project's device sets and selects the current one.
class DeviceSetsDialog final : public FormDialog
{
    Q_OBJECT

public:
    /// `store` outlives the dialog.
    DeviceSetsDialog(ProjectStore& store, QWidget* parent);

protected:
    QString complete() override;

private:
    void buildList();
    void buildButtons();
    void add(const DeviceSet& set);
    void addNew();
    void remove();
    void updateCurrent(const QUuid& wanted);
    QUuid current() const;

    ProjectStore& m_store;
    QTreeWidget* m_list;  // Qt child
    QComboBox* m_current; // Qt child
    QPushButton* m_add;   // Qt child
    QList<DeviceSet> m_sets;
    QString m_givenUp; ///< Why the last text was refused, if it was given up.
};
