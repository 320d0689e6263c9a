#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QItemSelectionModel>

/// Keeps the selection of a processor tree to rows of one kind (NodeTypeRole): processors, groups,
/// or the root alone. Rows without a type cannot be selected. Of what is asked for, only the rows
/// of one kind are taken:
///  - a new selection of one kind is taken as it is;
///  - what is added to a selection, by Ctrl or otherwise, has to be of the selection's kind; where
///    none of it is, the request is refused and nothing changes;
///  - a range from an anchor (Shift, or dragged with the mouse) keeps the kind of the selection
///    that it goes out from;
///  - where nothing says which kind is meant, as in "select all", it is the processors, then the
///    groups, then the root.
/// GUI thread.
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
