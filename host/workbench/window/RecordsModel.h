#pragma once

#include "host/workbench/project/Project.h"

#include <QStandardItemModel>

/// The project's records as the host holds them: groups with their processors, then the processors
/// directly under the root, in the project's order.
class RecordsModel final : public QStandardItemModel
{
    Q_OBJECT

public:
    enum Column {
        NameColumn,
        NumberColumn,
        AddressColumn,
        StateColumn,
        AddressedByColumn,
        RedundancyColumn,
        MonitorColumn,
        FrontPanelColumn,
        ColumnCount
    };
    enum Role { IdRole = Qt::UserRole + 1, IsGroupRole };

    explicit RecordsModel(QObject* parent = nullptr);

    /// Shows `project` in the current language.
    void show(const Project& project);

    /// Returns the row of a group or processor, or an invalid index.
    QModelIndex indexOf(const QUuid& id) const;

private:
    QList<QStandardItem*> processorRow(const ProcessorNode& node, bool isCurrent, bool isLit) const;
};
