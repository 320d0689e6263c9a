#include "search/ProcessorFilterProxyModel.h"

#include "Interface/ProcessorNode.h"
#include "ipmanage/IPText.h"

CProcessorFilterProxyModel::CProcessorFilterProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
    setFilterCaseSensitivity(Qt::CaseInsensitive);
    setDynamicSortFilter(true);
}

CProcessorFilterProxyModel::~CProcessorFilterProxyModel() = default;

void CProcessorFilterProxyModel::setSourceModel(QAbstractItemModel* model)
{
    disconnect(m_dataChanged);
    QSortFilterProxyModel::setSourceModel(model);
    // Behind the base's own connection.
    if (model)
        m_dataChanged = connect(model, &QAbstractItemModel::dataChanged, this,
                                &CProcessorFilterProxyModel::onSourceDataChanged);
}

void CProcessorFilterProxyModel::setFilterText(const QString& text)
{
    m_text = text;
    setFilterFixedString(text);
}

bool CProcessorFilterProxyModel::filterAcceptsRow(int sourceRow,
                                                  const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty())
        return false;
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    const auto processor = index.data(NodeDataRole).value<ProcessorNode>();
    const QString shown = processor.reachedByIp ? addressText(processor.ipAddress)
                                                : QString::number(processor.number + 1);
    return shown.contains(m_text, Qt::CaseSensitive)
           || QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}

/// The base looks at the rows above a changed one only when the display text has changed.
void CProcessorFilterProxyModel::onSourceDataChanged(const QModelIndex& topLeft,
                                                     const QModelIndex& bottomRight,
                                                     const QVector<int>& roles)
{
    Q_UNUSED(bottomRight)
    if (!m_text.isEmpty() && topLeft.parent().isValid() && roles.contains(NodeDataRole)
        && !roles.contains(filterRole()))
        invalidateFilter();
}
