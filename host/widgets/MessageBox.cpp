#include "host/widgets/MessageBox.h"

#include "host/widgets/MessageText.h"

#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QSvgRenderer>

#include <algorithm>

namespace {

constexpr int kIconSize = 32;
constexpr int kGap = 16;
constexpr int kMargin = 16;
constexpr int kMarginAbove = 12;
constexpr int kMarginBelow = 24;
constexpr int kLeastTextWidth = 80;

QPixmap drawn(const QString& file, qreal ratio)
{
    QPixmap pixmap(QSize(kIconSize, kIconSize) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(file).render(&painter, QRectF(0, 0, kIconSize, kIconSize));
    return pixmap;
}

QAccessibleInterface* createAlert(const QString&, QObject* object)
{
    if (auto* box = qobject_cast<CMessageBox*>(object))
        return new QAccessibleWidget(box, QAccessible::AlertMessage);
    auto* area = qobject_cast<QScrollArea*>(object);
    return area && qobject_cast<CMessageBox*>(area->parent())
               ? new QAccessibleWidget(area, QAccessible::Grouping)
               : nullptr;
}

/// Presents message boxes to assistive technology as alerts, which are read out at once, and what
/// scrolls in them as a group, where Qt has no role for it.
void installAlerts()
{
    static const bool installed = [] {
        QAccessible::installFactory(createAlert);
        return true;
    }();
    Q_UNUSED(installed)
}

} // namespace

CMessageBox::CMessageBox(QWidget* parent, Kind kind, const QString& text, const QString& caption,
                         int width)
    : CDialog(parent, caption, QString(), CloseTitleButton)
    , m_kind(kind)
    , m_text(text)
    , m_width(std::max(width, 2 * kMargin + kIconSize + kGap + kLeastTextWidth))
{
    installAlerts();
    setFixedWidth(m_width);
    setAccessibleDescription(text);
    Init();
}

int CMessageBox::information(QWidget* parent, const QString& text, const QString& caption,
                             QDialogButtonBox::StandardButtons buttons,
                             QDialogButtonBox::StandardButton defaultButton, int width)
{
    ask(parent, Kind::Information, text, caption, buttons, defaultButton, width);
    return Ok;
}

int CMessageBox::question(QWidget* parent, const QString& text, const QString& caption,
                          QDialogButtonBox::StandardButtons buttons,
                          QDialogButtonBox::StandardButton defaultButton, int width)
{
    return ask(parent, Kind::Question, text, caption, buttons, defaultButton, width) ? Yes : No;
}

bool CMessageBox::ask(QWidget* parent, Kind kind, const QString& text, const QString& caption,
                      QDialogButtonBox::StandardButtons buttons,
                      QDialogButtonBox::StandardButton defaultButton, int width)
{
    CMessageBox box(parent, kind, text, caption, width);
    box.SetDialogBtnRole(buttons, defaultButton);
    // The button gets the focus, also if the text can be scrolled.
    if (QPushButton* button = box.findChild<QDialogButtonBox*>()->button(defaultButton))
        button->setFocus(Qt::TabFocusReason);
    return box.exec() == Accepted;
}

void CMessageBox::InitWidgets()
{
    m_icon = new QLabel(this);
    m_icon->setFixedSize(kIconSize, kIconSize);
    m_icon->setAccessibleName(m_kind == Kind::Question ? tr("Question") : tr("Information"));
    m_icon->setPixmap(drawn(m_kind == Kind::Question
                                ? QStringLiteral(":/HostWidgets/icons/question.svg")
                                : QStringLiteral(":/HostWidgets/icons/information.svg"),
                            devicePixelRatioF()));

    const int width = m_width - 2 * kMargin - kIconSize - kGap;
    const int spare = kTitleBarHeight + kMarginAbove + kMarginBelow + kButtonRowHeight;
    const int most = screen()->availableGeometry().height() - spare;
    m_area = new QScrollArea(this);
    m_area->setAccessibleName(tr("Message"));
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* text = new MessageText(m_text, width, m_area);
    text->setObjectName(QStringLiteral("MessageText"));
    const bool scrolls = text->height() > most;
    if (scrolls)
        text->setFixedWidth(width - style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    m_area->setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
    m_area->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    m_area->setFixedSize(width, std::min(text->height(), most));
    m_area->setWidget(text);
    // Transparent, to show the background of the dialog.
    text->setAutoFillBackground(false);
    m_area->viewport()->setAutoFillBackground(false);
}

void CMessageBox::InitLayout(QBoxLayout* body)
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(kMargin, kMarginAbove, kMargin, kMarginBelow);
    row->setSpacing(kGap);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    row->addWidget(m_area, 0, Qt::AlignVCenter);
    row->addStretch(1);
    body->addLayout(row);
}

void CMessageBox::showEvent(QShowEvent* event)
{
    CDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}
