#pragma once

/// Presents each CIPLineEdit to assistive technology as one field with editable text. May be called
/// repeatedly. GUI thread.
void installIPLineEditAccessibility();
