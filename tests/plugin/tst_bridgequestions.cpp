#include "base/GuiCalls.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>

namespace {
/// Tells on a thread of the host's that processor `n` was added. Returns false if that hangs.
bool addFrom(HostThread& thread, TestPanel& panel, quint32 n)
{
    return comesBack(thread.post([&panel, n] { panel.notify<QUuid>(18, testId(n)); }));
}

ProcessorTreeSnapshot snapshotOf(TestPanel& panel)
{
    ProcessorTreeSnapshot snapshot;
    panel.area().GetProcessorTree(snapshot, true);
    return snapshot;
}

} // namespace

/// What may happen while the panel waits for an answer of the host's.
class BridgeQuestionsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStandEventsInsideASnapshotQuestion_data();
    void shouldStandEventsInsideASnapshotQuestion();
    void shouldApplyInOrderWhatASnapshotQuestionLeftQueued();
    void shouldLetTheHostWaitInsideAnyQuestion_data();
    void shouldLetTheHostWaitInsideAnyQuestion();
    void shouldLetTheHostWaitInsideAQuestionOffTheGuiThread();
    void shouldLetTheHostHoldItsOwnLockWhileItNotifies();
    void shouldKeepTheOrderOfEventsFromBothThreads();
    void shouldAskAgainWhenARecordChangedMeanwhile();
    void shouldNotAskForEverWhenEveryQuestionChangesTheRecord();
};

void BridgeQuestionsTest::shouldStandEventsInsideASnapshotQuestion_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<quint32>("event");
    for (const bool foreign : {true, false}) {
        for (const quint32 event : {0U, 16U, 17U, 18U, 19U, 20U, 21U, 25U, 26U, 29U, 30U, 39U}) {
            QTest::addRow("%s %u", foreign ? "foreign thread" : "GUI thread", event)
                << foreign << event;
        }
    }
}

void BridgeQuestionsTest::shouldStandEventsInsideASnapshotQuestion()
{
    QFETCH(bool, foreign);
    QFETCH(quint32, event);
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2, 100)});
    panel.notify(16);
    panel.host().setProject({testGroup(100), testGroup(101)},
                            {testProcessor(1), testProcessor(2, 100), testProcessor(3)});
    const auto raise = [&] {
        switch (event) {
        case 0:
            panel.notify<int>(event, 1);
            break;
        case 17:
            panel.notify<QUuid>(event, testId(101));
            break;
        case 18:
            panel.notify<QUuid>(event, testId(3));
            break;
        case 19:
        case 21:
        case 39:
            panel.notify<QList<QUuid>>(event, {testId(event == 19 ? 3 : 1)});
            break;
        case 20:
        case 25:
            panel.notify<QUuid>(event, testId(1));
            break;
        case 26:
            panel.notify<QUuid, SPrjProcessor>(event, testId(1), SPrjProcessor());
            break;
        default:
            panel.notify(event);
            break;
        }
    };
    int questions = 0;
    bool cameBack = true;
    panel.host().acceptProcessor = [&](const ProcessorNode&) {
        ++questions;
        if (foreign)
            cameBack = comesBack(host.post(raise)) && cameBack;
        else
            raise();
        return true;
    };

    const ProcessorTreeSnapshot snapshot = snapshotOf(panel);

    QVERIFY(cameBack);
    QCOMPARE(questions, 2);
    QCOMPARE(snapshot.groups.size(), 1);
    QCOMPARE(snapshot.groups.first().processors.size(), 1);
    QCOMPARE(snapshot.processors.size(), 1);
    // What was raised takes effect, once, however often it was raised.
    const QHash<quint32, QString> expected{
        {16, QStringLiteral("All processors(3)[G100[2],G101[],1,3]")},
        {17, QStringLiteral("All processors(2)[G100[2],G101[],1]")},
        {18, QStringLiteral("All processors(3)[G100[2],1,3]")},
        {19, QStringLiteral("All processors(3)[G100[2],1,3]")},
        {20, QStringLiteral("All processors(1)[G100[2]]")},
        {21, QStringLiteral("All processors(1)[G100[2]]")},
    };
    QTRY_COMPARE(panel.dump(),
                 expected.value(event, QStringLiteral("All processors(2)[G100[2],1]")));
}

void BridgeQuestionsTest::shouldApplyInOrderWhatASnapshotQuestionLeftQueued()
{
    TestPanel panel;
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1), testProcessor(2, 100)});
    panel.notify<QUuid>(18, testId(1));
    panel.host().acceptProcessor = [&](const ProcessorNode&) {
        return comesBack(host.post([&] {
            panel.notify<QUuid>(17, testId(100));
            panel.notify<QUuid>(18, testId(2));
            panel.notify<QUuid>(20, testId(1));
            panel.notify<QUuid>(18, testId(2));
        }));
    };

    QCOMPARE(snapshotOf(panel).processors.size(), 1);
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[G100[2]]"));
}

void BridgeQuestionsTest::shouldLetTheHostWaitInsideAnyQuestion_data()
{
    QTest::addColumn<QString>("question");
    QTest::newRow("detection") << QStringLiteral("DetectAllDevices");
    QTest::newRow("move") << QStringLiteral("SetProcessorGroup");
    QTest::newRow("removal of a group") << QStringLiteral("SetProcessorGroup");
    QTest::newRow("refill") << QStringLiteral("GetAllGroupNodes");
    QTest::newRow("adding many") << QStringLiteral("GetProcessorNode");
    QTest::newRow("check") << QStringLiteral("CheckProcessor");
    QTest::newRow("device set") << QStringLiteral("GetDeviceSetText");
}

