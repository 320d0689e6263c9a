#pragma once

/// Presents each CPureImageBtn, CMenuToolButton and plain QToolButton to assistive technology as a
/// button that can be pressed, with a menu that can be opened if it has one. Qt's own interface
/// leaves out the press of a button with a menu, and does not open the menu of a button that has no
/// other action. May be called repeatedly. GUI thread.
void installToolButtonAccessibility();
