#include "tests/support/WarningTrap.h"
#include "tests/support/WorkbenchRun.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// Sessions that are hard to repeat: each is a script, which is recorded and replayed.
class ScriptReplaysTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldCloseADialogByItsTitleBar();
    void shouldLoseTheKeyboardToTheHost();
    void shouldNotTakeAKeyOfThePanelForOneOfTheHost();
    void shouldDestroyThePanelInsideAQuestion();
    void shouldReplaceTheHandler();
    void shouldFindTheEntryOfAMenuWithAnotherFont();
    void shouldFindTheRowsOfListsWithAnotherFont();
    void shouldClickBetweenAnEventAndItsQuestion();
    void shouldPressAKeyAfterTheQuestionOfAnEvent();

private:
    void record(const QByteArray& script);
    void replay();

    const QTemporaryDir m_folder;
    QString m_path;
    QByteArray m_recording;
};

void ScriptReplaysTest::initTestCase()
{
    QVERIFY(QDir::setCurrent(QStringLiteral(EXAMPLE_SCRIPTS)));
    m_path = m_folder.filePath(QStringLiteral("session.jsonl"));
}

/// Records what the script does with the project of the examples.
void ScriptReplaysTest::record(const QByteArray& script)
{
    const ProgramRun run = runWorkbench(
        {QStringLiteral("--script"), QStringLiteral("-"), QStringLiteral("--record"), m_path},
        "open \"projects/show.json\"\nexpect shown\n" + script);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    m_recording = contentOf(m_path);
}

void ScriptReplaysTest::replay()
{
    const ProgramRun run = runWorkbench({QStringLiteral("--replay"), m_path});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
}

void ScriptReplaysTest::shouldCloseADialogByItsTitleBar()
{
    record("click \"IP address management...\"\n"
           "expect dialog \"IP address management\"\n"
           "close\n"
           "expect no dialog\n");
    QCOMPARE(m_recording.count("\"name\":\"close\""), 1);
    replay();
}

/// The name is stored when the dialog of the host takes the keyboard.
void ScriptReplaysTest::shouldLoseTheKeyboardToTheHost()
{
    record("click row \"Left\"\n"
           "press F2\n"
           "expect focus \"Name\"\n"
           "type \"Far left\"\n"
           "command \"Handler answers\"\n"
           "expect dialog \"*\"\n"
           "reply \"Cancel\"\n"
           "expect row \"Far left\"\n");
    QCOMPARE(m_recording.count("\"name\":\"focusOut\""), 1);
    replay();
}

/// The question of the panel goes with it. The key that opened it was offered to the host, too.
void ScriptReplaysTest::shouldNotTakeAKeyOfThePanelForOneOfTheHost()
{
    record("click row \"Left\"\n"
           "press Delete\n"
           "expect message \"Want to delete*\"\n"
           "command \"Destroy the panel\"\n"
           "expect no panel\n");
    QCOMPARE(m_recording.count("\"name\":\"focusOut\""), 0);
    replay();
}

/// The panel asks whether the address fits, and does not live to add it.
void ScriptReplaysTest::shouldDestroyThePanelInsideAQuestion()
{
    record("click \"IP address management...\"\n"
           "click \"Add\"\n"
           "pick \"Add an IP address...\"\n"
           "fill \"IP address\" \"192.168.0.41\"\n"
           "fault CheckIPAddress call 1 panelDestroyed\n"
           "click \"OK\"\n"
           "expect no panel\n"
           "expect no call AddIPAddress\n"
           "no faults\n"
           "command \"Initialise the panel again\"\n"
           "expect shown\n");
    replay();
}

/// The host drops its handler, and goes on to notify the observer that this one has got.
void ScriptReplaysTest::shouldReplaceTheHandler()
{
    record("fault ReportSelection call 1 handlerReplaced\n"
           "click row \"Right\"\n"
           "expect strikes 1\n"
           "host rename \"Right\" \"Far right\"\n"
           "expect row \"Far right\"\n"
           "click row \"Centre\"\n"
           "command \"Reconnect\"\n"
           "host rename \"Left\" \"Far left\"\n"
           "expect row \"Far left\"\n"
           "expect shown\n");
    QVERIFY(m_recording.contains("\"name\":\"HandlerReplaced\",\"args\":{\"assigned\":true}"));
    QVERIFY(m_recording.contains("\"name\":\"Far left\"}]"));
    replay();
}

