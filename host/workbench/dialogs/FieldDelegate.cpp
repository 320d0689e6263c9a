#include "host/workbench/dialogs/FieldDelegate.h"

#include "host/workbench/dialogs/PlainText.h"
#include "host/workbench/project/ProjectRanges.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPersistentModelIndex>
#include <QStyle>
#include <QToolTip>
#include <QValidator>

#include <utility>

namespace {

/// Accepts what the cell accepts. Anything else stays in the editor.
class FieldValidator final : public QValidator
{
public:
    FieldValidator(FieldDelegate::Refusal refusal, const QModelIndex& index, QObject* parent)
        : QValidator(parent)
        , m_refusal(std::move(refusal))
        , m_index(index)
    {
    }

    QString refusal(const QString& text) const
    {
        return m_index.isValid() ? m_refusal(m_index, text) : QString();
    }

    State validate(QString& text, int& /*position*/) const override
    {
        return refusal(text).isEmpty() ? Acceptable : Intermediate;
    }

private:
    FieldDelegate::Refusal m_refusal;
    QPersistentModelIndex m_index;
};

/// Says in the editor, and below it, why its text is refused.
void showRefusal(QLineEdit& editor, const QString& reason)
{
    editor.setStyleSheet(
        reason.isEmpty() ? QString() : QStringLiteral("border: 1px solid rgb(255, 128, 120);"));
    editor.setAccessibleDescription(reason);
    if (reason.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(editor.mapToGlobal(editor.rect().bottomLeft()),
                           PlainText::toolTip(reason), &editor);
}

bool isFlag(const QModelIndex& index)
{
    return index.data(Qt::CheckStateRole).isValid();
}

} // namespace

FieldDelegate::FieldDelegate(Refusal refusal, Store store, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_refusal(std::move(refusal))
    , m_store(std::move(store))
{
}

bool FieldDelegate::isText(const QModelIndex& index)
{
    const bool isName = index.column() == 0 && !index.data(HasTwoValuesRole).toBool();
    return !isName && !isFlag(index);
}

QWidget* FieldDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                     const QModelIndex& index) const
{
    if (!isText(index))
        return nullptr;
    auto* editor = new QLineEdit(parent);
    editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
    const auto* validator = new FieldValidator(m_refusal, index, editor);
    editor->setValidator(validator);
    connect(editor, &QLineEdit::textEdited, validator, [editor, validator](const QString& text) {
        showRefusal(*editor, validator->refusal(text));
    });
    connect(editor, &QObject::destroyed, this, [] { QToolTip::hideText(); });
    return editor;
}

void FieldDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    qobject_cast<QLineEdit*>(editor)->setText(index.data().toString());
}

void FieldDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                                 const QModelIndex& index) const
{
    const auto* field = qobject_cast<QLineEdit*>(editor);
    if (field->isModified() && field->hasAcceptableInput()
        && field->text() != index.data().toString())
        m_store(index, field->text());
}

void FieldDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& /*index*/) const
{
    editor->setGeometry(option.rect);
}

bool FieldDelegate::editorEvent(QEvent* event, QAbstractItemModel* /*model*/,
                                const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (!isFlag(index) || !(index.flags() & Qt::ItemIsEditable))
        return false;
    if (event->type() == QEvent::MouseButtonRelease) {
        QStyleOptionViewItem cell(option);
        initStyleOption(&cell, index);
        const QStyle* style = option.widget->style();
        const QRect box =
            style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &cell, option.widget);
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton || !box.contains(mouse->pos()))
            return false;
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Space && key != Qt::Key_F2)
            return false;
    } else {
        return false;
    }
    const bool isChecked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    m_store(index, isChecked ? QStringLiteral("false") : QStringLiteral("true"));
    return true;
}
