#pragma once

/// Presents each CPureImageBtn to assistive technology as a button, or as one with a menu that its
/// actions open. Qt's own interface does not open the menu of a button that has no other action.
/// May be called repeatedly. GUI thread.
void installPureImageBtnAccessibility();
