#pragma once

#include <QAccessible>
#include <QPersistentModelIndex>

#include <array>
#include <optional>

class AccessibleTree;

/// One row of a processor tree for assistive technology. It lives in Qt's cache of such objects,
/// from which the tree deletes it. Invalid when the row is no more. GUI thread.
class AccessibleRow final : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    /// `tree` outlives the row.
    AccessibleRow(const AccessibleTree& tree, const QModelIndex& index);

    const QPersistentModelIndex& index() const { return m_index; }

    /// Announces the name and the description if they differ from those that were last told.
    void announceChanges();

    /// Announces that the row was expanded or collapsed.
    void announceExpansion();

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int number) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    /// Does nothing: only the host renames, which the action "Rename" has it asked for.
    void setText(QAccessible::Text kind, const QString& text) override;
    /// Returns the visible part of the row, which is empty when the row is scrolled out of view.
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::TreeItem; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    QString localizedActionName(const QString& action) const override;
    QString localizedActionDescription(const QString& action) const override;
    /// Acts when the event loop runs next: some actions open menus, and the host may end the view.
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString& action) const override;

private:
    const AccessibleTree& m_tree;
    QPersistentModelIndex m_index;
    mutable std::array<std::optional<QString>, 2> m_told; // name and description
};
