#include "host/widgets/PureImageBtn.h"

#include "host/widgets/FocusRing.h"
#include "host/widgets/MenuByKey.h"
#include "host/widgets/ToolButtonAccessible.h"

#include <QKeyEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

constexpr int kImage = 16;

} // namespace

CPureImageBtn::CPureImageBtn(QWidget* parent)
    : QToolButton(parent)
{
    installToolButtonAccessibility();
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setIconSize({kImage, kImage});
    setFocusPolicy(Qt::StrongFocus);
}

void CPureImageBtn::SetImages(const QString& normal, const QString& hover, const QString& disabled)
{
    QIcon images;
    images.addFile(normal, {}, QIcon::Normal);
    images.addFile(hover, {}, QIcon::Active);
    images.addFile(disabled, {}, QIcon::Disabled);
    setIcon(images);
}

QSize CPureImageBtn::sizeHint() const
{
    return iconSize();
}

void CPureImageBtn::focusInEvent(QFocusEvent* event)
{
    // Made late, because layouts give a button its parent.
    if (!m_ring && parentWidget())
        m_ring = new FocusRing(this);
    QToolButton::focusInEvent(event);
}

void CPureImageBtn::keyPressEvent(QKeyEvent* event)
{
    const MenuByKey first(menu());
    const bool opens = menu() && popupMode() != DelayedPopup;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (event->isAutoRepeat())
            return;
        if (opens && popupMode() == InstantPopup)
            showMenu();
        else
            click();
        return;
    case Qt::Key_Down:
        if (opens) {
            showMenu();
            return;
        }
        break;
    default:
        break;
    }
    QToolButton::keyPressEvent(event);
}

void CPureImageBtn::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    painter.drawPrimitive(QStyle::PE_PanelButtonTool, option);
    QIcon::Mode mode = QIcon::Disabled;
    if (isEnabled())
        mode = underMouse() || isDown() ? QIcon::Active : QIcon::Normal;
    // Rounds to device pixels at fractional scales, which styles do only on request of the
    // application.
    const qreal scale = painter.deviceTransform().m11();
    QPixmap image(iconSize() * scale);
    image.fill(Qt::transparent);
    QPainter imagePainter(&image);
    icon().paint(&imagePainter, image.rect(), Qt::AlignCenter, mode);
    imagePainter.end();
    image.setDevicePixelRatio(scale);
    QRect place(QPoint(0, 0), iconSize());
    place.moveCenter(rect().center());
    painter.drawPixmap(place.topLeft(), image);
}
