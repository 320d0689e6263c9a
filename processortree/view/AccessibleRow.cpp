#include "processortree/view/AccessibleRow.h"

#include "processortree/view/AccessibleTree.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeySequence>
#include <QPointer>

namespace {

using Actions = QAccessibleActionInterface;

// Programs know actions by these names, in any language.

QString renameAction()
{
    return QStringLiteral("Rename");
}

QString expandAction()
{
    return QStringLiteral("Expand");
}

QString collapseAction()
{
    return QStringLiteral("Collapse");
}

void pick(CProcessorTreeView& view, const QPersistentModelIndex& row)
{
    // The host hears of it, and may take the row or the view away.
    const QPointer<CProcessorTreeView> alive(&view);
    view.setFocus(Qt::OtherFocusReason);
    view.selectionModel()->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
    if (alive && row.isValid())
        view.selectionModel()->select(row, QItemSelectionModel::ClearAndSelect);
    if (alive && row.isValid())
        view.scrollTo(row);
}

void rename(CProcessorTreeView& view, const QPersistentModelIndex& row)
{
    const QPointer<CProcessorTreeView> alive(&view);
    pick(view, row);
    if (alive && row.isValid() && !alive->isLocked())
        alive->RenameSelection();
}

void showMenu(CProcessorTreeView& view, const QPersistentModelIndex& row)
{
    view.setFocus(Qt::OtherFocusReason);
    view.scrollTo(row);
    const QPoint place = view.visualRect(row).center();
    QContextMenuEvent menu(QContextMenuEvent::Other, place, view.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view.viewport(), &menu);
}

void act(const QString& action, CProcessorTreeView& view, const QPersistentModelIndex& row)
{
    if (action == Actions::setFocusAction())
        pick(view, row);
    else if (action == Actions::showMenuAction())
        showMenu(view, row);
    else if (action == renameAction())
        rename(view, row);
    else if (action == expandAction())
        view.expand(row);
    else if (action == collapseAction())
        view.collapse(row);
}

} // namespace

AccessibleRow::AccessibleRow(const AccessibleTree& tree, const QModelIndex& index)
    : m_tree(tree)
    , m_index(index)
{
}

void AccessibleRow::announceChanges()
{
    const std::pair<QAccessible::Text, QAccessible::Event> kinds[] = {
        {QAccessible::Name, QAccessible::NameChanged},
        {QAccessible::Description, QAccessible::DescriptionChanged}};
    for (const auto& [kind, change] : kinds) {
        const std::optional<QString> before = m_told.at(kind);
        if (!before || text(kind) == *before)
            continue;
        QAccessibleEvent event(this, change);
        QAccessible::updateAccessibility(&event);
    }
}

void AccessibleRow::announceExpansion()
{
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

bool AccessibleRow::isValid() const
{
    return m_index.isValid() && m_tree.view() && m_tree.view()->model() == m_index.model();
}

QWindow* AccessibleRow::window() const
{
    return m_tree.window();
}

QAccessibleInterface* AccessibleRow::childAt(int, int) const
{
    return nullptr; // the rows below lie beside this one, and the tree finds them
}

QAccessibleInterface* AccessibleRow::parent() const
{
    if (!isValid())
        return nullptr;
    const QModelIndex above = m_index.parent();
    if (above == m_tree.view()->rootIndex())
        return QAccessible::queryAccessibleInterface(m_tree.view());
    return m_tree.row(above);
}

QAccessibleInterface* AccessibleRow::child(int number) const
{
    return number >= 0 && number < childCount()
               ? m_tree.row(m_index.model()->index(number, 0, m_index))
               : nullptr;
}

int AccessibleRow::childCount() const
{
    const bool shows = isValid() && m_tree.view()->isExpanded(m_index);
    return shows ? m_index.model()->rowCount(m_index) : 0;
}

int AccessibleRow::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* row = dynamic_cast<const AccessibleRow*>(child);
    const bool isMine = row && row->isValid() && row->m_index.parent() == m_index;
    return isMine ? row->m_index.row() : -1;
}

