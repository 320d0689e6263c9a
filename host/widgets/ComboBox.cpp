#include "host/widgets/ComboBox.h"

#include "host/widgets/ComboListDelegate.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/ToolTip.h"

#include <QAbstractItemView>
#include <QChildEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QStylePainter>
#include <QWheelEvent>

namespace {

constexpr int kIconSpace = 4;
constexpr int kTextMargin = 1; // the margin of styles beside a field's text

} // namespace

CComboBox::CComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus); // excludes the wheel
    setItemDelegate(new ComboListDelegate(this));
}

void CComboBox::setTextHorizontalAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment & Qt::AlignHorizontal_Mask;
    if (lineEdit())
        lineEdit()->setAlignment(m_alignment | Qt::AlignVCenter);
    update();
}

bool CComboBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isElided()) {
        CToolTip::ShowText(currentText(), static_cast<QHelpEvent*>(event)->globalPos(), this,
                           rect());
        return true;
    }
    return QComboBox::event(event);
}

void CComboBox::childEvent(QChildEvent* event)
{
    // The editor of an editable box is created late and may be replaced.
    if (event->polished() && lineEdit())
        lineEdit()->setAlignment(m_alignment | Qt::AlignVCenter);
    QComboBox::childEvent(event);
}

void CComboBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (currentIndex() < 0 && !placeholderText().isEmpty()) {
        // The style sheet's colour of the text overwrites the palette's colour of placeholders.
        painter.setPen(hostColors().hintText);
        option.currentText = placeholderText();
    }
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    if (isEditable())
        return;

    const QRect room = textRect(option);
    const QString text = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room.width());
    if (!option.currentIcon.isNull()) {
        const QRect field = fieldRect(option);
        const QRect place(QPoint(field.left(), field.top()),
                          QSize(option.iconSize.width(), field.height()));
        const QRect icon = QStyle::visualRect(layoutDirection(), field, place);
        option.currentIcon.paint(&painter, icon, Qt::AlignCenter,
                                 isEnabled() ? QIcon::Normal : QIcon::Disabled);
    }
    const Qt::Alignment alignment = QStyle::visualAlignment(layoutDirection(), m_alignment);
    painter.drawText(room, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                     text);
}

void CComboBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

QRect CComboBox::fieldRect(const QStyleOptionComboBox& option) const
{
    return style()
        ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this)
        .adjusted(kTextMargin, 0, -kTextMargin, 0);
}

/// Returns the rectangle of the text. A centred text is centred in the whole widget, as in the
/// list, unless it would overlap the arrow.
QRect CComboBox::textRect(const QStyleOptionComboBox& option) const
{
    QRect room = fieldRect(option);
    if (!option.currentIcon.isNull()) {
        const int icon = option.iconSize.width() + kIconSpace;
        room.adjust(layoutDirection() == Qt::LeftToRight ? icon : 0, 0,
                    layoutDirection() == Qt::LeftToRight ? 0 : -icon, 0);
    }
    if (m_alignment & Qt::AlignHCenter) {
        const int margin = qMax(room.left(), width() - 1 - room.right());
        const QRect middle(margin, room.top(), width() - 2 * margin, room.height());
        if (fontMetrics().horizontalAdvance(option.currentText) <= middle.width())
            return middle;
    }
    return room;
}

bool CComboBox::isElided() const
{
    if (isEditable())
        return false;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return fontMetrics().horizontalAdvance(option.currentText) > textRect(option).width();
}
