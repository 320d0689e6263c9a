#include "host/widgets/FocusRing.h"

#include "host/widgets/HostTheme.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int kDistance = 2;
constexpr int kLine = 1;
constexpr qreal kCorner = 4;

} // namespace

FocusRing::FocusRing(QWidget* target)
    : QWidget(target->parentWidget())
    , m_target(target)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    target->installEventFilter(this);
    connect(target, &QObject::destroyed, this, &QObject::deleteLater);
    follow();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ParentChange:
        follow();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::follow()
{
    if (!m_target)
        return;
    if (parentWidget() != m_target->parentWidget())
        setParent(m_target->parentWidget());
    const int margin = kDistance + kLine;
    setGeometry(m_target->geometry().adjusted(-margin, -margin, margin, margin));
    setVisible(parentWidget() && m_target->hasFocus() && m_target->isVisible());
    raise();
}

void FocusRing::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hostColors().accent);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
}