void BridgeQuestionsTest::shouldLetTheHostWaitInsideAnyQuestion()
{
    QFETCH(QString, question);
    TestPanel panel;
    HostThread host;
    // Patience would end any wait; here nothing but the question may.
    panel.data().guiCalls().setPatience(std::chrono::hours(1));
    panel.host().setProject({testGroup(100), testGroup(101)}, {testProcessor(1, 100)});
    panel.notify(16);
    panel.host().setProcessor(testProcessor(2));
    panel.host().setProcessor(testProcessor(3));
    bool cameBack = false;
    panel.host().inside = [&](const QString& name) {
        if (name != question || QThread::currentThread() != thread() || cameBack)
            return;
        cameBack = comesBack(host.post([&] {
            panel.data().IsReadOnly();
            panel.notify<QUuid>(18, testId(2));
        }));
    };

    const QByteArray row = QTest::currentDataTag();
    const QModelIndex index = panel.model().getItem(testId(1))->index();
    if (row == "detection")
        panel.area().DetectDevices();
    else if (row == "move")
        panel.model().moveProcessors({index}, testId(101));
    else if (row == "removal of a group")
        panel.notify<QUuid>(20, testId(100));
    else if (row == "refill")
        panel.notify(16);
    else if (row == "adding many")
        panel.notify<QList<QUuid>>(19, {testId(3)});
    else if (row == "check")
        index.data(HostCheckRole);
    else
        panel.area().onCurrentDeviceSetChanged(GUID{1, 0, 0, {}}, {{{1, 0, 0, {}}, 0, 0}, {}});

    QVERIFY(cameBack);
    QTRY_VERIFY(panel.model().getItem(testId(2)));
    panel.data().guiCalls().setPatience(std::chrono::seconds(5));
}

void BridgeQuestionsTest::shouldLetTheHostWaitInsideAQuestionOffTheGuiThread()
{
    TestPanel panel;
    HostThread one;
    HostThread two;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    std::atomic<bool> isFirst{true};
    bool cameBack = false;
    panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetProcessorNode") && isFirst.exchange(false))
            cameBack = addFrom(two, panel, 2);
    };
    QVERIFY(one.run([&] { panel.notify<QUuid>(18, testId(1)); }));
    QVERIFY(cameBack);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(2)[2,1]"));
}

void BridgeQuestionsTest::shouldLetTheHostHoldItsOwnLockWhileItNotifies()
{
    TestPanel panel;
    HostThread host;
    std::timed_mutex projectMutex;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    panel.notify(16);
    std::promise<void> workThreadAsks;
    std::promise<void> hostHolds;
    std::atomic<bool> isFirst{true};
    std::atomic<bool> gotIt{false};
    panel.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetProcessorNode") || !isFirst.exchange(false))
            return;
        workThreadAsks.set_value();
        hostHolds.get_future().wait_for(kSoon);
        gotIt = projectMutex.try_lock_for(kSoon);
        if (gotIt)
            projectMutex.unlock();
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    QVERIFY(comesBack(workThreadAsks.get_future()));
    QVERIFY(host.run([&] {
        const std::lock_guard guard(projectMutex);
        hostHolds.set_value();
        panel.notify<QUuid>(20, testId(2));
    }));
    QTRY_VERIFY(gotIt);
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void BridgeQuestionsTest::shouldKeepTheOrderOfEventsFromBothThreads()
{
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    panel.notify<QUuid>(18, testId(1));
    // What the host's thread adds stays queued; what this thread then removes is that row.
    panel.host().acceptProcessor = [&](const ProcessorNode&) {
        const bool cameBack = addFrom(host, panel, 2);
        panel.notify<QUuid>(20, testId(2));
        return cameBack;
    };
    QCOMPARE(snapshotOf(panel).processors.size(), 1);
    QVERIFY(panel.data().guiCalls().settle());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));

    // The same for a tree that starts over.
    panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("DetectAllDevices"))
            QVERIFY(addFrom(host, panel, 2));
    };
    panel.area().DetectDevices();
    panel.area().Initialize();
    QVERIFY(panel.data().guiCalls().settle());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
}

void BridgeQuestionsTest::shouldAskAgainWhenARecordChangedMeanwhile()
{
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    std::atomic<int> asked{0};
    panel.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetProcessorNode") || QThread::currentThread() == thread())
            return;
        // While the first answer is on its way, the record is refreshed with a later one.
        if (asked++ == 0)
            onGuiThread([&] { panel.notify<QUuid>(25, testId(1)); });
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    QTRY_COMPARE(asked.load(), 2);
}

void BridgeQuestionsTest::shouldNotAskForEverWhenEveryQuestionChangesTheRecord()
{
    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    std::atomic<int> asked{0};
    panel.host().inside = [&](const QString& name) {
        // A limit of the test's own, for without one it could not end.
        if (name != QLatin1String("GetProcessorNode") || QThread::currentThread() == thread()
            || ++asked > 100)
            return;
        onGuiThread([&] { panel.notify<QUuid>(25, testId(1)); });
    };
    panel.notify<QList<QUuid>>(39, {testId(1)});
    panel.notify<int>(0, 8);
    QTRY_COMPARE(panel.area().detectStrategy(), 8);
    QVERIFY(asked >= 2);
    QVERIFY(asked <= 10);
}

TSA_TEST_MAIN(BridgeQuestionsTest)

#include "tst_bridgequestions.moc"
