#include "base/GuiCalls.h"
#include "base/RecordCell.h"
#include "plugin/TargetSelectData.h"
#include "tests/plugin/Telling.h"

#include <QEvent>

namespace {

ProcessorNode recordOf(const QModelIndex& row)
{
    return row.data(NodeDataRole).value<ProcessorNode>();
}

} // namespace

/// The tree changes without an event, or the project does in the middle of a fill: what the host
/// answered before does not come back.
class LastWordChangesTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepADropWhileAnAnswerIsOnItsWay();
    void shouldKeepAnUngroupingWhileAnAnswerIsOnItsWay();
    void shouldKeepTheGroupsRemovedWhileAnAnswerIsOnItsWay();
    void shouldRemoveWhatJoinedAGroupWhileAnAnswerIsOnItsWay();
    void shouldRemoveWhatJoinedAGroupWhileTheChangeIsQueued_data();
    void shouldRemoveWhatJoinedAGroupWhileTheChangeIsQueued();
    void shouldKeepARowWithoutItsOwnRecord_data();
    void shouldKeepARowWithoutItsOwnRecord();
    void shouldKeepANameGivenWhileAnAnswerIsOnItsWay();
    void shouldFindProcessorsOfAGroupDissolvedDuringAFillByItsTeller();
    void shouldFillFromOneHandler();
    void shouldWaitForTheGuiThreadBehindASlowAnswer();
    void shouldKeepAMonitorStateWhileARecordIsModified();
    void shouldNotRepeatAGroupThatHasAnAddress();
    void shouldDeferEventsInsideACallWithoutMorePokes();

private:
    /// Tells 25 of processor 1, and does `action` on this thread when the answer is fixed.
    static void changeDuringAnswer(Telling& telling, const std::function<void()>& action)
    {
        telling.doDuring(QStringLiteral("GetProcessorNode"), true, [&] { onGuiThread(action); });
        QVERIFY(telling.one.run([&] { telling.panel.notify<QUuid>(25, testId(1)); }));
        QVERIFY(telling.wasAsked());
    }
};

void LastWordChangesTest::shouldKeepADropWhileAnAnswerIsOnItsWay()
{
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testIpProcessor(1, 5, 100)});
    telling.panel.notify(16);
    telling.panel.host().setProcessor(testIpProcessor(1, 9, 100));
    changeDuringAnswer(telling, [&] {
        telling.panel.host().setProcessor(testIpProcessor(1, 9));
        telling.panel.data().changeTree(
            [&] { telling.panel.model().moveProcessors({telling.panel.index(1)}, QUuid()); });
    });
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[G100[],1]"));
    QVERIFY(recordOf(telling.panel.index(1)).groupId.isNull());
}

void LastWordChangesTest::shouldKeepAnUngroupingWhileAnAnswerIsOnItsWay()
{
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testIpProcessor(1, 5, 100)});
    telling.panel.notify(16);
    telling.panel.host().setProcessor(testIpProcessor(1, 9, 100));
    changeDuringAnswer(telling, [&] {
        telling.panel.host().setProject({}, {testIpProcessor(1, 9)});
        telling.panel.data().changeTree([&] { telling.panel.model().removeNode(testId(100)); });
    });
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void LastWordChangesTest::shouldKeepTheGroupsRemovedWhileAnAnswerIsOnItsWay()
{
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {});
    telling.doDuring(QStringLiteral("GetGroupNode"), true, [&] {
        onGuiThread([&] {
            telling.panel.host().setProject({}, {});
            telling.panel.area().RemoveAllGroups();
        });
    });
    QVERIFY(telling.one.run([&] { telling.panel.notify<QUuid>(17, testId(100)); }));
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(0)[]"));
}

void LastWordChangesTest::shouldRemoveWhatJoinedAGroupWhileAnAnswerIsOnItsWay()
{
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2)});
    telling.panel.notify(16);
    telling.panel.host().setProcessor(testProcessor(1, 100));
    changeDuringAnswer(telling, [&] {
        telling.panel.host().setProject({}, {testProcessor(2)});
        telling.panel.area().RemoveAllGroups();
    });
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[2]"));
}

void LastWordChangesTest::shouldRemoveWhatJoinedAGroupWhileTheChangeIsQueued_data()
{
    QTest::addColumn<bool>("comesAgain");
    QTest::addColumn<QString>("rows");
    QTest::newRow("gone") << false << QStringLiteral("All processors(1)[2]");
    QTest::newRow("here again") << true << QStringLiteral("All processors(2)[1,2]");
}

void LastWordChangesTest::shouldRemoveWhatJoinedAGroupWhileTheChangeIsQueued()
{
    QFETCH(const bool, comesAgain);
    QFETCH(const QString, rows);
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2)});
    telling.panel.notify(16);
    bool cameBack = false;
    telling.doDuring(QStringLiteral("DetectAllDevices"), false, [&] {
        telling.panel.host().setProcessor(testProcessor(1, 100));
        cameBack = comesBack(telling.one.post([&] { telling.panel.notify<QUuid>(25, testId(1)); }));
        telling.panel.host().setProject({}, {testProcessor(2)});
        telling.doDuring(QStringLiteral("GetProcessorNode"), true, [&] {
            if (comesAgain)
                telling.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
        });
        telling.panel.area().RemoveAllGroups();
    });
    telling.panel.area().DetectDevices();
    QVERIFY(telling.host.settle());
    QVERIFY(cameBack);
    QVERIFY(telling.wasAsked());
    QCOMPARE(telling.panel.dump(), rows);
}

