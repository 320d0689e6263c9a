#include "processortree/view/AccessibleTree.h"

#include "processortree/view/AccessibleRow.h"
#include "processortree/view/ProcessorTreeView.h"
#include "processortree/view/TreeAnnouncer.h"

#include <algorithm>

namespace {

QAccessibleInterface* createTree(const QString&, QObject* object)
{
    auto* view = qobject_cast<CProcessorTreeView*>(object);
    return view ? new AccessibleTree(view) : nullptr;
}

} // namespace

void AccessibleTree::install()
{
    static const bool installed = [] {
        QAccessible::installFactory(createTree);
        return true;
    }();
    Q_UNUSED(installed)
}

AccessibleTree::AccessibleTree(CProcessorTreeView* view)
    : QAccessibleWidget(view, QAccessible::Tree)
    , m_announcer(new TreeAnnouncer(*this))
{
}

AccessibleTree::~AccessibleTree()
{
    m_announcer.reset();
    for (const QAccessible::Id id : qAsConst(m_rows))
        QAccessible::deleteAccessibleInterface(id);
}

CProcessorTreeView* AccessibleTree::view() const
{
    return qobject_cast<CProcessorTreeView*>(object());
}

AccessibleRow* AccessibleTree::row(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    if (AccessibleRow* known = knownRow(index))
        return known;
    auto* row = new AccessibleRow(*this, index);
    m_rows.insert(index, QAccessible::registerAccessibleInterface(row));
    return row;
}

AccessibleRow* AccessibleTree::knownRow(const QModelIndex& index) const
{
    const auto found = m_rows.constFind(index);
    return found == m_rows.cend()
               ? nullptr
               : static_cast<AccessibleRow*>(QAccessible::accessibleInterface(*found));
}

void AccessibleTree::forgetRemovedRows()
{
    for (auto row = m_rows.begin(); row != m_rows.end();) {
        if (row.key().isValid()) {
            ++row;
        } else {
            QAccessible::deleteAccessibleInterface(*row);
            row = m_rows.erase(row);
        }
    }
}

void AccessibleTree::announceChanges() const
{
    // A copy: who hears of a change may ask for further rows.
    const QList<QAccessible::Id> rows = m_rows.values();
    for (const QAccessible::Id id : rows) {
        if (auto* row = static_cast<AccessibleRow*>(QAccessible::accessibleInterface(id)))
            row->announceChanges();
    }
}

QModelIndex AccessibleTree::keyboardRow() const
{
    const CProcessorTreeView* tree = view();
    if (!tree || !tree->selectionModel())
        return {};
    const QModelIndex current = tree->currentIndex();
    const QModelIndexList selected = tree->selectionModel()->selectedIndexes();
    if (selected.isEmpty() && !current.isValid())
        return tree->model()->index(0, 0, tree->rootIndex());
    if (selected.isEmpty() || selected.contains(current))
        return current;
    return *std::min_element(selected.cbegin(), selected.cend(),
                             [tree](const QModelIndex& one, const QModelIndex& two) {
                                 return tree->visualRect(one).top() < tree->visualRect(two).top();
                             });
}

int AccessibleTree::childCount() const
{
    m_announcer->follow();
    const CProcessorTreeView* tree = view();
    return tree && tree->model() ? tree->model()->rowCount(tree->rootIndex()) : 0;
}

QAccessibleInterface* AccessibleTree::child(int number) const
{
    const int topRows = childCount();
    if (number < 0 || topRows == 0)
        return nullptr;
    const CProcessorTreeView* tree = view();
    if (number < topRows)
        return row(tree->model()->index(number, 0, tree->rootIndex()));
    QModelIndex index = tree->model()->index(0, 0, tree->rootIndex());
    for (int place = 1; place < number && index.isValid(); ++place)
        index = tree->indexBelow(index);
    return row(index);
}

int AccessibleTree::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* row = dynamic_cast<const AccessibleRow*>(child);
    const bool isMine = row && row->isValid() && view() && row->parent() == this;
    return isMine ? row->index().row() : -1;
}

QAccessibleInterface* AccessibleTree::childAt(int x, int y) const
{
    m_announcer->follow();
    const CProcessorTreeView* tree = view();
    return tree ? row(tree->indexAt(tree->viewport()->mapFromGlobal(QPoint(x, y)))) : nullptr;
}

QAccessibleInterface* AccessibleTree::focusChild() const
{
    return view() && view()->hasFocus() ? row(keyboardRow()) : QAccessibleWidget::focusChild();
}
