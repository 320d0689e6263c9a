#pragma once

class QWidget;

/// Runs the management of the host's IP addresses, tells the host of the list before and after it,
/// and has it detect the processors anew when it wants that. GUI thread; modal over `panel`, which
/// may be gone afterwards.
void manageAddresses(QWidget* panel);
