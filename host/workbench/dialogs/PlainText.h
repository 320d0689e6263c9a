#pragma once

#include <QString>

/// Names as they are, where Qt would read marks into them.
namespace PlainText {

/// For a tool tip, which takes for HTML what looks like it.
QString toolTip(const QString& text);

/// For an entry of a menu, where an ampersand marks a key.
QString menuEntry(QString text);

/// For the title of a window, where "[*]" is the place of the mark of changes.
QString windowTitle(QString text);

} // namespace PlainText
