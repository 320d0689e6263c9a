#include "search/ProcessorFilterProxyModel.h"

#include "processortree/ProcessorTreeModel.h"
#include "processortree/RecordCell.h"
#include "search/FoundProcessors.h"

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
    disconnect(m_review);
    auto* tree = qobject_cast<CProcessorTreeModel*>(model);
    m_found = tree ? std::make_unique<CFoundProcessors>(*tree, *this) : nullptr;
    QSortFilterProxyModel::setSourceModel(model);
    // Behind the base: who is told of what is found maps it through the base.
    if (m_found)
        m_found->follow();
    if (model)
        m_review = connect(model, &QAbstractItemModel::dataChanged, this,
                           &CProcessorFilterProxyModel::reviewBranch);
}

void CProcessorFilterProxyModel::setFilterText(const QString& text)
{
    m_text = CSearchText(text);
    if (!m_found) {
        setFilterFixedString(text);
        return;
    }
    const CFoundProcessors::Change change = m_found->look();
    m_isSettingText = true;
    setFilterFixedString(text);
    m_isSettingText = false;
    // The base looks at all rows for each text once it knows of any. It may forget them when nobody
    // has one.
    if (text.isEmpty())
        m_isAsked = false;
    if (!m_isAsked)
        invalidate();
    m_found->tell(change);
}

bool CProcessorFilterProxyModel::filterAcceptsRow(int sourceRow,
                                                  const QModelIndex& sourceParent) const
{
    if (m_isSettingText && !m_isAsked)
        return true; // quickly: the answer is forgotten at once
    m_isAsked = true;
    if (m_text.isEmpty())
        return false;
    if (m_text.isOfNumbers()) {
        const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
        if (shownText(recordKey(index.data(NodeDataRole))).contains(m_text.text()))
            return true;
    }
    return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}

/// The base looks at the rows above a changed one only when the display text has changed.
void CProcessorFilterProxyModel::reviewBranch(const QModelIndex& topLeft,
                                              const QModelIndex& bottomRight,
                                              const QVector<int>& roles)
{
    Q_UNUSED(bottomRight)
    if (!m_text.isEmpty() && topLeft.parent().isValid() && roles.contains(NodeDataRole)
        && !roles.contains(filterRole()))
        invalidateFilter();
}
