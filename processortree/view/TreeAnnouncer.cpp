#include "processortree/view/TreeAnnouncer.h"

#include "processortree/view/AccessibleRow.h"
#include "processortree/view/AccessibleTree.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QEvent>

TreeAnnouncer::TreeAnnouncer(AccessibleTree& tree)
    : m_tree(tree)
{
    tree.view()->installEventFilter(this);
}

void TreeAnnouncer::follow()
{
    const CProcessorTreeView* view = m_tree.view();
    if (!view || (view->model() == m_model && view->selectionModel() == m_selection))
        return;
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_model = view->model();
    m_selection = view->selectionModel();
    m_connections = {connect(view, &QTreeView::expanded, this, &TreeAnnouncer::announceExpansion),
                     connect(view, &QTreeView::collapsed, this, &TreeAnnouncer::announceExpansion),
                     connect(view, &CProcessorTreeView::cutChanged, this, [this] {
                         if (QAccessible::isActive())
                             m_tree.announceChanges();
                     })};
    if (m_model)
        followModel();
    if (m_selection)
        followSelection();
}

void TreeAnnouncer::followModel()
{
    m_connections.push_back(
        connect(m_model, &QAbstractItemModel::dataChanged, this, &TreeAnnouncer::onDataChanged));
    m_connections.push_back(
        connect(m_model, &QAbstractItemModel::rowsInserted, this, &TreeAnnouncer::onRowsChanged));
    m_connections.push_back(
        connect(m_model, &QAbstractItemModel::rowsRemoved, this, &TreeAnnouncer::onRowsChanged));
    m_connections.push_back(
        connect(m_model, &QAbstractItemModel::modelReset, this, [this] { onRowsChanged({}); }));
}

void TreeAnnouncer::followSelection()
{
    m_connections.push_back(connect(m_selection, &QItemSelectionModel::currentChanged, this,
                                    &TreeAnnouncer::onCurrentChanged));
    m_connections.push_back(connect(m_selection, &QItemSelectionModel::selectionChanged, this,
                                    &TreeAnnouncer::announceFocusLater));
}

bool TreeAnnouncer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && QAccessible::isActive()) {
        // Qt announces the view itself.
        m_focusRow = QPersistentModelIndex();
        follow();
        announceFocusLater();
    }
    return QObject::eventFilter(watched, event);
}

/// QTreeView announces each row that becomes current, but not one that comes back from a move, of
/// which assistive technology knows nothing yet.
void TreeAnnouncer::onCurrentChanged(const QModelIndex& row)
{
    if (m_tree.view() && m_tree.view()->isMovingRows())
        announceFocusLater();
    else
        m_focusRow = row;
}

void TreeAnnouncer::onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight)
{
    if (!QAccessible::isActive())
        return;
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row) {
        if (AccessibleRow* known = m_tree.knownRow(topLeft.sibling(row, 0)))
            known->announceChanges();
    }
}

/// A row tells how many rows are below it.
void TreeAnnouncer::onRowsChanged(QModelIndex parent)
{
    m_tree.forgetRemovedRows();
    if (!QAccessible::isActive())
        return;
    for (; parent.isValid(); parent = parent.parent()) {
        if (AccessibleRow* known = m_tree.knownRow(parent))
            known->announceChanges();
    }
}

void TreeAnnouncer::announceExpansion(const QModelIndex& row)
{
    AccessibleRow* known = QAccessible::isActive() ? m_tree.knownRow(row) : nullptr;
    if (known)
        known->announceExpansion();
}

/// Queued: the current row may be about to follow the selection, and rows may be on their way out.
void TreeAnnouncer::announceFocusLater()
{
    if (!QAccessible::isActive() || m_isFocusDue)
        return;
    m_isFocusDue = true;
    QMetaObject::invokeMethod(this, &TreeAnnouncer::announceFocus, Qt::QueuedConnection);
}

void TreeAnnouncer::announceFocus()
{
    m_isFocusDue = false;
    const CProcessorTreeView* view = m_tree.view();
    const QModelIndex row = m_tree.keyboardRow();
    if (!view || !view->hasFocus() || row == m_focusRow)
        return;
    m_focusRow = row;
    if (AccessibleRow* focused = m_tree.row(row)) {
        QAccessibleEvent event(focused, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}
