#include "host/widgets/IPLineEditAccessible.h"

#include "host/widgets/IPLineEdit.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class AccessibleIPLineEdit final : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit AccessibleIPLineEdit(CIPLineEdit* field)
        : QAccessibleWidget(field, QAccessible::EditableText)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.editable = true;
        state.selectableText = true;
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? field().displayText() : QAccessibleWidget::text(kind);
    }

    void setText(QAccessible::Text kind, const QString& text) override
    {
        if (kind == QAccessible::Value)
            field().setText(text);
        else
            QAccessibleWidget::setText(kind, text);
    }

    void selection(int index, int* start, int* end) const override
    {
        *start = *end = 0;
        if (index == 0) {
            *start = qMin(field().selectionAnchor(), field().cursorPosition());
            *end = qMax(field().selectionAnchor(), field().cursorPosition());
        }
    }

    int selectionCount() const override
    {
        return field().selectionAnchor() == field().cursorPosition() ? 0 : 1;
    }

    void addSelection(int start, int end) override { field().setSelection(start, end); }

    void removeSelection(int index) override
    {
        if (index == 0)
            setCursorPosition(field().cursorPosition());
    }

    void setSelection(int index, int start, int end) override
    {
        if (index == 0)
            field().setSelection(start, end);
    }

    int cursorPosition() const override { return field().cursorPosition(); }
    void setCursorPosition(int place) override { field().setSelection(place, place); }

    QString text(int start, int end) const override
    {
        return field().displayText().mid(start, end - start);
    }

    int characterCount() const override { return field().displayText().size(); }

    QRect characterRect(int offset) const override
    {
        const QRect here = field().cursorRect(offset);
        const QRect next = field().cursorRect(qMin(offset + 1, characterCount()));
        const QPoint corner = field().mapToGlobal(here.topLeft());
        return {corner, QSize(next.left() - here.left(), here.height())};
    }

    int offsetAtPoint(const QPoint& point) const override
    {
        return field().placeAt(field().mapFromGlobal(point));
    }

    void scrollToSubstring(int, int) override {} // the whole text is always visible

    QString attributes(int, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    CIPLineEdit& field() const { return static_cast<CIPLineEdit&>(*widget()); }
};

QAccessibleInterface* createInterface(const QString&, QObject* object)
{
    auto* field = qobject_cast<CIPLineEdit*>(object);
    return field ? new AccessibleIPLineEdit(field) : nullptr;
}

} // namespace

void installIPLineEditAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
    Q_UNUSED(installed)
}