QString AccessibleRow::text(QAccessible::Text kind) const
{
    QString text;
    if (kind == QAccessible::Name) {
        text = m_index.data(Qt::AccessibleTextRole).toString();
        if (text.isEmpty())
            text = m_index.data(Qt::DisplayRole).toString();
    } else if (kind == QAccessible::Description) {
        text = m_index.data(Qt::AccessibleDescriptionRole).toString();
        if (isValid() && m_tree.view()->isCut(m_index))
            text += QStringLiteral(", ") + CProcessorTreeView::tr("Marked to be moved");
    } else {
        return {};
    }
    m_told.at(kind) = text;
    return text;
}

void AccessibleRow::setText(QAccessible::Text, const QString&)
{
}

QRect AccessibleRow::rect() const
{
    if (!isValid())
        return {};
    const QWidget* viewport = m_tree.view()->viewport();
    const QRect shown = m_tree.view()->visualRect(m_index).intersected(viewport->rect());
    return {viewport->mapToGlobal(shown.topLeft()), shown.size()};
}

QAccessible::State AccessibleRow::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const CProcessorTreeView& view = *m_tree.view();
    const Qt::ItemFlags flags = m_index.flags();
    state.disabled = !view.isEnabled() || !flags.testFlag(Qt::ItemIsEnabled);
    state.selectable = state.focusable = flags.testFlag(Qt::ItemIsSelectable);
    state.extSelectable = state.selectable;
    state.selected = view.selectionModel()->isSelected(m_index);
    state.focused = view.hasFocus() && m_tree.keyboardRow() == m_index;
    state.expandable = m_index.model()->hasChildren(m_index);
    state.expanded = state.expandable && view.isExpanded(m_index);
    state.collapsed = state.expandable && !view.isExpanded(m_index);
    state.invisible = !view.isVisible();
    state.offscreen = rect().isEmpty();
    return state;
}

void* AccessibleRow::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
}

QStringList AccessibleRow::actionNames() const
{
    const QAccessible::State is = state();
    if (is.invalid || is.disabled)
        return {};
    QStringList names{setFocusAction()};
    if (is.expandable)
        names.append(is.expanded ? collapseAction() : expandAction());
    if (m_tree.view()->isLocked())
        return names;
    names.append(showMenuAction());
    if (m_index.flags().testFlag(Qt::ItemIsEditable))
        names.append(renameAction());
    return names;
}

QString AccessibleRow::localizedActionName(const QString& action) const
{
    if (action == renameAction())
        return CProcessorTreeView::tr("Rename");
    if (action == expandAction())
        return CProcessorTreeView::tr("Expand");
    if (action == collapseAction())
        return CProcessorTreeView::tr("Collapse");
    return QAccessibleActionInterface::localizedActionName(action);
}

QString AccessibleRow::localizedActionDescription(const QString& action) const
{
    const QString text = QAccessibleActionInterface::localizedActionDescription(action);
    return text.isEmpty() ? localizedActionName(action) : text;
}

void AccessibleRow::doAction(const QString& action)
{
    if (!actionNames().contains(action))
        return;
    CProcessorTreeView* const view = m_tree.view();
    const auto run = [action, view, row = m_index] {
        if (row.isValid())
            act(action, *view, row);
    };
    QMetaObject::invokeMethod(view, run, Qt::QueuedConnection);
}

QStringList AccessibleRow::keyBindingsForAction(const QString& action) const
{
    if (action == renameAction())
        return {QKeySequence(Qt::Key_F2).toString(QKeySequence::NativeText)};
    if (action == expandAction())
        return {QKeySequence(Qt::Key_Right).toString(QKeySequence::NativeText)};
    if (action == collapseAction())
        return {QKeySequence(Qt::Key_Left).toString(QKeySequence::NativeText)};
    if (action == showMenuAction())
        return {QKeySequence(QStringLiteral("Shift+F10")).toString(QKeySequence::NativeText)};
    return {};
}
