#pragma once

#include <QStyledItemDelegate>

#include <functional>

/// Edits a cell as a text, or as a check box if it has a check state. A text that is refused stays
/// in the editor, which says why; Escape restores the former text.
class FieldDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Role of the first cell of a row: true if it is a value as well, not only the name of one.
    static constexpr int HasTwoValuesRole = Qt::UserRole + 1;

    /// Returns why `text` cannot be the value of the cell, empty if it can.
    using Refusal = std::function<QString(const QModelIndex& index, const QString& text)>;

    /// Stores another value that the user has entered.
    using Store = std::function<void(const QModelIndex& index, const QString& text)>;

    FieldDelegate(Refusal refusal, Store store, QObject* parent);

    /// Returns whether the cell is edited as a text: it is neither a check box nor only a name.
    static bool isText(const QModelIndex& index);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    Refusal m_refusal;
    Store m_store;
};
