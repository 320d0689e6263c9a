#include "tests/simulator/SimulatorProgram.h"
#include "tests/support/WarningTrap.h"
#include "tests/system/Elements.h"
#include "tests/system/User.h"
#include "tests/system/WorkbenchProgram.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>

namespace {

/// A cell of the host's own view.
Wanted cell(const char* name)
{
    return {text("TreeItem"), text(name), text("Records of the project")};
}

constexpr char kDetectAgain[] = "ctrl+alt+d";

} // namespace

/// The built workbench in front of the built simulator, used with mouse and keys.
class NetworkDayTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldDetectAndWatch_data();
    void shouldDetectAndWatch();

private:
    QString doIt(bool byIpList);
    QString writeProject(bool byIpList) const;
    void detect();
    void cancel();
    void lose();
    void waitForLog(const char* kind, const char* end);

    SimulatorProgram* m_simulator = nullptr;
    WorkbenchProgram* m_program = nullptr;
    User* m_user = nullptr;
};

void NetworkDayTest::shouldDetectAndWatch_data()
{
    QTest::addColumn<bool>("byIpList");
    QTest::newRow("by the IP list") << true;
    QTest::newRow("by broadcast") << false;
}

void NetworkDayTest::shouldDetectAndWatch()
{
    QFETCH(bool, byIpList);
    const QString failure = doIt(byIpList);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
}

/// Returns what went wrong; empty for nothing.
QString NetworkDayTest::doIt(bool byIpList)
{
    SimulatorProgram simulator;
    WorkbenchProgram program;
    User user(program);
    m_simulator = &simulator;
    m_program = &program;
    m_user = &user;
    try {
        if (!simulator.start({text("--count"), text("50"), text("--base"), text("127.0.1.1")}))
            throw Stuck(simulator.problem());
        program.start({text("--project"), writeProject(byIpList)});
        detect();
        // The rest is the same however they were found.
        if (byIpList) {
            lose();
            cancel();
        }
    } catch (const Stuck& stuck) {
        return QString::fromStdString(stuck.what()) + QLatin1Char('\n')
               + program.log(text("log")).join(QLatin1Char('\n')) + QLatin1Char('\n')
               + program.look().dump();
    }
    return {};
}

QString NetworkDayTest::writeProject(bool byIpList) const
{
    QJsonArray addresses;
    for (int at = 1; byIpList && at <= 50; ++at)
        addresses.append(text("127.0.1.%1(Device)").arg(at));
    const QJsonObject project{
        {text("version"), 1},
        {text("ipList"), addresses},
        {text("answers"), QJsonObject{{text("detectStrategy"), byIpList ? 2 : 0}}},
        {text("network"), QJsonObject{{text("enabled"), true},
                                      {text("port"), m_simulator->port()},
                                      {text("probeTimeoutMs"), byIpList ? 10000 : 500},
                                      {text("aliveIntervalMs"), 100},
                                      {text("deadTimeoutMs"), 500}}}};
    const QString path = m_program->path(text("network.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(project).toJson()) < 0)
        throw Stuck(text("%1 cannot be written").arg(path));
    return path;
}

void NetworkDayTest::detect()
{
    m_user->find(row("All processors(0)"));
    m_user->pressKeys(text(kDetectAgain));
    m_user->find(row("All processors(50)"));
    waitForLog("call", "DetectAllDevices() = 0");
    m_user->find(row("Device 1"));
}

void NetworkDayTest::lose()
{
    m_simulator->command(text("kill 3"));
    waitForLog("log", "127.0.1.3 has not been heard of for 500 ms");
    m_user->find(cell("offline"));
    m_simulator->command(text("start 3"));
    waitForLog("log", "127.0.1.3 is back");
    m_user->waitUntilGone(cell("offline"));
}

/// One processor hangs, so the detection waits for it until the time is over.
void NetworkDayTest::cancel()
{
    m_simulator->command(text("mute 50"));
    m_user->pressKeys(text(kDetectAgain));
    m_user->find({text("Button"), text("Cancel the detection"), {}});
    m_user->pressKeys(text("Escape"));
    waitForLog("call", "DetectAllDevices() = 0xE0830001");
    m_user->pressKeys(text(kDetectAgain));
    m_user->click({text("Button"), text("Cancel the detection"), {}});
    m_user->waitFor(text("the second end"), [this] {
        return m_program->log(text("call")).filter(text("DetectAllDevices() = 0xE0830001")).size()
               == 2;
    });
    m_user->waitUntilGone({text("Button"), text("Cancel the detection"), {}});
}

void NetworkDayTest::waitForLog(const char* kind, const char* end)
{
    m_user->waitFor(text(end), [&] {
        const QStringList lines = m_program->log(text(kind));
        return std::any_of(lines.begin(), lines.end(),
                           [&](const QString& line) { return line.endsWith(text(end)); });
    });
}

TSA_TEST_MAIN(NetworkDayTest)

#include "tst_networkday.moc"
