#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QItemSelectionModel>

/// Keeps the selection of a processor tree to rows of one kind: processors, groups, or the root
/// alone. GUI thread.
class HOSTWIDGETS_EXPORT CProcessorItemSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    explicit CProcessorItemSelectionModel(QAbstractItemModel* model, QObject* parent = nullptr);

    using QItemSelectionModel::select;

public slots:
    void select(const QItemSelection& selection,
                QItemSelectionModel::SelectionFlags command) override;
};
