#include "host/widgets/Dialog.h"

#include "host/widgets/DialogOutline.h"
#include "host/widgets/DialogTitleBar.h"
#include "host/widgets/ReadingOrder.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace {

constexpr int kButtonHeight = 24;
constexpr int kButtonSpacing = 8;
constexpr int kButtonMargin = 16;

struct ButtonText
{
    const char* text;
    QDialogButtonBox::StandardButton button;
    char letter; ///< Presses the button together with Alt, in every language.
};

constexpr ButtonText kButtonTexts[] = {
    {QT_TRANSLATE_NOOP("CDialog", "OK"), QDialogButtonBox::Ok, 'O'},
    {QT_TRANSLATE_NOOP("CDialog", "Cancel"), QDialogButtonBox::Cancel, 'C'},
    {QT_TRANSLATE_NOOP("CDialog", "Yes"), QDialogButtonBox::Yes, 'Y'},
    {QT_TRANSLATE_NOOP("CDialog", "No"), QDialogButtonBox::No, 'N'},
    {QT_TRANSLATE_NOOP("CDialog", "Yes to all"), QDialogButtonBox::YesToAll, 'A'},
    {QT_TRANSLATE_NOOP("CDialog", "No to all"), QDialogButtonBox::NoToAll, 'L'},
    {QT_TRANSLATE_NOOP("CDialog", "Close"), QDialogButtonBox::Close, 'C'},
    {QT_TRANSLATE_NOOP("CDialog", "Open"), QDialogButtonBox::Open, 'O'},
    {QT_TRANSLATE_NOOP("CDialog", "Save"), QDialogButtonBox::Save, 'S'},
    {QT_TRANSLATE_NOOP("CDialog", "Save all"), QDialogButtonBox::SaveAll, 'A'},
    {QT_TRANSLATE_NOOP("CDialog", "Discard"), QDialogButtonBox::Discard, 'D'},
    {QT_TRANSLATE_NOOP("CDialog", "Apply"), QDialogButtonBox::Apply, 'A'},
    {QT_TRANSLATE_NOOP("CDialog", "Reset"), QDialogButtonBox::Reset, 'R'},
    {QT_TRANSLATE_NOOP("CDialog", "Restore defaults"), QDialogButtonBox::RestoreDefaults, 'F'},
    {QT_TRANSLATE_NOOP("CDialog", "Abort"), QDialogButtonBox::Abort, 'B'},
    {QT_TRANSLATE_NOOP("CDialog", "Retry"), QDialogButtonBox::Retry, 'R'},
    {QT_TRANSLATE_NOOP("CDialog", "Ignore"), QDialogButtonBox::Ignore, 'I'},
    {QT_TRANSLATE_NOOP("CDialog", "Help"), QDialogButtonBox::Help, 'H'},
};

QDialogButtonBox* createButtonBox(QWidget* dialog)
{
    auto* box = new QDialogButtonBox(dialog);
    // The same order on every desktop, with the accepting button first.
    box->setStyleSheet(QStringLiteral("button-layout: 0; dialogbuttonbox-buttons-have-icons: 0;"));
    box->layout()->setSpacing(kButtonSpacing);
    box->setContentsMargins(kButtonMargin, 0, kButtonMargin,
                            CDialog::kButtonRowHeight - kButtonHeight);
    box->setFixedHeight(CDialog::kButtonRowHeight);
    box->hide();
    return box;
}

/// Closes `dialog` as rejected without a signal, because its receivers may be partly destroyed.
void dismiss(QDialog& dialog)
{
    dialog.setResult(QDialog::Rejected);
    dialog.hide();
}

} // namespace

