#include "search/FoundProcessors.h"

#include "base/GuiThread.h"
#include "base/NodeType.h"
#include "search/ProcessorFilterProxyModel.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <utility>

namespace {

using Items = std::vector<const QStandardItem*>;

bool isAmong(const Items& sorted, const QStandardItem* item)
{
    return std::binary_search(sorted.begin(), sorted.end(), item, std::less<>());
}

void collectBranch(const QStandardItem* item, Items& branch)
{
    if (!item)
        return;
    branch.push_back(item);
    for (int row = 0; row < item->rowCount(); ++row)
        collectBranch(item->child(row), branch);
}

SSearchedRow searched(const QStandardItem& item)
{
    return searchedRow(item.text(), recordKey(item.data(NodeDataRole)));
}

/// Returns the rows `first` to `last` of `parent` and all their descendants, sorted by pointer.
Items branches(const QStandardItem& parent, int first, int last)
{
    Items found;
    for (int row = first; row <= last; ++row)
        collectBranch(parent.child(row), found);
    std::sort(found.begin(), found.end(), std::less<>());
    return found;
}

} // namespace

CFoundProcessors::CFoundProcessors(QStandardItemModel& tree,
                                   const CProcessorFilterProxyModel& filter)
    : m_tree(&tree)
    , m_filter(filter)
{
}

CFoundProcessors::~CFoundProcessors() = default;

const QStandardItemModel* CFoundProcessors::tree() const
{
    return m_tree;
}

void CFoundProcessors::follow()
{
    if (!m_isFollowing)
        connectTree();
    m_isResetting = false;
    refresh();
}

void CFoundProcessors::connectTree()
{
    m_isFollowing = true;
    const QStandardItemModel* tree = m_tree;
    connect(tree, &QAbstractItemModel::rowsInserted, this, &CFoundProcessors::onRowsInserted);
    connect(tree, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            &CFoundProcessors::onRowsAboutToBeRemoved);
    connect(tree, &QAbstractItemModel::rowsRemoved, this, &CFoundProcessors::onRowsRemoved);
    connect(tree, &QAbstractItemModel::dataChanged, this, &CFoundProcessors::onDataChanged);
    connect(tree, &QAbstractItemModel::rowsMoved, this, &CFoundProcessors::refresh);
    connect(tree, &QAbstractItemModel::layoutChanged, this, &CFoundProcessors::refresh);
    connect(tree, &QAbstractItemModel::columnsInserted, this, &CFoundProcessors::refresh);
    connect(tree, &QAbstractItemModel::columnsAboutToBeRemoved, this,
            &CFoundProcessors::forgetTree);
    connect(tree, &QAbstractItemModel::columnsRemoved, this, &CFoundProcessors::follow);
    connect(tree, &QAbstractItemModel::modelAboutToBeReset, this, &CFoundProcessors::forgetTree);
    connect(tree, &QObject::destroyed, this, &CFoundProcessors::forgetTree);
}

const CSearchText& CFoundProcessors::text() const
{
    return m_filter.searchText();
}

/// Rows that were known keep their result. `areOthersNew` decides whether other rows count as not
/// found so far, or are searched now.
void CFoundProcessors::readTree(bool areOthersNew)
{
    Items known;
    Items found;
    for (const Row& row : m_rows) {
        known.push_back(row.item);
        if (row.isFound)
            found.push_back(row.item);
    }
    std::sort(known.begin(), known.end(), std::less<>());
    std::sort(found.begin(), found.end(), std::less<>());
    m_rows.clear();
    if (m_tree)
        collect(*m_tree->invisibleRootItem(), false);
    for (Row& row : m_rows)
        row.isFound = areOthersNew || isAmong(known, row.item) ? isAmong(found, row.item)
                                                               : text().isIn(row.searched);
    sort();
    m_isRead = true;
}

void CFoundProcessors::collect(const QStandardItem& parent, bool areBelowOne)
{
    for (int row = 0; row < parent.rowCount(); ++row) {
        QStandardItem* item = parent.child(row);
        if (!item || isLeaving(parent, row))
            continue;
        const int place = static_cast<int>(m_rows.size());
        const bool isProcessor = nodeType(*item) == NodeProcessor;
        m_rows.push_back({item, place, isProcessor, areBelowOne, 0, {}, false});
        read(m_rows.back());
        collect(*item, areBelowOne || isProcessor);
    }
}

void CFoundProcessors::read(Row& row)
{
    row.number = recordKey(row.item->data(NodeDataRole)).number;
    row.searched = searched(*row.item);
}

