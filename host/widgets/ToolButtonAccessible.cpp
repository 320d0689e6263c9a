#include "host/widgets/ToolButtonAccessible.h"

#include "host/widgets/MenuByKey.h"
#include "host/widgets/MenuToolButton.h"
#include "host/widgets/PureImageBtn.h"

#include <QAccessibleWidget>
#include <QMenu>
#include <QPointer>

namespace {

class AccessibleToolButton final : public QAccessibleWidget
{
public:
    explicit AccessibleToolButton(QToolButton* button)
        : QAccessibleWidget(button)
    {
    }

    QAccessible::Role role() const override
    {
        return button().menu() ? QAccessible::ButtonMenu : QAccessible::Button;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = button().menu() != nullptr;
        state.pressed = button().isDown();
        state.checkable = button().isCheckable();
        state.checked = button().isChecked();
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? button().text() : text;
    }

    int childCount() const override { return button().menu() ? 1 : 0; }

    QAccessibleInterface* child(int number) const override
    {
        return number == 0 ? QAccessible::queryAccessibleInterface(button().menu()) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child && button().menu() && child->object() == button().menu() ? 0 : -1;
    }

    QStringList actionNames() const override
    {
        QStringList names;
        if (button().isEnabled()) {
            names.append(pressAction());
            if (button().menu())
                names.append(showMenuAction());
        }
        return names + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override
    {
        const bool isPress = action == pressAction();
        if (!isPress && action != showMenuAction()) {
            QAccessibleWidget::doAction(action);
            return;
        }
        const bool opens =
            button().menu() && (!isPress || button().popupMode() == QToolButton::InstantPopup);
        // Queued: whoever asks for it does not wait until the menu is closed.
        const auto act = [button = &button(), opens] {
            if (!button->isEnabled())
                return;
            const MenuByKey first(button->menu());
            if (opens)
                button->showMenu();
            else
                button->click();
        };
        if (isPress || opens)
            QMetaObject::invokeMethod(&button(), act, Qt::QueuedConnection);
    }

private:
    QToolButton& button() const { return static_cast<QToolButton&>(*widget()); }
};

QAccessibleInterface* createInterface(const QString&, QObject* object)
{
    // Not those of Qt's own making, such as the buttons in fields.
    const bool isOne = qobject_cast<CPureImageBtn*>(object)
                       || qobject_cast<CMenuToolButton*>(object)
                       || object->metaObject() == &QToolButton::staticMetaObject;
    return isOne ? new AccessibleToolButton(static_cast<QToolButton*>(object)) : nullptr;
}

} // namespace

void installToolButtonAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
    Q_UNUSED(installed)
}
