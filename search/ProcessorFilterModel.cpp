#include "search/ProcessorFilterModel.h"

#include "Interface/ProcessorNode.h"
#include "processortree/NodeType.h"

#include <algorithm>

namespace {

struct Found
{
    qint32 number;
    QModelIndex index;
};

void collectProcessors(const QAbstractItemModel& tree, const QModelIndex& parent,
                       std::vector<Found>& found)
{
    const int rows = tree.rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = tree.index(row, 0, parent);
        if (tree.hasChildren(index))
            collectProcessors(tree, index, found);
        else if (nodeType(index) == NodeProcessor)
            found.push_back({index.data(NodeDataRole).value<ProcessorNode>().number, index});
    }
}

} // namespace

CProcessorFilterModel::CProcessorFilterModel(QObject* parent)
    : QAbstractProxyModel(parent)
{
}

CProcessorFilterModel::~CProcessorFilterModel() = default;

QModelIndex CProcessorFilterModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= columnCount(parent) || parent.isValid())
        return {};
    return createIndex(row, column);
}

QModelIndex CProcessorFilterModel::parent(const QModelIndex& index) const
{
    Q_UNUSED(index)
    return {};
}

int CProcessorFilterModel::rowCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    return static_cast<int>(m_rows.size());
}

int CProcessorFilterModel::columnCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    return sourceModel() ? sourceModel()->columnCount() : 0;
}

QVariant CProcessorFilterModel::data(const QModelIndex& index, int role) const
{
    return sourceModel() ? sourceModel()->data(mapToSource(index), role) : QVariant();
}

Qt::ItemFlags CProcessorFilterModel::flags(const QModelIndex& index) const
{
    return mapToSource(index).flags();
}

void CProcessorFilterModel::setSourceModel(QAbstractItemModel* model)
{
    if (!model)
        return;
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    QAbstractProxyModel::setSourceModel(model);
    connect(model, &QAbstractItemModel::modelReset, this, &CProcessorFilterModel::invalidate);
    connect(model, &QAbstractItemModel::layoutChanged, this, &CProcessorFilterModel::invalidate);
    connect(model, &QAbstractItemModel::columnsInserted, this, &CProcessorFilterModel::invalidate);
    connect(model, &QAbstractItemModel::columnsRemoved, this, &CProcessorFilterModel::invalidate);
    connect(model, &QAbstractItemModel::dataChanged, this, &CProcessorFilterModel::invalidate);
    connect(model, &QAbstractItemModel::rowsInserted, this, &CProcessorFilterModel::onRowsInserted);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &CProcessorFilterModel::onRowsRemoved);
    invalidate();
}

QModelIndex CProcessorFilterModel::mapToSource(const QModelIndex& proxyIndex) const
{
    const int row = proxyIndex.row();
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return {};
    return m_rows[static_cast<std::size_t>(row)];
}

QModelIndex CProcessorFilterModel::mapFromSource(const QModelIndex& sourceIndex) const
{
    const auto found = std::find(m_rows.begin(), m_rows.end(), sourceIndex);
    return found == m_rows.end() ? QModelIndex()
                                 : createIndex(static_cast<int>(found - m_rows.begin()), 0);
}

void CProcessorFilterModel::invalidate()
{
    m_rows.clear();
    std::vector<Found> found;
    collectProcessors(*sourceModel(), QModelIndex(), found);
    std::stable_sort(found.begin(), found.end(), [](const Found& left, const Found& right) {
        return left.number < right.number;
    });
    m_rows.reserve(found.size());
    for (const Found& processor : found)
        m_rows.emplace_back(processor.index);
}

void CProcessorFilterModel::onRowsInserted()
{
    beginResetModel();
    invalidate();
    endResetModel();
    emit rowsAdded();
}

void CProcessorFilterModel::onRowsRemoved()
{
    beginResetModel();
    invalidate();
    endResetModel();
    emit rowsRemed();
}
