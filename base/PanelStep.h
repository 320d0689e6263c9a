#pragma once

class QWidget;

/// While one lives, the panel is in the middle of a step in which the host may destroy it: a
/// question to the host, or what an entry of a menu does. Qt may be in the middle of events of the
/// panel's widgets then, further down the stack, and does not expect to lose them there.
///
/// Such a widget leaves the dying panel or row, and is deleted when the event in which the
/// outermost step ended is over. That may be much later: the host may have destroyed the panel in
/// an event loop of its own, inside the step, which would delete at once what is to be deleted
/// later.
///
/// Each thread has steps of its own; only those of the GUI thread keep widgets.
class CPanelStep final
{
public:
    CPanelStep();
    ~CPanelStep();
    CPanelStep(const CPanelStep&) = delete;
    CPanelStep& operator=(const CPanelStep&) = delete;

    /// Returns whether the GUI thread is in the middle of one. GUI thread.
    static bool isUnderWay();

    /// Takes `widget` out of its parent and hides it, until it is deleted. Outside all steps that
    /// is when the event in hand is over. GUI thread.
    static void keep(QWidget* widget);
};