CDialog::CDialog(QWidget* parent, const QString& title, const QString& subtitle, int titleButtons)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_titleBar(new DialogTitleBar(subtitle, titleButtons, this))
    , m_body(new QVBoxLayout)
    , m_buttonBox(createButtonBox(this))
    , m_outline(new DialogOutline(this))
{
    setWindowTitle(title);
    m_body->setContentsMargins(0, 0, 0, 0);
    m_body->setSpacing(0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    // Aligned, so that both stay at their edges if the body does not fill the room between them.
    layout->addWidget(m_titleBar, 0, Qt::AlignTop);
    layout->addLayout(m_body, 1);
    layout->addWidget(m_buttonBox, 0, Qt::AlignBottom);
    connect(m_buttonBox, &QDialogButtonBox::accepted, this, &CDialog::takeAccept);
    connect(m_buttonBox, &QDialogButtonBox::rejected, this, [this] { OnReject(); });
    watchParent();
}

CDialog::~CDialog() = default;

void CDialog::Init()
{
    if (m_initialised)
        return;
    m_initialised = true;
    InitWidgets();
    InitLayout(m_body);
    InitConnections();
}

void CDialog::SetDialogBtnRole(QDialogButtonBox::StandardButtons buttons,
                               QDialogButtonBox::StandardButton defaultButton)
{
    m_buttonBox->setStandardButtons(buttons);
    const QList<QAbstractButton*> created = m_buttonBox->buttons();
    for (QAbstractButton* button : created)
        button->setFixedHeight(kButtonHeight);
    retranslateButtons();
    if (QPushButton* button = m_buttonBox->button(defaultButton))
        button->setDefault(true);
    m_buttonBox->setVisible(buttons != QDialogButtonBox::NoButton);
    if (isVisible())
        putButtonsLastInTabOrder();
}

void CDialog::EnableDialogBtn(QDialogButtonBox::StandardButton button, bool enabled)
{
    if (QPushButton* found = m_buttonBox->button(button))
        found->setEnabled(enabled);
}

int CDialog::exec()
{
    if (isAbandoned()) {
        setResult(Rejected);
        return result();
    }
    m_executed = true;
    if (parentWidget() && windowModality() == Qt::NonModal)
        setWindowModality(Qt::WindowModal);
    return QDialog::exec();
}

void CDialog::done(int result)
{
    // The caller's code still runs, but receivers of signals may be partly destroyed.
    if (m_abandoned)
        dismiss(*this);
    else
        QDialog::done(result);
}

void CDialog::reject()
{
    OnReject();
}

/// OnAccept() may run an event loop of the host, in which the user can press the button again.
void CDialog::takeAccept()
{
    if (m_accepting)
        return;
    const QPointer<CDialog> alive(this);
    m_accepting = true;
    const auto end = qScopeGuard([&alive] {
        if (alive)
            alive->m_accepting = false;
    });
    OnAccept();
}

void CDialog::OnAccept()
{
    accept();
}

void CDialog::OnReject()
{
    QDialog::reject();
}

void CDialog::InitWidgets()
{
}

void CDialog::InitLayout(QBoxLayout*)
{
}

void CDialog::InitConnections()
{
}

bool CDialog::event(QEvent* event)
{
    const bool handled = QDialog::event(event);
    switch (event->type()) {
    case QEvent::ChildPolished:
    case QEvent::LayoutRequest:
        m_outline->raise();
        break;
    case QEvent::LanguageChange:
        // After the button box has set the texts of Qt's translation.
        retranslateButtons();
        break;
    case QEvent::ParentChange:
        watchParent();
        break;
    case QEvent::WindowActivate:
        settle();
        break;
    default:
        break;
    }
    return handled;
}

void CDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    m_outline->setGeometry(rect());
}

void CDialog::showEvent(QShowEvent* event)
{
    if (!event->spontaneous()) {
        m_shown = true;
        const bool placed = testAttribute(Qt::WA_Moved);
        if (!isMaximized())
            placeOnScreen();
        putButtonsLastInTabOrder();
        focusFirst();
        putInReadingOrder(*layout());
        m_outline->raise();
        QDialog::showEvent(event);
        // A position that was chosen here is chosen again the next time.
        setAttribute(Qt::WA_Moved, placed);
    } else {
        QDialog::showEvent(event);
    }
}

