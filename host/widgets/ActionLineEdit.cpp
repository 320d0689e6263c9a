#include "host/widgets/ActionLineEdit.h"

#include <QAction>
#include <QEvent>
#include <QIcon>
#include <QToolButton>

namespace {

// The object name by which QLineEdit knows its clear action.
constexpr char kClearAction[] = "_q_qlineeditclearaction";

// The padding of other fields in the theme; here it would keep the actions off the edges.
constexpr int kTextMargin = 6;

} // namespace

CActionLineEdit::CActionLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    setTextMargins(kTextMargin, 0, 0, 0);
}

QAction* CActionLineEdit::AddLeadingAction(const QIcon& icon, const QString& toolTip)
{
    QAction* action = addAction(icon, LeadingPosition);
    setTextMargins(0, 0, 0, 0);
    // Assistive technology reads the text as the name of the button.
    action->setText(toolTip);
    action->setToolTip(toolTip);
    return action;
}

void CActionLineEdit::setClearButtonEnabled(bool enable)
{
    if (enable == isClearButtonEnabled())
        return;
    if (!enable) {
        delete clearAction();
        return;
    }
    QAction* action =
        addAction(QIcon(QStringLiteral(":/HostWidgets/icons/clear.svg")), TrailingPosition);
    action->setObjectName(QLatin1String(kClearAction));
    connect(action, &QAction::triggered, this, &CActionLineEdit::clearAsUser);
    connect(this, &QLineEdit::textChanged, action, [this] { updateClearAction(); });
    updateClearAction();
}

void CActionLineEdit::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::ReadOnlyChange)
        updateClearAction();
    QLineEdit::changeEvent(event);
}

QAction* CActionLineEdit::clearAction() const
{
    return findChild<QAction*>(QLatin1String(kClearAction));
}

void CActionLineEdit::clearAsUser()
{
    if (text().isEmpty())
        return;
    clear();
    emit textEdited(QString());
}

void CActionLineEdit::updateClearAction()
{
    QAction* action = clearAction();
    if (!action)
        return;
    action->setEnabled(!isReadOnly());
    action->setText(tr("Clear"));
    action->setToolTip(tr("Clear"));
    // The button alone is hidden, as a QLineEdit does: it appears with every change of its action.
    const QList<QToolButton*> buttons = findChildren<QToolButton*>();
    for (QToolButton* button : buttons) {
        if (button->defaultAction() == action)
            button->setVisible(!text().isEmpty());
    }
}
