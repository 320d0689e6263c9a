#include "search/ProcessorFilterProxyModel.h"

#include "base/RecordCell.h"
#include "search/FoundProcessors.h"

#include <QMetaMethod>
#include <QScopedValueRollback>

CProcessorFilterProxyModel::CProcessorFilterProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
    setFilterCaseSensitivity(Qt::CaseInsensitive);
    setDynamicSortFilter(true);
    // Connected first, so that other receivers of modelReset() find the processors up to date.
    connect(this, &QAbstractItemModel::modelReset, this, [this] {
        if (m_found)
            m_found->follow();
    });
}

CProcessorFilterProxyModel::~CProcessorFilterProxyModel() = default;

void CProcessorFilterProxyModel::setSourceModel(QAbstractItemModel* model)
{
    disconnect(m_review);
    if (model)
        m_review = connect(model, &QAbstractItemModel::dataChanged, this,
                           &CProcessorFilterProxyModel::reviewBranch);
    auto* tree = qobject_cast<QStandardItemModel*>(model);
    m_found = tree ? std::make_unique<CFoundProcessors>(*tree, *this) : nullptr;
    QSortFilterProxyModel::setSourceModel(model);
}

void CProcessorFilterProxyModel::setFilterText(const QString& text)
{
    // The base announces changes only for rows that were requested, so they are requested if anyone
    // listens.
    const bool isFollowed =
        isSignalConnected(QMetaMethod::fromSignal(&QAbstractItemModel::rowsInserted));
    if (isFollowed)
        rowCount();
    m_text = CSearchText(text);
    if (!m_found) {
        setFilterFixedString(text);
        return;
    }
    const CFoundProcessors::Change change = m_found->look();
    {
        const QScopedValueRollback<bool> setting(m_isSettingText, true);
        setFilterFixedString(text);
    }
    // Once rows are mapped, the base filters all of them for each text. It may forget the mapping
    // when nobody holds an index.
    if (text.isEmpty() && !isFollowed)
        m_isAsked = false;
    if (!m_isAsked)
        invalidate();
    m_found->tell(change);
}

bool CProcessorFilterProxyModel::filterAcceptsRow(int sourceRow,
                                                  const QModelIndex& sourceParent) const
{
    if (m_isSettingText && !m_isAsked)
        return true; // the result is discarded at once
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

/// The base reviews the parents of a changed row only if its display text changed.
void CProcessorFilterProxyModel::reviewBranch(const QModelIndex& topLeft,
                                              const QModelIndex& bottomRight,
                                              const QVector<int>& roles)
{
    Q_UNUSED(bottomRight)
    if (!m_text.isEmpty() && topLeft.parent().isValid() && roles.contains(NodeDataRole)
        && !roles.contains(filterRole()))
        invalidateFilter();
}
