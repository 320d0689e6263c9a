#include "host/widgets/PureImageBtnAccessible.h"

#include "host/widgets/MenuByKey.h"
#include "host/widgets/PureImageBtn.h"

#include <QAccessibleWidget>
#include <QMenu>
#include <QPointer>

namespace {

class AccessibleImageButton final : public QAccessibleWidget
{
public:
    explicit AccessibleImageButton(CPureImageBtn* button)
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
    CPureImageBtn& button() const { return static_cast<CPureImageBtn&>(*widget()); }
};

QAccessibleInterface* createInterface(const QString&, QObject* object)
{
    auto* button = qobject_cast<CPureImageBtn*>(object);
    return button ? new AccessibleImageButton(button) : nullptr;
}

} // namespace

void installPureImageBtnAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
    Q_UNUSED(installed)
}
