// The field for a name in the tree's view.

#include "base/NodeType.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ArrivalWatch.h"
#include "processortree/view/NameEditor.h"
#include "processortree/view/ProcessorTreeView.h"

#include <QLineEdit>
#include <QStandardItem>

#include <utility>

namespace {

/// Returns whether the row's menu would offer "Rename".
bool mayRename(const QModelIndex& index)
{
    const auto type = nodeType(index);
    if (type != NodeProcessor)
        return type == NodeGroup;
    const QUuid id = index.data(UuidRole).toUuid();
    return !askHost(&Host::GetProcessorNode, id).hostFlag13
           || askHost(&Host::CanRenameProcessor, id);
}

} // namespace

void CProcessorTreeView::RenameSelection()
{
    const QList<QPersistentModelIndex> selected = selectedRows();
    const Life alive(this);
    if (selected.size() == 1 && mayRename(selected.first()) && alive)
        openEditor(selected.first());
}

/// The field that is open; null when there is none.
QLineEdit* CProcessorTreeView::openField() const
{
    return m_editedRow.isValid() ? qobject_cast<QLineEdit*>(indexWidget(m_editedRow)) : nullptr;
}

/// There is one field at a time: one that is open on another row commits its name and closes first.
void CProcessorTreeView::openEditor(const QModelIndex& index)
{
    const Life alive(this);
    const QPersistentModelIndex row(index);
    if (QLineEdit* field = openField()) {
        if (m_editedRow == row) {
            field->setFocus();
            return;
        }
        commitData(field);
        if (alive && field == openField())
            closeEditor(field, QAbstractItemDelegate::NoHint);
    }
    if (!alive || m_locked || !row.isValid() || !row.flags().testFlag(Qt::ItemIsEditable))
        return;
    m_arrivals->stop();
    // The slot of that name would warn of a row whose field does not open.
    if (edit(row, AllEditTriggers, nullptr) && alive) {
        m_editedRow = row;
        m_editedId = row.data(UuidRole).toUuid();
        m_field = openField();
        if (m_field)
            m_field->setAccessibleName(tr("Name"));
        m_editsReadOnly = isReadOnly();
    }
}

/// Drops what was typed when the tree was locked, or became read-only, under the open field. In a
/// tree that was read-only before, "Rename" is offered all the same.
void CProcessorTreeView::commitData(QWidget* editor)
{
    if (!m_locked && (m_editsReadOnly || !isReadOnly()))
        CTreeView::commitData(editor);
}

/// Takes the open field `field` from its row, which leaves its place. The field stays as it is,
/// with the keyboard and all.
void CProcessorTreeView::detachField(QLineEdit* field)
{
    disconnect(field, &QObject::destroyed, this, nullptr);
    field->removeEventFilter(itemDelegate());
    editorDestroyed(field); // what makes Qt forget it, without hiding it
}

/// Opens the detached field `field` for row `index`.
void CProcessorTreeView::attachField(QLineEdit* field, const QModelIndex& index)
{
    const Life alive(this);
    const QPersistentModelIndex row = index;
    const int start = field->selectionStart();
    const int length = field->selectionLength();
    const int cursor = field->cursorPosition();
    CNameEditor::passOn(*field);
    scrollTo(row);
    const bool isOpen = edit(row, AllEditTriggers, nullptr);
    if (!alive)
        return;
    if (!isOpen) {
        dropField(field);
        return;
    }
    m_editedRow = row;
    m_field = field;
    // Qt selects all of the text.
    if (start < 0)
        field->setCursorPosition(cursor);
    else if (cursor == start)
        field->setSelection(start + length, -length);
    else
        field->setSelection(start, length);
}

void CProcessorTreeView::dropField(QLineEdit* field)
{
    field->hide();
    field->deleteLater();
}

/// Of a model that was reset, as it is when processors are added, the open field goes on with the
/// row that has the identity of its own.
void CProcessorTreeView::reset()
{
    const QPointer<QLineEdit> known = std::exchange(m_field, nullptr);
    // Qt hides what it closes.
    const bool goesOn = known && !known->isHidden() && !m_editedRow.isValid();
    const QPointer<QLineEdit> field = goesOn ? known.data() : nullptr;
    if (field)
        detachField(field);
    CTreeView::reset();
    expandOpen();
    if (!field)
        return;
    const QStandardItem* item = treeModel() ? treeModel()->getItem(m_editedId) : nullptr;
    if (item && !m_retired)
        attachField(field, item->index());
    else
        dropField(field);
}

/// Tab would go on with the next row, which nobody asked whether it may be renamed.
void CProcessorTreeView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (editor == m_field)
        m_field = nullptr;
    const bool goesOn = hint == QAbstractItemDelegate::EditNextItem
                        || hint == QAbstractItemDelegate::EditPreviousItem;
    CTreeView::closeEditor(editor, goesOn ? QAbstractItemDelegate::NoHint : hint);
}
