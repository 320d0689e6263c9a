#include "host/widgets/MenuToolButton.h"

#include "host/widgets/MenuByKey.h"
#include "host/widgets/ToolButtonAccessible.h"

#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

constexpr int kTextMargin = 8;
constexpr int kHeight = 24; // like fields and buttons
constexpr int kFrame = 6;

/// Returns the width of the arrow, which is left free on the other side as well.
int arrowRoom(const QToolButton& button, const QStyleOptionToolButton& option)
{
    const QRect arrow = button.style()->subControlRect(QStyle::CC_ToolButton, &option,
                                                       QStyle::SC_ToolButtonMenu, &button);
    return arrow.width();
}

} // namespace

CMenuToolButton::CMenuToolButton(QWidget* parent)
    : QToolButton(parent)
    , m_menu(new QMenu(this))
{
    installToolButtonAccessibility();
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setPopupMode(MenuButtonPopup);
    setFocusPolicy(Qt::StrongFocus);
    // Before the entry acts: assistive technology triggers it and leaves the menu open.
    connect(m_menu, &QMenu::triggered, m_menu, &QWidget::hide);
    setMenu(m_menu);
}

CMenuToolButton::~CMenuToolButton()
{
    // QMenu uses itself after an action has been triggered.
    m_menu->hide();
    m_menu->setParent(nullptr, m_menu->windowFlags());
    m_menu->deleteLater();
}

QAction* CMenuToolButton::AddAction(const QString& text, const QVariant& value)
{
    QAction* action = m_menu->addAction(text);
    action->setData(value);
    return action;
}

QSize CMenuToolButton::sizeHint() const
{
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {label.width() + 2 * (arrowRoom(*this, option) + kTextMargin),
            qMax(kHeight, label.height() + kFrame)};
}

void CMenuToolButton::keyPressEvent(QKeyEvent* event)
{
    const MenuByKey first(m_menu);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat())
            click();
        return;
    case Qt::Key_Down:
        showMenu();
        return;
    default:
        QToolButton::keyPressEvent(event);
    }
}

void CMenuToolButton::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const int margin = arrowRoom(*this, option);
    const QRect room = rect().adjusted(margin, 0, -margin, 0);
    const bool isLit = isEnabled() && (underMouse() || isDown());
    const QPalette::ColorRole role = isLit ? QPalette::BrightText : QPalette::ButtonText;
    const QString shown =
        fontMetrics().elidedText(text(), Qt::ElideRight, room.width(), Qt::TextShowMnemonic);
    const int flags = static_cast<int>(Qt::AlignCenter) | Qt::TextShowMnemonic;
    painter.drawItemText(room, flags, option.palette, isEnabled(), shown, role);
}
