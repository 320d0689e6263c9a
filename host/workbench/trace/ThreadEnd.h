#pragma once

class QThread;

/// Waits for the end of a thread that has been told to end. Processes the events of the GUI thread
/// meanwhile, except input, because the thread may need them for its end. GUI thread.
void waitForEnd(QThread& thread);
