#include "tests/simulator/SimulatorProgram.h"

#include "tests/simulator/ProcessControl.h"

#include <QDeadlineTimer>

namespace {

constexpr int kWaitMs = 30000;

} // namespace

SimulatorProgram::~SimulatorProgram()
{
    kill();
}

bool SimulatorProgram::start(QStringList arguments)
{
    if (!arguments.contains(QStringLiteral("--port")))
        arguments += {QStringLiteral("--port"), QStringLiteral("0")};
    ProcessControl::prepare(m_process);
    m_process.start(QStringLiteral(SIMULATOR_PROGRAM), arguments);
    const QString ready = waitForLine(QStringLiteral("ready "));
    m_port = ready.section(QLatin1Char(' '), -1).toUShort();
    if (ready.isEmpty()) {
        m_process.waitForFinished(kWaitMs);
        m_problem = QString::fromUtf8(m_process.readAllStandardError());
    }
    return !ready.isEmpty();
}

QString SimulatorProgram::command(const QString& line)
{
    m_process.write(line.toUtf8() + '\n');
    const QDeadlineTimer deadline(kWaitMs);
    do {
        for (int at = 0; at < m_lines.size(); ++at) {
            const QString word = m_lines.at(at).section(QLatin1Char(' '), 0, 0);
            if (word == QLatin1String("ok") || word == QLatin1String("error"))
                return m_lines.takeAt(at);
        }
    } while (takeLines() && !deadline.hasExpired());
    return {};
}

QString SimulatorProgram::waitForLine(const QString& begin)
{
    const QDeadlineTimer deadline(kWaitMs);
    do {
        for (int at = 0; at < m_lines.size(); ++at) {
            if (m_lines.at(at).startsWith(begin))
                return m_lines.takeAt(at);
        }
    } while (takeLines() && !deadline.hasExpired());
    return {};
}

QStringList SimulatorProgram::lines()
{
    while (m_process.canReadLine())
        m_lines.append(QString::fromUtf8(m_process.readLine()).trimmed());
    return m_lines;
}

int SimulatorProgram::endInput()
{
    m_process.closeWriteChannel();
    return waitForEnd();
}

int SimulatorProgram::terminate()
{
    ProcessControl::askToEnd(m_process);
    return waitForEnd();
}

void SimulatorProgram::kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(kWaitMs);
}

void SimulatorProgram::pause()
{
    ProcessControl::pause(m_process);
}

void SimulatorProgram::goOn()
{
    ProcessControl::goOn(m_process);
}

/// Waits for a line. Returns false if none will come.
bool SimulatorProgram::takeLines()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(kWaitMs))
            return false;
    }
    lines();
    return true;
}

int SimulatorProgram::waitForEnd()
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kWaitMs))
        return -1;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}
