#include "processortree/view/NameEditor.h"

#include "base/PanelStep.h"
#include "base/TargetSelectHandler.h"
#include "processortree/view/NameGuard.h"

#include <QEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPointer>

#include <utility>

namespace {

bool isUtf8()
{
    const auto handler = GetTargetSelectHandler();
    return !handler || handler->IsNameUtf8();
}

} // namespace

QLineEdit* CNameEditor::create(QWidget* parent)
{
    const auto present =
        parent ? parent->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly)
               : QList<QLineEdit*>();
    for (QLineEdit* field : present) {
        CNameEditor* const editor = of(*field);
        if (editor && std::exchange(editor->m_passedOn, false))
            return field;
    }
    auto* field = new QLineEdit(parent);
    // The menu is prevented, not left out: it would become the row's behind the field.
    field->setContextMenuPolicy(Qt::PreventContextMenu);
    new CNameEditor(field);
    return field;
}

void CNameEditor::passOn(QLineEdit& field)
{
    if (CNameEditor* const editor = of(field))
        editor->m_passedOn = true;
}

CNameEditor* CNameEditor::of(const QLineEdit& field)
{
    return field.findChild<CNameEditor*>(QString(), Qt::FindDirectChildrenOnly);
}

QString CNameEditor::finishName(QLineEdit& field)
{
    const QPointer<QLineEdit> alive(&field);
    if (CNameEditor* const editor = of(field)) {
        editor->m_composing = false;
        editor->fitIfDue();
    }
    return alive ? alive->text() : QString();
}

CNameEditor::CNameEditor(QLineEdit* field)
    : QObject(field)
    , m_field(field)
{
    connect(field, &QLineEdit::textChanged, this, &CNameEditor::onTextChanged);
    field->installEventFilter(this);
}

bool CNameEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::InputMethod) {
        m_composing = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
        // The field has yet to see the event.
        if (m_due && !m_composing)
            QMetaObject::invokeMethod(this, &CNameEditor::fitIfDue, Qt::QueuedConnection);
    } else if (event->type() == QEvent::FocusOut) {
        m_composing = false;
    } else if (event->type() == QEvent::DeferredDelete && CPanelStep::isUnderWay()) {
        // An event loop of the host's. Qt goes on with the field when the question is answered.
        CPanelStep::keep(m_field);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CNameEditor::onTextChanged()
{
    if (m_fitting)
        return;
    m_due = true;
    fitIfDue();
}

void CNameEditor::fitIfDue()
{
    if (!m_due || m_composing)
        return;
    m_due = false;
    const QPointer<CNameEditor> self(this);
    const int limit = askHost(&Host::GetNameMaxBytes);
    const bool utf8 = self && isUtf8();
    if (!self)
        return; // the host took the row, and its field, away

    const NameGuard::Fit fit =
        NameGuard::fit(m_field->text(), m_field->cursorPosition(), limit, NameGuard::codec(utf8));
    // Both setters move the cursor and forget what could be undone and that the user has typed, so
    // neither is called in vain.
    const bool isCut = m_field->text() != fit.text;
    const bool isOtherLength = m_field->maxLength() != fit.maxLength;
    const bool isTyped = m_field->isModified();
    m_fitting = true;
    if (isCut)
        m_field->setText(fit.text);
    if (isOtherLength)
        m_field->setMaxLength(fit.maxLength);
    if (isCut || isOtherLength) {
        m_field->setCursorPosition(fit.cursor);
        m_field->setModified(isTyped);
    }
    m_fitting = false;
}
