#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>

#include <memory>

class AccessibleRow;
class CProcessorTreeView;
class TreeAnnouncer;

/// A processor tree for assistive technology, with its rows as a hierarchy: groups below the
/// project, processors below their groups. Rows of a collapsed group are left out. Qt's own
/// interface of tree views lists all rows in one level below a header, cannot act on them, and
/// makes another object each time a row is asked for.
///
/// It knows of a row, and listens to the model, only when somebody has asked for rows: without
/// assistive technology the tree does nothing for it. GUI thread.
class AccessibleTree final : public QAccessibleWidget
{
public:
    /// Presents all processor trees by this class from now on. More calls have no effect.
    static void install();

    explicit AccessibleTree(CProcessorTreeView* view);
    ~AccessibleTree() override;

    /// Null while the view is being destroyed.
    CProcessorTreeView* view() const;

    /// Returns the interface of the row `index`; null for an invalid index.
    AccessibleRow* row(const QModelIndex& index) const;

    /// Returns the interface of the row `index` if it was ever asked for, else null.
    AccessibleRow* knownRow(const QModelIndex& index) const;

    /// Deletes the interfaces of the rows that are no more.
    void forgetRemovedRows();

    /// Announces what has changed of the rows that were ever asked for.
    void announceChanges() const;

    /// Returns the row that keys act on: the current one, unless only others are selected, else the
    /// topmost selected one. The first row where none is either.
    QModelIndex keyboardRow() const;

    int childCount() const override;
    /// Returns the top-level row `number`. Beyond those, returns the row that QTreeView means by
    /// the number in its own events: it counts the rows from top to bottom, behind a header.
    QAccessibleInterface* child(int number) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

private:
    std::unique_ptr<TreeAnnouncer> m_announcer;
    mutable QHash<QPersistentModelIndex, QAccessible::Id> m_rows;
};