void CDialog::watchParent()
{
    disconnect(m_parentWatch);
    if (parentWidget()) {
        m_abandoned = false;
        m_parentWatch =
            connect(parentWidget(), &QObject::destroyed, this, &CDialog::leaveDyingParent);
    }
}

/// A widget emits destroyed() before it deletes its children, so this dialog can still leave it. A
/// parent of the parent deletes the parent as its child, so this covers it too. Hiding a dialog
/// ends its exec(); nested calls return from the innermost outwards.
void CDialog::leaveDyingParent()
{
    if (m_shown && !m_executed)
        return;
    if (isVisible()) {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->hide();
    }
    std::vector<QPointer<QDialog>> inner;
    const QList<QDialog*> found = findChildren<QDialog*>();
    for (QDialog* dialog : found)
        inner.emplace_back(dialog);
    // findChildren() lists the outer dialogs first.
    std::for_each(inner.rbegin(), inner.rend(), [](const QPointer<QDialog>& dialog) {
        if (dialog)
            dismiss(*dialog);
    });
    dismiss(*this);
    setParent(nullptr, windowFlags());
    m_abandoned = true;
}

/// Returns whether the parent of this dialog, or of a dialog below it, was destroyed.
bool CDialog::isAbandoned() const
{
    for (const QWidget* widget = this; widget; widget = widget->parentWidget()) {
        const auto* dialog = qobject_cast<const CDialog*>(widget);
        if (dialog && dialog->m_abandoned)
            return true;
    }
    return false;
}

void CDialog::placeOnScreen()
{
    const QWidget* over = parentWidget() ? parentWidget()->window() : nullptr;
    QRect place(pos(), size());
    if (!testAttribute(Qt::WA_Moved) && over && over->isVisible())
        place.moveCenter(over->frameGeometry().center());
    else if (!testAttribute(Qt::WA_Moved))
        place.moveCenter(screen()->availableGeometry().center());
    const QScreen* at = QGuiApplication::screenAt(place.center());
    const QRect room = (at ? at : over ? over->screen() : screen())->availableGeometry();
    // Right and bottom first, so that the title bar is visible if the dialog exceeds the screen.
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    m_place = place.topLeft();
    m_placed = true;
    move(m_place);
}

/// A window manager may place a frameless window correctly and report another position to Qt.
/// Moving it once more corrects the position that Qt stores.
void CDialog::settle()
{
    if (m_placed && pos() != m_place && !isMaximized())
        move(m_place);
    m_placed = false;
}

void CDialog::putButtonsLastInTabOrder()
{
    QWidget* last = previousInFocusChain();
    while (last != this && (last->focusPolicy() == Qt::NoFocus || m_buttonBox->isAncestorOf(last)))
        last = last->previousInFocusChain();
    const QLayout* row = m_buttonBox->layout();
    for (int i = 0; i < row->count(); ++i) {
        QWidget* button = row->itemAt(i)->widget();
        if (!button)
            continue;
        if (last != this)
            setTabOrder(last, button);
        last = button;
    }
}

void CDialog::focusFirst()
{
    if (focusWidget() && focusWidget() != this)
        return;
    for (QWidget* widget = nextInFocusChain(); widget != this;
         widget = widget->nextInFocusChain()) {
        const bool takesFocus = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled()
                                && widget->isVisibleTo(this);
        if (takesFocus && !m_buttonBox->isAncestorOf(widget)) {
            widget->setFocus(Qt::TabFocusReason);
            return;
        }
    }
    const QList<QAbstractButton*> buttons = m_buttonBox->buttons();
    for (QAbstractButton* button : buttons) {
        const auto* pushButton = qobject_cast<QPushButton*>(button);
        if (pushButton && pushButton->isDefault())
            button->setFocus(Qt::TabFocusReason);
    }
}

void CDialog::retranslateButtons()
{
    for (const auto& [text, button, letter] : kButtonTexts) {
        if (QPushButton* found = m_buttonBox->button(button)) {
            found->setText(tr(text));
            // After the text, which resets the shortcut.
            found->setShortcut(QLatin1String("Alt+") + QLatin1Char(letter));
        }
    }
}