void CFoundProcessors::sort()
{
    std::sort(m_rows.begin(), m_rows.end(), [](const Row& left, const Row& right) {
        return std::tie(left.number, left.place) < std::tie(right.number, right.place);
    });
}

bool CFoundProcessors::isAnyFoundBelow(const QStandardItem& item) const
{
    for (int row = 0; row < item.rowCount(); ++row) {
        const QStandardItem* child = item.child(row);
        if (child && !isLeaving(item, row)
            && (text().isIn(searched(*child)) || isAnyFoundBelow(*child)))
            return true;
    }
    return false;
}

CFoundProcessors::Change CFoundProcessors::look()
{
    Q_ASSERT(isThreadOf(*this));
    const bool wasLooking = std::exchange(m_isLooking, !text().isEmpty() && !m_isResetting);
    Change change;
    if (!m_isLooking && !wasLooking)
        return change;
    if (m_isLooking && !m_isRead)
        readTree(true);
    m_items.clear();
    for (Row& row : m_rows) {
        const bool isFound = m_isLooking && text().isIn(row.searched);
        const bool wasFound = std::exchange(row.isFound, isFound);
        if (wasFound != isFound && (row.isProcessor || row.isBelowOne)) {
            change.haveGone |= wasFound;
            change.haveCome |= isFound;
        }
        if (isFound && row.isProcessor && !isAnyFoundBelow(*row.item))
            m_items.push_back(row.item);
    }
    return change;
}

void CFoundProcessors::tell(const Change& change)
{
    if (change.haveGone || change.haveCome)
        emit changed(change.haveGone, change.haveCome);
}

void CFoundProcessors::refresh()
{
    m_isRead = false;
    look();
    emit refreshed();
}

bool CFoundProcessors::isLeaving(const QStandardItem& parent, int row) const
{
    return &parent == m_leavingFrom && row >= m_firstLeaving && row <= m_lastLeaving;
}

void CFoundProcessors::lookAgain(bool haveGone)
{
    const std::vector<QStandardItem*> before = m_items;
    Change change = look();
    change.haveGone |= haveGone;
    if (!change.haveGone && !change.haveCome && m_items != before)
        emit refreshed();
    tell(change);
}

void CFoundProcessors::forgetTree()
{
    m_isResetting = true;
    m_isRead = false;
    m_haveGone = false;
    m_leavingFrom = nullptr;
    m_rows.clear();
    look();
    emit refreshed();
}

void CFoundProcessors::onRowsInserted()
{
    m_isRead = false;
    lookAgain(false);
}

/// The rows are dropped now, because their items are destroyed by the time of rowsRemoved. The loss
/// is announced then, when the tree is consistent again.
void CFoundProcessors::onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last)
{
    m_leavingFrom = parent.isValid() ? m_tree->itemFromIndex(parent) : m_tree->invisibleRootItem();
    m_firstLeaving = first;
    m_lastLeaving = last;
    if (!m_isLooking) {
        m_isRead = false;
        return;
    }
    const Items leaving = branches(*m_leavingFrom, first, last);
    const auto leaves = [&](const Row& row) { return isAmong(leaving, row.item); };
    m_haveGone |= std::any_of(m_rows.begin(), m_rows.end(), [&](const Row& row) {
        return row.isFound && (row.isProcessor || row.isBelowOne) && leaves(row);
    });
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), leaves), m_rows.end());
    lookAgain(false);
}

void CFoundProcessors::onRowsRemoved()
{
    m_leavingFrom = nullptr;
    lookAgain(std::exchange(m_haveGone, false));
}

void CFoundProcessors::onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                     const QVector<int>& roles)
{
    if (!m_isLooking) {
        m_isRead = false;
        return;
    }
    if (roles.isEmpty() || roles.contains(NodeTypeRole))
        readTree(false);
    else if (roles.contains(NodeDataRole) || roles.contains(Qt::DisplayRole))
        readRows(topLeft, bottomRight);
    else
        return;
    lookAgain(false);
}

void CFoundProcessors::readRows(const QModelIndex& topLeft, const QModelIndex& bottomRight)
{
    Items changed;
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
        changed.push_back(m_tree->itemFromIndex(topLeft.sibling(row, 0)));
    std::sort(changed.begin(), changed.end(), std::less<>());
    for (Row& row : m_rows) {
        if (isAmong(changed, row.item))
            read(row);
    }
    sort();
}
