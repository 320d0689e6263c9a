#include "search/ProcessorFilterModel.h"

#include "base/NodeType.h"
#include "base/RecordCell.h"
#include "search/FoundProcessors.h"
#include "search/ProcessorFilterProxyModel.h"

#include <algorithm>

namespace {

struct Found
{
    qint32 number;
    QModelIndex index;
};

/// Appends the processors below `parent` that have no children, in the order of the tree.
void collect(const QAbstractItemModel& source, const QModelIndex& parent, std::vector<Found>& found)
{
    for (int row = 0; row < source.rowCount(parent); ++row) {
        const QModelIndex index = source.index(row, 0, parent);
        if (source.hasChildren(index))
            collect(source, index, found);
        else if (nodeType(index) == NodeProcessor)
            found.push_back({recordKey(index.data(NodeDataRole)).number, index});
    }
}

std::vector<Found> processors(const QAbstractItemModel& source)
{
    std::vector<Found> found;
    collect(source, {}, found);
    std::stable_sort(found.begin(), found.end(), [](const Found& left, const Found& right) {
        return left.number < right.number;
    });
    return found;
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
    // Asking the filter would make it map the tree.
    if (found() && found()->tree())
        return found()->tree()->columnCount();
    return sourceModel() ? sourceModel()->columnCount() : 0;
}

QVariant CProcessorFilterModel::data(const QModelIndex& index, int role) const
{
    return sourceModel() ? readableIndex(index).data(role) : QVariant();
}

Qt::ItemFlags CProcessorFilterModel::flags(const QModelIndex& index) const
{
    return readableIndex(index).flags();
}

void CProcessorFilterModel::setSourceModel(QAbstractItemModel* model)
{
    if (!model)
        return;
    if (model == sourceModel()) {
        invalidate();
        return;
    }
    if (found())
        disconnect(found(), nullptr, this, nullptr);
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    QAbstractProxyModel::setSourceModel(model);
    m_filter = qobject_cast<CProcessorFilterProxyModel*>(model);
    connectSource(*model);
    connectRows();
    invalidate();
}

QModelIndex CProcessorFilterModel::mapToSource(const QModelIndex& proxyIndex) const
{
    const Row* row = rowAt(proxyIndex);
    if (!row)
        return {};
    return row->item && m_filter ? m_filter->mapFromSource(row->item->index())
                                 : QModelIndex(row->index);
}

QModelIndex CProcessorFilterModel::mapFromSource(const QModelIndex& sourceIndex) const
{
    if (!sourceIndex.isValid() || sourceIndex.model() != sourceModel())
        return {};
    Row wanted;
    if (found() && found()->tree())
        wanted.item = found()->tree()->itemFromIndex(m_filter->mapToSource(sourceIndex));
    else
        wanted.index = sourceIndex;
    return indexOf(wanted);
}

void CProcessorFilterModel::invalidate()
{
    if (found())
        m_filter->found()->refresh();
    else
        refresh();
}

void CProcessorFilterModel::connectSource(const QAbstractItemModel& source)
{
    connect(&source, &QAbstractItemModel::modelReset, this, [this] {
        connectRows(); // the filter may have another source now
        refresh();
    });
    const auto refreshOwn = [this] {
        if (!found())
            refresh();
    };
    connect(&source, &QAbstractItemModel::layoutChanged, this, refreshOwn);
    connect(&source, &QAbstractItemModel::columnsInserted, this, refreshOwn);
    connect(&source, &QAbstractItemModel::columnsRemoved, this, refreshOwn);
    connect(&source, &QAbstractItemModel::dataChanged, this, refreshOwn);
    connect(&source, &QObject::destroyed, this, &CProcessorFilterModel::refresh);
}

/// CFoundProcessors announces its own changes, so the signals of the source are not used for it.
void CProcessorFilterModel::connectRows()
{
    for (const QMetaObject::Connection& connection : m_rowConnections)
        disconnect(connection);
    if (found()) {
        m_rowConnections = {
            connect(found(), &CFoundProcessors::changed, this, &CProcessorFilterModel::reset),
            connect(found(), &CFoundProcessors::refreshed, this, &CProcessorFilterModel::refresh)};
    } else if (sourceModel()) {
        m_rowConnections = {connect(sourceModel(), &QAbstractItemModel::rowsInserted, this,
                                    [this] { reset(false, true); }),
                            connect(sourceModel(), &QAbstractItemModel::rowsRemoved, this,
                                    [this] { reset(true, false); })};
    }
}

/// No signal is emitted, so persistent indexes are moved to the new rows of their processors, or
/// become invalid.
void CProcessorFilterModel::refresh()
{
    const QModelIndexList held = persistentIndexList();
    if (held.isEmpty()) {
        takeRows();
        return;
    }
    const std::vector<Row> before = m_rows;
    takeRows();
    QModelIndexList moved;
    for (const QModelIndex& index : held) {
        const auto row = static_cast<std::size_t>(index.row());
        moved.append(row < before.size() ? indexOf(before[row]) : QModelIndex());
    }
    changePersistentIndexList(held, moved);
}

void CProcessorFilterModel::reset(bool haveGone, bool haveCome)
{
    const QPointer<CProcessorFilterModel> alive(this);
    beginResetModel();
    takeRows();
    endResetModel();
    if (haveGone && alive)
        emit rowsRemed();
    if (haveCome && alive)
        emit rowsAdded();
}

const CFoundProcessors* CProcessorFilterModel::found() const
{
    return m_filter ? m_filter->found() : nullptr;
}

void CProcessorFilterModel::takeRows()
{
    m_rows.clear();
    if (found()) {
        for (QStandardItem* item : found()->items())
            m_rows.push_back({item, {}});
    } else if (sourceModel()) {
        for (const Found& processor : processors(*sourceModel()))
            m_rows.push_back({nullptr, processor.index});
    }
}

const CProcessorFilterModel::Row* CProcessorFilterModel::rowAt(const QModelIndex& index) const
{
    const auto row = static_cast<std::size_t>(index.row());
    return index.isValid() && row < m_rows.size() ? &m_rows[row] : nullptr;
}

QModelIndex CProcessorFilterModel::indexOf(const Row& row) const
{
    const auto found = std::find(m_rows.begin(), m_rows.end(), row);
    return found == m_rows.end() ? QModelIndex()
                                 : createIndex(static_cast<int>(found - m_rows.begin()), 0);
}

/// Returns the index to read a row from. The item's own index returns the same data as the filter's
/// without making the filter map its branch.
QModelIndex CProcessorFilterModel::readableIndex(const QModelIndex& index) const
{
    const Row* row = rowAt(index);
    if (!row)
        return {};
    return row->item ? row->item->index() : QModelIndex(row->index);
}
