#pragma once

/// Has assistive technology see every CIPLineEdit as one field of editable text. Any number of
/// calls. GUI thread.
void installIPLineEditAccessibility();
