#pragma once

#include "sdk/record/TraceEntry.h"

class QWidget;

/// Repeats gestures of the user.
namespace InputPlayer {

/// Returns the widget of a gesture on `panel`; null while it is not there, or hidden or disabled.
QWidget* target(QWidget& panel, const CTraceEntry& gesture);

/// Returns whether `widget` shows the row that a gesture chooses; true for all other gestures.
bool isEntryThere(const QWidget& widget, const CTraceEntry& gesture);

/// Returns whether the gesture is for whatever has the focus: a key, which a list of proposals that
/// is not there this time hands on to its field, and the loss of the focus.
bool isForAnyWidget(const CTraceEntry& gesture);

/// Returns the innermost widget on the way to the one of the gesture that is there.
QWidget& nearest(QWidget& panel, const CTraceEntry& gesture);

/// Delivers the gesture to the widget as the window system does. Returns when the widget has
/// handled it, which is at the end of a dialog that it opens.
void perform(QWidget& widget, const CTraceEntry& gesture);

} // namespace InputPlayer
