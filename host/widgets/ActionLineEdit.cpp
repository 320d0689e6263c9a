#include "host/widgets/ActionLineEdit.h"

#include <QAction>
#include <QEvent>
#include <QIcon>

namespace {

// The object name that QLineEdit gives its clear action.
constexpr char kClearAction[] = "_q_qlineeditclearaction";

} // namespace

CActionLineEdit::CActionLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
}

QAction* CActionLineEdit::AddLeadingAction(const QIcon& icon, const QString& toolTip)
{
    QAction* action = addAction(icon, LeadingPosition);
    // Assistive technology reads the text as the name of the button.
    action->setText(toolTip);
    action->setToolTip(toolTip);
    return action;
}

void CActionLineEdit::setClearButtonEnabled(bool enable)
{
    QLineEdit::setClearButtonEnabled(enable);
    dressClearAction();
}

void CActionLineEdit::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        dressClearAction();
    QLineEdit::changeEvent(event);
}

void CActionLineEdit::dressClearAction()
{
    auto* action = findChild<QAction*>(QLatin1String(kClearAction));
    if (!action)
        return;
    action->setIcon(QIcon(QStringLiteral(":/HostWidgets/icons/clear.svg")));
    action->setText(tr("Clear"));
    action->setToolTip(tr("Clear"));
}
