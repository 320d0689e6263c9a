#include "host/widgets/DialogTitleBar.h"

#include "host/widgets/Dialog.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/ToolTip.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QWindow>

#include <utility>

namespace {

constexpr int kTextMargin = 16;
constexpr int kButtonMargin = 8;
constexpr int kButtonSize = 24;
constexpr int kIconSize = 12;
constexpr int kGap = 8;

/// Returns whether the compositor places windows: a Wayland window cannot move itself.
bool isPlacedByCompositor()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

DialogTitleBar::DialogTitleBar(QString subtitle, int titleButtons, QWidget* dialog)
    : QWidget(dialog)
    , m_subtitle(std::move(subtitle))
{
    setFixedHeight(CDialog::kTitleBarHeight);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kTextMargin, 0, kButtonMargin, 0);
    layout->setSpacing(0);
    layout->addStretch(1);
    if ((titleButtons & CDialog::MaximizeTitleButton) != 0) {
        m_maximize = addButton(QStringLiteral("DialogMaximizeButton"));
        connect(m_maximize, &QToolButton::clicked, this, &DialogTitleBar::toggleMaximized);
    }
    if ((titleButtons & CDialog::CloseTitleButton) != 0) {
        m_close = addButton(QStringLiteral("DialogCloseButton"));
        m_close->setIcon(QIcon(QStringLiteral(":/HostWidgets/icons/close.svg")));
        connect(m_close, &QToolButton::clicked, dialog, &QWidget::close);
    }
    updateButtons();
    dialog->installEventFilter(this);
}

bool DialogTitleBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowTitleChange)
        update();
    else if (event->type() == QEvent::WindowStateChange)
        updateButtons();
    return QWidget::eventFilter(watched, event);
}

bool DialogTitleBar::event(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        updateButtons();
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString text = fullText();
    const bool elided = fontMetrics().horizontalAdvance(text) > textRect().width();
    CToolTip::ShowText(elided ? text : QString(), help->globalPos(), this, textRect());
    return true;
}

void DialogTitleBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QRect place = textRect();
    const auto draw = [&](const QString& text, const QColor& color) {
        const QString shown = fontMetrics().elidedText(text, Qt::ElideRight, place.width());
        painter.setPen(color);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
        place.setLeft(place.left() + fontMetrics().horizontalAdvance(shown));
    };
    const QString title = window()->windowTitle();
    if (!title.isEmpty()) {
        draw(title, hostColors().strongText);
        place.setLeft(place.left() + kGap);
    }
    if (place.width() > kGap)
        draw(m_subtitle, hostColors().hintText);
}

void DialogTitleBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = event->globalPos();
    m_grip = mapTo(window(), event->pos());
    m_moving = false;
}

void DialogTitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed || window()->isMaximized())
        return;
    if (!m_moving) {
        const int distance = (event->globalPos() - *m_pressed).manhattanLength();
        if (distance < QApplication::startDragDistance())
            return;
        m_moving = true;
        // Not on other platforms, where the window manager may start late, or fail without a
        // report.
        if (isPlacedByCompositor() && window()->windowHandle()->startSystemMove()) {
            m_pressed.reset();
            return;
        }
    }
    window()->move(event->globalPos() - m_grip);
}

void DialogTitleBar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_pressed.reset();
}

void DialogTitleBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_maximize)
        toggleMaximized();
}

/// The buttons do not take the focus, because the keyboard has Escape and the window manager's
/// keys.
QToolButton* DialogTitleBar::addButton(const QString& objectName)
{
    auto* button = new QToolButton(this);
    button->setObjectName(objectName);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoRaise(true);
    button->setFixedSize(kButtonSize, kButtonSize);
    button->setIconSize({kIconSize, kIconSize});
    layout()->addWidget(button);
    return button;
}

void DialogTitleBar::toggleMaximized()
{
    window()->setWindowState(window()->windowState() ^ Qt::WindowMaximized);
}

void DialogTitleBar::updateButtons()
{
    const auto name = [](QToolButton* button, const QString& text) {
        button->setAccessibleName(text);
        button->setToolTip(text);
    };
    if (m_maximize) {
        const bool maximized = window()->isMaximized();
        name(m_maximize, maximized ? tr("Restore") : tr("Maximize"));
        m_maximize->setIcon(QIcon(maximized ? QStringLiteral(":/HostWidgets/icons/restore.svg")
                                            : QStringLiteral(":/HostWidgets/icons/maximize.svg")));
    }
    if (m_close)
        name(m_close, tr("Close"));
}

QRect DialogTitleBar::textRect() const
{
    const int buttons = (m_maximize ? 1 : 0) + (m_close ? 1 : 0);
    const int right = buttons == 0 ? kTextMargin : kButtonMargin + buttons * kButtonSize + kGap;
    return rect().adjusted(kTextMargin, 0, -right, 0);
}

QString DialogTitleBar::fullText() const
{
    const QString title = window()->windowTitle();
    if (title.isEmpty() || m_subtitle.isEmpty())
        return title + m_subtitle;
    return title + QStringLiteral("  ") + m_subtitle;
}
