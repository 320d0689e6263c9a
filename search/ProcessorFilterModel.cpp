#include "search/ProcessorFilterModel.h"

#include "Interface/ProcessorNode.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorTreeModel.h"
#include "processortree/RecordCell.h"
#include "search/ProcessorFilterProxyModel.h"

#include <algorithm>

namespace {

using Rows = std::vector<QPersistentModelIndex>;

struct Found
{
    qint32 number;
    QModelIndex index;
};

/// The tree that a list is made of. Over the processor tree and its filter rows are read at the
/// tree's items: copies of the records would cost more than all else that the list does.
class Branches final
{
public:
    explicit Branches(const QAbstractItemModel& source)
        : m_source(source)
        , m_filter(qobject_cast<const CProcessorFilterProxyModel*>(&source))
        , m_tree(m_filter ? qobject_cast<const CProcessorTreeModel*>(m_filter->sourceModel())
                          : nullptr)
    {
    }

    /// The processors below `parent` that have no rows below themselves, in the tree's order.
    void collect(const QModelIndex& parent, std::vector<Found>& found) const
    {
        const int rows = m_source.rowCount(parent);
        for (int row = 0; row < rows; ++row) {
            const QModelIndex index = m_source.index(row, 0, parent);
            const QStandardItem* item = itemAt(index);
            if (hasRows(index, item))
                collect(index, found);
            else if ((item ? nodeType(*item) : nodeType(index)) == NodeProcessor)
                found.push_back({number(index, item), index});
        }
    }

    /// A filter takes up the rows below a row only when it is asked for them, and says nothing of
    /// those it never took up. So it is asked at once, although the list is read later, or never.
    void takeUp(const QModelIndex& parent, int first, int last) const
    {
        for (int row = first; row <= last; ++row) {
            const QModelIndex index = m_source.index(row, 0, parent);
            if (hasRows(index, itemAt(index)))
                takeUp(index, 0, m_source.rowCount(index) - 1);
        }
    }

private:
    const QStandardItem* itemAt(const QModelIndex& index) const
    {
        return m_tree ? m_tree->itemFromIndex(m_filter->mapToSource(index)) : nullptr;
    }

    bool hasRows(const QModelIndex& index, const QStandardItem* item) const
    {
        return (!item || item->hasChildren()) && m_source.hasChildren(index);
    }

    static qint32 number(const QModelIndex& index, const QStandardItem* item)
    {
        return recordKey(item ? item->data(NodeDataRole) : index.data(NodeDataRole)).number;
    }

    const QAbstractItemModel& m_source;
    const CProcessorFilterProxyModel* m_filter;
    const CProcessorTreeModel* m_tree; // null when the source is anything else
};

Rows sortedProcessors(const QAbstractItemModel& source)
{
    std::vector<Found> found;
    Branches(source).collect(QModelIndex(), found);
    std::stable_sort(found.begin(), found.end(), [](const Found& left, const Found& right) {
        return left.number < right.number;
    });
    Rows rows;
    rows.reserve(found.size());
    for (const Found& processor : found)
        rows.emplace_back(processor.index);
    return rows;
}

QModelIndex rowAt(const Rows& rows, int row)
{
    if (row < 0 || row >= static_cast<int>(rows.size()))
        return {};
    const QModelIndex& index = rows[static_cast<std::size_t>(row)];
    return index;
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
    return static_cast<int>(rows().size());
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
    connect(model, &QAbstractItemModel::dataChanged, this, &CProcessorFilterModel::onDataChanged);
    // Not kept through a change of which views hear: the source would have to lead every index.
    const auto dropRows = [this] { m_rows.reset(); };
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, dropRows);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, dropRows);
    connect(model, &QAbstractItemModel::rowsInserted, this, &CProcessorFilterModel::onRowsInserted);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &CProcessorFilterModel::onRowsRemoved);
    connect(model, &QObject::destroyed, this, &CProcessorFilterModel::refreshRows);
    invalidate();
}

QModelIndex CProcessorFilterModel::mapToSource(const QModelIndex& proxyIndex) const
{
    return rowAt(rows(), proxyIndex.row());
}

QModelIndex CProcessorFilterModel::mapFromSource(const QModelIndex& sourceIndex) const
{
    const Rows& all = rows();
    const auto found = std::find(all.begin(), all.end(), sourceIndex);
    if (!sourceIndex.isValid() || found == all.end())
        return {};
    return createIndex(static_cast<int>(found - all.begin()), 0);
}

void CProcessorFilterModel::invalidate()
{
    refreshRows();
    if (sourceModel())
        Branches(*sourceModel()).takeUp(QModelIndex(), 0, sourceModel()->rowCount() - 1);
}

const std::vector<QPersistentModelIndex>& CProcessorFilterModel::rows() const
{
    // The source announces its rows one stretch after the other; the list is made when they are
    // all there and somebody looks.
    if (!m_rows)
        m_rows = sourceModel() ? sortedProcessors(*sourceModel()) : Rows();
    return *m_rows;
}

void CProcessorFilterModel::refreshRows()
{
    const QModelIndexList held = persistentIndexList();
    if (!m_rows || held.isEmpty()) {
        m_rows.reset();
        return;
    }
    // No signal tells those who hold an index, so it follows its processor, or becomes invalid.
    const Rows before = std::move(*m_rows);
    m_rows.reset();
    QModelIndexList moved;
    moved.reserve(held.size());
    for (const QModelIndex& index : held)
        moved.append(mapFromSource(rowAt(before, index.row())));
    changePersistentIndexList(held, moved);
}

void CProcessorFilterModel::onDataChanged(const QModelIndex& topLeft,
                                          const QModelIndex& bottomRight, const QVector<int>& roles)
{
    Q_UNUSED(topLeft)
    Q_UNUSED(bottomRight)
    if (roles.isEmpty() || roles.contains(NodeDataRole) || roles.contains(NodeTypeRole))
        refreshRows();
}

void CProcessorFilterModel::onRowsInserted(const QModelIndex& parent, int first, int last)
{
    beginResetModel();
    m_rows.reset();
    Branches(*sourceModel()).takeUp(parent, first, last);
    endResetModel();
    emit rowsAdded();
}

void CProcessorFilterModel::onRowsRemoved()
{
    beginResetModel();
    m_rows.reset();
    endResetModel();
    emit rowsRemed();
}
