#include "host/workbench/session/RecoveryFile.h"
#include "host/workbench/session/Settings.h"
#include "tests/support/WarningTrap.h"
#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int kSoonMs = 60000;

/// The workbench with a user, who is not there.
class Workbench final
{
public:
    explicit Workbench(const QDir& folder)
        : m_folder(folder)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    }

    ~Workbench() { kill(); }
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    void start()
    {
        m_process.start(
            workbenchProgram(),
            withPanel({QStringLiteral("--project"), file("mine.json"), QStringLiteral("--trace"),
                       file("trace.txt"), QStringLiteral("--record"), file("session.jsonl"),
                       QStringLiteral("--inspect"), file("inspector")}));
    }

    /// Ends the program as a crash does: it does not get to know.
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(kSoonMs);
    }

    bool isRunning() const { return m_process.state() == QProcess::Running; }

    QString file(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    /// Returns what its windows show; empty while it does not listen.
    QString look() const { return QString::fromUtf8(inspectWorkbench(file("inspector"))); }

    bool shows(const char* text) const { return look().contains(QLatin1String(text)); }

private:
    const QDir m_folder;
    QProcess m_process;
};

QStringList filesLeft(const char* pattern)
{
    return QDir(RecoveryFile::folder()).entryList({QLatin1String(pattern)}, QDir::Files);
}

} // namespace

/// The workbench ends without warning, and nothing of it is in the way of the next one.
class CrashedWorkbenchTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldStartAgainAndOfferTheCopy();

private:
    const QTemporaryDir m_folder;
};

/// Windows knows the user's folder whatever the environment says, and has another one there for
/// each test.
void CrashedWorkbenchTest::initTestCase()
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.filePath(QStringLiteral("settings"))));
    WorkbenchSettings().setValue(QStringLiteral("autosaveSeconds"), 1);
    QCOMPARE(filesLeft("*"), QStringList());
}

void CrashedWorkbenchTest::shouldStartAgainAndOfferTheCopy()
{
    Workbench workbench{QDir(m_folder.path())};
    const QString project = workbench.file("mine.json");
    const QString sample = sampleProject();
    QVERIFY(QFile::copy(sample, project));
    workbench.start();
    QTRY_VERIFY_WITH_TIMEOUT(workbench.shows("All processors(120)"), kSoonMs);
    // A project without its file is unsaved.
    QVERIFY(QFile::remove(project));
    QTRY_COMPARE_WITH_TIMEOUT(filesLeft("*.recovery").size(), 1, kSoonMs);
    workbench.kill();
    const QStringList copies = filesLeft("*.recovery");
    QCOMPARE(filesLeft("*.lock").size(), 1);
    QVERIFY(QFile::copy(sample, project));
    const QByteArray recording = contentOf(workbench.file("session.jsonl"));
    const QByteArray trace = contentOf(workbench.file("trace.txt"));
    QVERIFY(!recording.isEmpty() && !trace.isEmpty());

    workbench.start();
    QTRY_VERIFY_WITH_TIMEOUT(workbench.shows("The program ended without warning."), kSoonMs);
    QVERIFY(workbench.isRunning());
    const QString shown = workbench.look();
    QVERIFY2(shown.contains(QStringLiteral("All processors(120)")), qPrintable(shown));
    QVERIFY2(shown.contains(QStringLiteral("mine.json")), qPrintable(shown));
    QVERIFY2(shown.contains(QStringLiteral("\"Recover\"")), qPrintable(shown));
    QCOMPARE(filesLeft("*.recovery"), copies);
    // What the former one wrote is replaced: both begin with the time.
    QVERIFY2(!shown.contains(QStringLiteral("cannot be written")), qPrintable(shown));
    const auto isReplaced = [](const QByteArray& former, const QByteArray& now) {
        return !now.isEmpty() && !now.startsWith(former.left(former.indexOf('\n')));
    };
    QVERIFY(isReplaced(trace, contentOf(workbench.file("trace.txt"))));
    QVERIFY(isReplaced(recording, contentOf(workbench.file("session.jsonl"))));
}

TSA_GUILESS_TEST_MAIN(CrashedWorkbenchTest)

#include "tst_crashed_workbench.moc"
