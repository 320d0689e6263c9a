#include "benchmarks/support/StockSearch.h"

#include "Interface/ProcessorNode.h"

#include <KDescendantsProxyModel>

StockSearch::StockSearch(QAbstractItemModel* tree)
    : m_rows(std::make_unique<KDescendantsProxyModel>())
{
    m_filter.setRecursiveFilteringEnabled(true);
    m_filter.setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter.setSourceModel(tree);
    m_rows->setSourceModel(&m_filter);
    m_list.setSourceModel(m_rows.get());
    m_list.sort(0);
}

StockSearch::~StockSearch() = default;

void StockSearch::setText(const QString& text)
{
    m_filter.setText(text);
}

void StockSearch::Filter::setText(const QString& text)
{
    m_text = text;
    setFilterFixedString(text);
}

bool StockSearch::Filter::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty())
        return true;
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    const auto processor = index.data(NodeDataRole).value<ProcessorNode>();
    const quint32 address = processor.ipAddress;
    const QString shown = processor.reachedByIp ? QStringLiteral("%1.%2.%3.%4")
                                                      .arg(address >> 24)
                                                      .arg(address >> 16 & 0xFF)
                                                      .arg(address >> 8 & 0xFF)
                                                      .arg(address & 0xFF)
                                                : QString::number(qint64{processor.number} + 1);
    return shown.contains(m_text)
           || QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}

bool StockSearch::List::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    return index.data(NodeTypeRole).value<EPrcTreeNodeType>() == NodeProcessor;
}

bool StockSearch::List::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return left.data(NodeDataRole).value<ProcessorNode>().number
           < right.data(NodeDataRole).value<ProcessorNode>().number;
}
