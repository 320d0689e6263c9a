#pragma once

class MainWindow;

/// Waits until the panel shows the project. Returns the exit code. Prints a message to the standard
/// error stream if it is not 0.
int runSelfTest(MainWindow& window);
