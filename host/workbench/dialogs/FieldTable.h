#pragma once

#include <QTreeWidget>

/// A table of fields for a FieldDelegate. In an open field, Tab opens the next one of the row, then
/// that of the next row; Shift+Tab opens the one before. Check boxes are skipped. Tab in the last
/// field closes it and leaves the focus in the table.
class FieldTable final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FieldTable(QWidget* parent = nullptr);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};
