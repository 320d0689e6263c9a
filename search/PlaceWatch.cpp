#include "search/PlaceWatch.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

CPlaceWatch::CPlaceWatch(QObject* parent)
    : QObject(parent)
{
}

CPlaceWatch::~CPlaceWatch() = default;

void CPlaceWatch::start(QWidget* widget)
{
    stop();
    m_widget = widget;
    for (QWidget* part = widget; part; part = part->parentWidget()) {
        part->installEventFilter(this);
        m_watched.append(part);
        if (part->isWindow())
            break;
    }
    if (!widget)
        return;
    connect(widget, &QObject::destroyed, this, &CPlaceWatch::lost);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state != Qt::ApplicationActive)
                    emit lost();
            });
    // Qt does not tell widgets about another active window while a popup is open.
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
            [this](const QWindow* window) { onFocusWindowChanged(window); });
}

void CPlaceWatch::stop()
{
    disconnect(qGuiApp, nullptr, this, nullptr);
    if (m_widget)
        disconnect(m_widget, nullptr, this, nullptr);
    for (const QPointer<QWidget>& part : qAsConst(m_watched)) {
        if (part)
            part->removeEventFilter(this);
    }
    m_watched.clear();
    m_widget.clear();
}

void CPlaceWatch::onFocusWindowChanged(const QWindow* window)
{
    // Some platforms give the focus to a popup.
    const bool isPopup = window && window->type() == Qt::Popup;
    if (window && !isPopup && m_widget && window != m_widget->window()->windowHandle())
        emit lost();
}

bool CPlaceWatch::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        emit moved();
        break;
    case QEvent::Hide:
        if (watched == m_widget)
            emit lost();
        break;
    case QEvent::EnabledChange:
        if (m_widget && !m_widget->isEnabled())
            emit lost();
        break;
    case QEvent::WindowStateChange:
        if (m_widget && m_widget->window()->isMinimized())
            emit lost();
        break;
    default:
        break;
    }
    return false;
}
