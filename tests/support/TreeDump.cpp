#include "tests/support/TreeDump.h"

#include "Interface/ProcessorNode.h"

#include <QAbstractItemModel>
#include <QStringList>

namespace {

QString dumpRows(const QAbstractItemModel& model, const QModelIndex& parent)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        QString text = index.data().toString();
        if (index.data(NodeTypeRole).toInt() != NodeProcessor)
            text += QLatin1Char('[') + dumpRows(model, index) + QLatin1Char(']');
        rows.append(text);
    }
    return rows.join(QLatin1Char(','));
}

} // namespace

QString dumpTree(const QAbstractItemModel& model)
{
    return dumpRows(model, QModelIndex());
}