void LastWordChangesTest::shouldKeepARowWithoutItsOwnRecord_data()
{
    QTest::addColumn<bool>("groupsGoFirst");
    QTest::newRow("groups go behind the change") << false;
    QTest::newRow("groups go before the change") << true;
}

/// A record of another identity does not say that the processor has gone.
void LastWordChangesTest::shouldKeepARowWithoutItsOwnRecord()
{
    QFETCH(const bool, groupsGoFirst);
    Telling telling;
    telling.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    telling.panel.notify(16);
    if (groupsGoFirst) {
        changeDuringAnswer(telling, [&] {
            telling.panel.host().answerProcessor = testProcessor(77);
            telling.panel.area().RemoveAllGroups();
        });
    } else {
        telling.doDuring(QStringLiteral("DetectAllDevices"), false, [&] {
            telling.one.post([&] { telling.panel.notify<QUuid>(25, testId(1)); }).wait();
            telling.panel.host().answerProcessor = testProcessor(77);
            telling.panel.area().RemoveAllGroups();
        });
        telling.panel.area().DetectDevices();
    }
    QVERIFY(telling.wasAsked());
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(2)[1,2]"));
}

void LastWordChangesTest::shouldKeepANameGivenWhileAnAnswerIsOnItsWay()
{
    Telling telling;
    telling.panel.host().setProject({}, {testProcessor(1)});
    telling.panel.notify(16);
    changeDuringAnswer(telling, [&] {
        ProcessorNode renamed = testProcessor(1);
        renamed.name = QStringLiteral("given");
        telling.panel.host().setProcessor(renamed);
        telling.panel.model().setData(telling.panel.index(1), renamed.name, Qt::DisplayRole);
        telling.panel.data().noteChange();
    });
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[given]"));
}

void LastWordChangesTest::shouldFindProcessorsOfAGroupDissolvedDuringAFillByItsTeller()
{
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    // The teller of 16 does not wait for the fill, and tells of the group's end behind it.
    telling.doDuring(QStringLiteral("GetAllProcessorNodes"), true,
                     [&] { telling.panel.host().setProject({}, {testProcessor(1)}); });
    QVERIFY(telling.one.run([&] { telling.panel.notify(16); }));
    QTRY_VERIFY(telling.wasAsked());
    QVERIFY(telling.one.run([&] { telling.panel.notify<QUuid>(20, testId(100)); }));
    QTRY_COMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void LastWordChangesTest::shouldFillFromOneHandler()
{
    Telling telling;
    const auto other = std::make_shared<FakeHandler>();
    other->setProject({testGroup(200)}, {testProcessor(2, 200)});
    telling.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    telling.doDuring(QStringLiteral("GetAllProcessorNodes"), true,
                     [&] { telling.panel.area().m_controlHandler = other; });
    telling.panel.notify(16);
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[G200[2]]"));
}

void LastWordChangesTest::shouldWaitForTheGuiThreadBehindASlowAnswer()
{
    Telling telling;
    // Less patience than the answer takes, which does not count.
    telling.panel.data().guiCalls().setPatience(std::chrono::milliseconds(200));
    telling.panel.host().setProject({}, {testProcessor(1)});
    const auto end = CHostQuestion::Clock::now() + std::chrono::milliseconds(400);
    telling.doDuring(QStringLiteral("GetProcessorNode"), true, [&] {
        while (CHostQuestion::Clock::now() < end)
            std::this_thread::yield();
    });
    QVERIFY(telling.one.run([&] { telling.panel.notify<QUuid>(18, testId(1)); }));
    telling.panel.data().guiCalls().setPatience(std::chrono::seconds(5));
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[1]"));
    QCOMPARE(telling.panel.host().callCount(QStringLiteral("GetProcessorNode")), 1);
}

void LastWordChangesTest::shouldKeepAMonitorStateWhileARecordIsModified()
{
    CRecordCell cell(testProcessor(1));
    const quint32 version = cell.version();
    cell.modify([](ProcessorNode& record) { record.groupId = testId(100); });
    ProcessorNode warned = testProcessor(1);
    warned.hostAttribute16 = 7;
    // Asked before: the group would be lost, so it is asked again.
    QVERIFY(!cell.replace(warned, version));
    cell.store(warned);
    cell.modify([](ProcessorNode& record) { record.name = QStringLiteral("given"); });
    QCOMPARE(cell.load().hostAttribute16, 7);
    QCOMPARE(cell.load().name, QStringLiteral("given"));
}

void LastWordChangesTest::shouldNotRepeatAGroupThatHasAnAddress()
{
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testIpProcessor(100, 0x0A000001)});
    telling.panel.notify<QUuid>(17, testId(100));
    for (int n = 0; n < 2; ++n)
        telling.panel.notify<QUuid, SPrjProcessor>(26, testId(100), SPrjProcessor());
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(0)[100[]]"));
}

void LastWordChangesTest::shouldDeferEventsInsideACallWithoutMorePokes()
{
    class Counter final : public QObject
    {
    public:
        int events = 0;
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            Q_UNUSED(watched)
            events += event->type() >= QEvent::User ? 1 : 0;
            return false;
        }
    };
    CGuiCalls calls;
    Counter counter;
    calls.installEventFilter(&counter);
    int runs = 0;
    calls.run([&] {
        for (int n = 0; n < 200; ++n) {
            calls.settle();
            calls.run([&runs] { ++runs; });
        }
    });
    QCoreApplication::processEvents();
    QCOMPARE(runs, 200);
    QVERIFY2(counter.events <= 400, qPrintable(QString::number(counter.events)));
}

TSA_TEST_MAIN(LastWordChangesTest)
#include "tst_lastword_changes.moc"
