#include "host/widgets/IPKeys.h"

#include <QKeyEvent>
#include <QKeySequence>

#include <algorithm>
#include <iterator>

namespace {

/// Returns the modifiers without the keypad's, so that its keys act like the others.
Qt::KeyboardModifiers modifiersOf(const QKeyEvent& key)
{
    return key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
}

} // namespace

namespace IPKeys {

bool isClipboardKey(const QKeyEvent& key)
{
    const QKeySequence::StandardKey keys[] = {QKeySequence::Copy,  QKeySequence::Cut,
                                              QKeySequence::Paste, QKeySequence::SelectAll,
                                              QKeySequence::Undo,  QKeySequence::Redo};
    return std::any_of(
        std::begin(keys), std::end(keys),
        [&key](QKeySequence::StandardKey standard) { return key.matches(standard); });
}

bool isEditingKey(const QKeyEvent& key)
{
    if (modifiersOf(key) & ~Qt::KeyboardModifiers(Qt::ShiftModifier | Qt::ControlModifier))
        return false;
    switch (key.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return true;
    default:
        return false;
    }
}

bool isText(const QKeyEvent& key)
{
    const bool command = modifiersOf(key) & (Qt::ControlModifier | Qt::AltModifier);
    return !command && !key.text().isEmpty() && key.text().at(0).isPrint();
}

} // namespace IPKeys
