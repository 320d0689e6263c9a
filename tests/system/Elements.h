#pragma once

#include "tests/system/Screen.h"

#include <QString>

/// The elements that a user looks for, by their names.

inline QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// Returns a row of the panel.
inline Wanted row(const char* name)
{
    return {text("TreeItem"), text(name), text("Processors")};
}

inline Wanted button(const char* name, const char* within = "")
{
    return {text("Button"), text(name), text(within)};
}

inline Wanted menuButton(const char* name, const char* within = "")
{
    return {text("ButtonMenu"), text(name), text(within)};
}

inline Wanted entry(const char* name)
{
    return {text("MenuItem"), text(name), {}};
}

inline Wanted field(const char* name, const char* within)
{
    return {text("EditableText"), text(name), text(within)};
}

inline Wanted dialog(const char* title)
{
    return {text("Dialog"), text(title), {}};
}

inline Wanted messageBox(const char* title)
{
    return {text("AlertMessage"), text(title), {}};
}
