#include "tests/support/DialogDriver.h"

#include "host/widgets/MessageBox.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QTest>

namespace {

constexpr int kPatience = 20000;

bool isAwaited(const QObject* object, const QEvent* event)
{
    if (event->type() != QEvent::Show || !object->isWidgetType())
        return false;
    const auto* widget = static_cast<const QWidget*>(object);
    return qobject_cast<const QMenu*>(widget) || (widget->isWindow() && widget->isModal());
}

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

} // namespace

DialogDriver::DialogDriver()
{
    m_watchdog.setInterval(kPatience);
    connect(&m_watchdog, &QTimer::timeout, this, &DialogDriver::giveUp);
    m_watchdog.start();
    qApp->installEventFilter(this);
}

DialogDriver::~DialogDriver()
{
    if (!isDone())
        QTest::qFail(qPrintable(QStringLiteral("%1 steps did not run").arg(m_steps.size())),
                     __FILE__, __LINE__);
}

DialogDriver& DialogDriver::then(std::function<void(QWidget&)> step)
{
    m_steps.push_back(std::move(step));
    return *this;
}

DialogDriver& DialogDriver::thenFirst(std::function<void(QWidget&)> step)
{
    m_steps.push_front(std::move(step));
    return *this;
}

DialogDriver& DialogDriver::thenEscape()
{
    return then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
}

DialogDriver& DialogDriver::thenEnter()
{
    return then([](QWidget& window) {
        QWidget* focus = window.focusWidget();
        QTest::keyClick(focus ? focus : &window, Qt::Key_Return);
    });
}

DialogDriver& DialogDriver::thenReadMessage(QString& text)
{
    return then([&text](QWidget& window) {
        text = messageOf(window);
        QTest::keyClick(&window, Qt::Key_Return);
    });
}

bool DialogDriver::eventFilter(QObject* watched, QEvent* event)
{
    if (isAwaited(watched, event)) {
        m_watchdog.start();
        const QPointer<QWidget> window(static_cast<QWidget*>(watched));
        // Queued: the window's own event loop is to run it.
        QMetaObject::invokeMethod(
            this, [this, window] { runStep(window); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void DialogDriver::runStep(QWidget* window)
{
    if (!window || !window->isVisible())
        return;
    if (isDone()) {
        QTest::qFail(qPrintable(QStringLiteral("nobody expected \"%1\" \"%2\"")
                                    .arg(window->windowTitle(), messageOf(*window))),
                     __FILE__, __LINE__);
        window->close();
        return;
    }
    const auto step = std::move(m_steps.front());
    m_steps.pop_front();
    step(*window);
}

void DialogDriver::giveUp()
{
    QWidget* window = QApplication::activePopupWidget();
    if (!window)
        window = QApplication::activeModalWidget();
    if (!window)
        return;
    QTest::qFail(qPrintable(QStringLiteral("\"%1\" stays open").arg(window->windowTitle())),
                 __FILE__, __LINE__);
    window->close();
}

QString messageOf(const QWidget& window)
{
    if (!qobject_cast<const CMessageBox*>(&window))
        return {};
    const auto* area = window.findChild<QScrollArea*>();
    const auto* label = area ? qobject_cast<QLabel*>(area->widget()) : nullptr;
    return label ? label->text() : QString();
}

QAbstractButton* buttonOf(const QWidget& window, const QString& text)
{
    const auto buttons = window.findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->isVisible()
            && (plain(button->text()) == text || button->accessibleName() == text))
            return button;
    }
    QTest::qFail(qPrintable(QStringLiteral("no button \"%1\"").arg(text)), __FILE__, __LINE__);
    return nullptr;
}

void clickButton(const QWidget& window, const QString& text)
{
    if (QAbstractButton* button = buttonOf(window, text))
        QTest::mouseClick(button, Qt::LeftButton);
}

void typeInto(QWidget* field, const QString& keys)
{
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClicks(field->window()->focusWidget(), keys);
}
