#include "host/widgets/ProcessorItemSelectionModel.h"

CProcessorItemSelectionModel::CProcessorItemSelectionModel(QAbstractItemModel* model,
                                                           QObject* parent)
    : QItemSelectionModel(model, parent)
{
}

void CProcessorItemSelectionModel::select(const QItemSelection& selection,
                                          QItemSelectionModel::SelectionFlags command)
{
    QItemSelectionModel::select(selection, command);
}
