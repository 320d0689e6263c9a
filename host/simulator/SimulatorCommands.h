#pragma once

#include <QString>

class Simulator;

/// Carries out one command line, such as "kill 127.0.1.3" or "light 3 on". Returns the lines to
/// print: the answer of the command, the last line of which begins with "ok" or "error".
QString carryOutCommand(Simulator& simulator, const QString& line);
