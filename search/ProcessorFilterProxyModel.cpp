#include "search/ProcessorFilterProxyModel.h"

#include "Interface/ProcessorNode.h"
#include "ipmanage/IPText.h"

#include <algorithm>

namespace {

QString folded(QString text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](QChar letter) { return letter.toCaseFolded(); });
    return text;
}

/// Whether looking for the folded text in folded names finds what the base finds, which sees the
/// case of some letters beyond ASCII in another way.
bool isPlainText(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar letter) {
        const QChar::Category category = letter.category();
        const bool hasCase =
            category == QChar::Letter_Uppercase || category == QChar::Letter_Lowercase
            || category == QChar::Letter_Titlecase || letter.toCaseFolded() != letter;
        return letter.unicode() < 0x80 || (!hasCase && !letter.isSurrogate());
    });
}

/// Whether an address or a number can hold `text`.
bool isShownText(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar letter) {
        return (letter >= QLatin1Char('0') && letter <= QLatin1Char('9'))
               || letter == QLatin1Char('.') || letter == QLatin1Char('-');
    });
}

QString shownText(const QModelIndex& index)
{
    const auto processor = index.data(NodeDataRole).value<ProcessorNode>();
    return processor.reachedByIp ? addressText(processor.ipAddress)
                                 : QString::number(qint64(processor.number) + 1);
}

} // namespace

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
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    m_rows.forgetAll();
    if (model)
        connectBefore(*model);
    QSortFilterProxyModel::setSourceModel(model);
    if (model)
        m_connections.push_back(connect(model, &QAbstractItemModel::dataChanged, this,
                                        &CProcessorFilterProxyModel::reviewBranch));
}

void CProcessorFilterProxyModel::setFilterText(const QString& text)
{
    m_text = text;
    m_foldedText = folded(text);
    m_isPlain = isPlainText(text);
    m_isShown = isShownText(text);
    ++m_search;
    setFilterFixedString(text);
}

bool CProcessorFilterProxyModel::filterAcceptsRow(int sourceRow,
                                                  const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty())
        return false;
    CSearchedRows::Row& row = m_rows.at(sourceRow, sourceParent);
    if (!row.isRead) {
        const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
        row = {folded(index.data().toString()), shownText(index)};
        row.isRead = true;
    }
    if (row.search != m_search) {
        row.search = m_search;
        row.isFound =
            (m_isShown && row.shown.contains(m_text, Qt::CaseSensitive))
            || (m_isPlain ? row.name.contains(m_foldedText, Qt::CaseSensitive)
                          : QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent));
    }
    return row.isFound;
}

/// What is connected here hears of a change before the base, which asks about rows in its answer.
void CProcessorFilterProxyModel::connectBefore(const QAbstractItemModel& model)
{
    const auto forgetAll = [this] { m_rows.forgetAll(); };
    const auto forgetBefore = [&](auto signal) {
        m_connections.push_back(connect(&model, signal, this, forgetAll));
    };
    forgetBefore(&QAbstractItemModel::rowsAboutToBeInserted);
    forgetBefore(&QAbstractItemModel::rowsInserted);
    forgetBefore(&QAbstractItemModel::rowsAboutToBeRemoved);
    forgetBefore(&QAbstractItemModel::rowsRemoved);
    forgetBefore(&QAbstractItemModel::rowsAboutToBeMoved);
    forgetBefore(&QAbstractItemModel::rowsMoved);
    forgetBefore(&QAbstractItemModel::columnsInserted);
    forgetBefore(&QAbstractItemModel::columnsRemoved);
    forgetBefore(&QAbstractItemModel::columnsMoved);
    forgetBefore(&QAbstractItemModel::layoutAboutToBeChanged);
    forgetBefore(&QAbstractItemModel::layoutChanged);
    forgetBefore(&QAbstractItemModel::modelAboutToBeReset);
    forgetBefore(&QAbstractItemModel::modelReset);
    forgetBefore(&QObject::destroyed);
    m_connections.push_back(
        connect(&model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                    m_rows.forget(topLeft.parent(), topLeft.row(), bottomRight.row());
                }));
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
