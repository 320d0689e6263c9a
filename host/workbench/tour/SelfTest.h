#pragma once

class MainWindow;

/// Waits until the panel shows the project. Returns the exit code, after a message on the standard
/// error stream unless that is 0.
int runSelfTest(MainWindow& window);
