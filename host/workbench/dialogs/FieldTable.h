#pragma once

#include <QTreeWidget>

/// A table of fields for a FieldDelegate. Tab leads from field to field of a row, then to the next
/// row, and out of the table behind the last one; Shift+Tab leads back.
class FieldTable final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FieldTable(QWidget* parent = nullptr);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    bool isField(const QModelIndex& index) const;
};