void ScriptReplaysTest::shouldFindTheEntryOfAMenuWithAnotherFont()
{
    record("right-click row \"Right\"\n"
           "pick \"Rename\"\n"
           "expect focus \"Name\"\n"
           "type \"Far right\"\n"
           "press Return\n"
           "expect row \"Far right\"\n");
    // The first entry is there, which is another one.
    QString moved = QString::fromUtf8(m_recording);
    const QRegularExpression entry(
        QStringLiteral("(\"entry\":[1-9][^\\n]*#QMenu:0[^\\n]*,\"y\":)\\d+"));
    QCOMPARE(moved.count(entry), 3);
    moved.replace(entry, QStringLiteral("\\15"));
    QVERIFY(writeFile(m_path, moved.toUtf8()));
    replay();
}

void ScriptReplaysTest::shouldFindTheRowsOfListsWithAnotherFont()
{
    record("choose \"Device set\" \"Rehearsal\"\n"
           "expect call ConfirmDeviceSetChange * 1\n"
           "click row \"Right\"\n"
           "right-click row \"Spare 2\"\n"
           "close\n");
    // Another row is there now: the first of the list, the one of all processors in the tree.
    QString moved = QString::fromUtf8(m_recording);
    for (const char* text : {"Rehearsal", "Right", "Spare 2"}) {
        const QRegularExpression row(
            QStringLiteral("(\"text\":\"%1\"[^\\n]*,\"y\":)\\d+").arg(QLatin1String(text)));
        QVERIFY2(moved.count(row) >= 2, text);
        moved.replace(row, QStringLiteral("\\15"));
    }
    QVERIFY(writeFile(m_path, moved.toUtf8()));
    replay();
}

/// The user is quicker than the thread that tells of a group: it comes above the row that he
/// clicks, which is elsewhere afterwards.
void ScriptReplaysTest::shouldClickBetweenAnEventAndItsQuestion()
{
    record("host add group \"Balcony\"\n"
           "expect row \"Balcony\"\n"
           "click row \"Spare 2\"\n"
           "expect call ReportSelection\n");
    // The first line stays as it is: by it a recording is known.
    QByteArray changed = m_recording.left(m_recording.indexOf('\n') + 1);
    QJsonObject event;
    int clicks = 0;
    for (const QByteArray& line : m_recording.mid(changed.size()).split('\n')) {
        QJsonObject entry = QJsonDocument::fromJson(line).object();
        QJsonObject arguments = entry.value(QStringLiteral("args")).toObject();
        for (const QString& number : {QStringLiteral("seq"), QStringLiteral("cause")}) {
            if (entry.value(number).isDouble())
                entry.insert(number, entry.value(number).toInt() * 10);
        }
        if (entry.value(QStringLiteral("name")) == QStringLiteral("GroupAdded"))
            event = entry;
        if (arguments.value(QStringLiteral("text")) == QStringLiteral("Spare 2")) {
            ++clicks;
            QJsonArray place = arguments.value(QStringLiteral("entry")).toArray();
            place[1] = place.at(1).toInt() - 1;
            arguments.insert(QStringLiteral("entry"), place);
            arguments.insert(QStringLiteral("y"), 5); // on another row
            entry.insert(QStringLiteral("args"), arguments);
            entry.insert(QStringLiteral("cause"), QJsonValue());
            entry.insert(QStringLiteral("seq"),
                         event.value(QStringLiteral("seq")).toInt() + clicks);
            entry.insert(QStringLiteral("ms"), event.value(QStringLiteral("ms")).toDouble() + 1e-6);
        }
        if (!entry.isEmpty())
            changed += QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n';
    }
    QVERIFY(clicks >= 2);
    QVERIFY(writeFile(m_path, changed));
    replay();
}

/// The thread that tells of a group is held up after the panel has taken the group up.
void ScriptReplaysTest::shouldPressAKeyAfterTheQuestionOfAnEvent()
{
    record("click row \"Door\"\n"
           "host add group \"Balcony\"\n"
           "expect row \"Balcony\"\n"
           "press Down\n"
           "expect row \"Balcony\" is selected\n");
    QString held = QString::fromUtf8(m_recording);
    const QRegularExpression end(
        QStringLiteral("(\"name\":\"GroupAdded\"[^\\n]*\"took\":)[\\d.]+"));
    QCOMPARE(held.count(end), 1);
    held.replace(end, QStringLiteral("\\1100000"));
    QVERIFY(writeFile(m_path, held.toUtf8()));
    replay();
}

TSA_GUILESS_TEST_MAIN(ScriptReplaysTest)

#include "tst_script_replays.moc"
