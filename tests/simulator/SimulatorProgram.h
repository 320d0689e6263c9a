#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// The built processor-sim as a separate process.
class SimulatorProgram final
{
public:
    SimulatorProgram() = default;
    ~SimulatorProgram();
    SimulatorProgram(const SimulatorProgram&) = delete;
    SimulatorProgram& operator=(const SimulatorProgram&) = delete;

    /// Starts the program on a free port, unless the arguments name one, and waits until it is
    /// ready. Returns false if it ends instead; problem() tells why.
    bool start(QStringList arguments);

    /// Returns the port of all processors.
    quint16 port() const { return m_port; }

    /// Gives a command, and returns the line of its answer that begins with "ok" or "error".
    QString command(const QString& line);

    /// Waits for a line that begins like this, and returns it; empty if none comes in time.
    QString waitForLine(const QString& begin);

    /// Returns the lines that have come so far and that nobody has waited for.
    QStringList lines();

    /// Ends the program with its input. Returns its exit code.
    int endInput();

    /// Asks the program to end, by SIGTERM or Ctrl+C. Returns its exit code.
    int terminate();

    /// Ends the program without a chance to say so, as a crash does.
    void kill();

    /// Stops the program without ending it, as a device that hangs, and lets it go on.
    void pause();
    void goOn();

    int exitCode() const { return m_process.exitCode(); }
    QString problem() const { return m_problem; }

private:
    bool takeLines();
    int waitForEnd();

    QProcess m_process;
    QStringList m_lines;
    QString m_problem;
    quint16 m_port = 0;
};
