#include "base/GuiCalls.h"
#include "tests/plugin/Telling.h"
#include "tests/processortree/DrivenPanel.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

using Event = TrueHost::Event;

namespace {

/// Takes the host's own lock as the host does inside a question. Returns whether that was possible
/// soon enough.
bool takeAndRelease(std::timed_mutex& mutex)
{
    if (!mutex.try_lock_for(kReleased))
        return false;
    mutex.unlock();
    return true;
}

} // namespace

/// The GUI thread waits for nobody, and nobody waits long for the GUI thread: not at all when that
/// is inside a question, in which the host may be waiting for the one who waits.
class NobodyStandsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldReleaseATellerThatAReportWaitsFor();
    void shouldReleaseATellerWhoseCallAsks();
    void shouldReleaseThirdThreadsInsideTheQuestionOfACall_data();
    void shouldReleaseThirdThreadsInsideTheQuestionOfACall();
    void shouldReleaseATellerAmongManyShortQuestions();
    void shouldCountAQuestionOnceForManyEvents();
    void shouldWaitOnceForAnEvent();
    void shouldWaitOnceForTheEventsInsideItsQuestion();
    void shouldNotKeepTheGuiThreadDuringAQuestionElsewhere_data();
    void shouldNotKeepTheGuiThreadDuringAQuestionElsewhere();
};

void NobodyStandsTest::shouldReleaseATellerThatAReportWaitsFor()
{
    DrivenPanel driven;
    HostThread teller;
    std::timed_mutex project;
    driven.driver.then([](QWidget& menu) { choose(menu, QStringLiteral("Add 1 processor")); });
    driven.press();
    QCOMPARE(driven.asked(), QStringLiteral("AddProcessors"));
    bool reported = false;
    bool tookIt = false;
    driven.doInside(QStringLiteral("ReportSelection"), [&] {
        reported = true;
        tookIt = takeAndRelease(project);
    });
    // The processor that the user asked for is selected as soon as its row is there.
    driven.host().setProcessor(testProcessor(5));
    QVERIFY(teller.run([&] {
        const std::lock_guard guard(project);
        driven.panel.notify<QUuid>(18, testId(5));
    }));
    QTRY_VERIFY(reported);
    QVERIFY(tookIt);
    QCOMPARE(driven.selected(), QStringLiteral("5"));
}

void NobodyStandsTest::shouldReleaseATellerWhoseCallAsks()
{
    Telling telling;
    std::timed_mutex project;
    telling.host.start({TrueHost::Nothing});
    bool tookIt = false;
    telling.doDuring(QStringLiteral("GetProcessorNode"), false,
                     [&] { tookIt = takeAndRelease(project); });
    QVERIFY(telling.one.run([&] {
        const std::lock_guard guard(project);
        telling.host.tell({TrueHost::ListAdded});
    }));
    VERIFY_TREE_OF(telling.host);
    QVERIFY(tookIt);
}

void NobodyStandsTest::shouldReleaseThirdThreadsInsideTheQuestionOfACall_data()
{
    QTest::addColumn<TrueHost::Event>("event");
    for (const Event event : {TrueHost::GroupAdded, TrueHost::Added, TrueHost::ListAdded,
                              TrueHost::Removed, TrueHost::GroupRemoved, TrueHost::ListRemoved,
                              TrueHost::Changed, TrueHost::ProjectChanged, TrueHost::Reset})
        QTest::addRow("%s", qPrintable(TrueHost::name(event))) << event;
}

void NobodyStandsTest::shouldReleaseThirdThreadsInsideTheQuestionOfACall()
{
    QFETCH(TrueHost::Event, event);
    Telling telling;
    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {event});
    telling.host.start({TrueHost::Nothing, adds ? TrueHost::Nothing : TrueHost::Grouped});
    bool released = false;
    telling.doDuring(QStringLiteral("GetProcessorNode"), false, [&] {
        released = isReleased(telling.two.post([&] { telling.host.tell({event}, 2); }));
    });
    QVERIFY(telling.one.run([&] { telling.host.tell({TrueHost::ListAdded}); }));
    VERIFY_TREE_OF(telling.host);
    QVERIFY(released);
}

void NobodyStandsTest::shouldReleaseATellerAmongManyShortQuestions()
{
    Telling telling;
    telling.host.start({TrueHost::Ungrouped});
    bool released = false;
    // What counts is the question that the GUI thread is in, not those inside it.
    telling.doDuring(QStringLiteral("DetectAllDevices"), false, [&] {
        const auto told = telling.one.post([&] { telling.host.tell({TrueHost::Changed}); });
        const auto limit = std::chrono::steady_clock::now() + kReleased;
        while (!released && std::chrono::steady_clock::now() < limit) {
            telling.panel.index(1).data(HostCheckRole);
            released = told.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
        }
    });
    telling.panel.area().DetectDevices();
    VERIFY_TREE_OF(telling.host);
    QVERIFY(released);
}

void NobodyStandsTest::shouldCountAQuestionOnceForManyEvents()
{
    // One wait for each of them would take longer than anybody waits here.
    constexpr quint32 kEvents = 400;

    Telling telling;
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= kEvents; ++n)
        processors.append(testProcessor(n));
    telling.host.start({});
    telling.panel.host().setProject({}, processors);
    const bool cameBack = telling.tellInsideAQuestion([&] {
        for (quint32 n = 1; n <= kEvents; ++n)
            telling.panel.notify<QUuid>(18, testId(n));
    });
    QVERIFY(telling.host.settle());
    QVERIFY(cameBack);
    // The watched processor is there from the start.
    QCOMPARE(telling.panel.model().getAllProcessorCount(), static_cast<int>(kEvents) + 1);
}

void NobodyStandsTest::shouldWaitOnceForAnEvent()
{
    // Three times what they wait when they wait at the same time and each of them once.
    constexpr auto kLimit = std::chrono::seconds(15);

    Telling telling;
    telling.host.start(QVector<TrueHost::Start>(4, TrueHost::Ungrouped));
    std::vector<std::unique_ptr<HostThread>> threads;
    std::vector<std::future<void>> told;
    for (quint32 unit = 1; unit <= 4; ++unit) {
        threads.push_back(std::make_unique<HostThread>());
        told.push_back(threads.back()->post([&telling, unit] {
            telling.host.tell({TrueHost::Reset, TrueHost::Changed}, unit);
        }));
    }
    // The GUI thread is busy, inside no question.
    const auto limit = std::chrono::steady_clock::now() + kLimit;
    bool cameBack = true;
    for (const auto& done : told)
        cameBack = done.wait_until(limit) == std::future_status::ready && cameBack;
    VERIFY_TREE_OF(telling.host);
    QVERIFY(cameBack);
}

void NobodyStandsTest::shouldWaitOnceForTheEventsInsideItsQuestion()
{
    // One wait for each of them would take longer than anybody waits here.
    constexpr int kEvents = 30;
    constexpr std::chrono::milliseconds kPatience(500);

    Telling telling;
    telling.host.start(QVector<TrueHost::Start>(3, TrueHost::Ungrouped));
    telling.panel.data().guiCalls().setPatience(kPatience);
    telling.doDuring(QStringLiteral("GetProcessorNode"), false, [&] {
        for (int n = 0; n < kEvents; ++n)
            telling.host.tell({TrueHost::Changed}, 2);
        telling.host.tell({TrueHost::Removed}, 3);
    });
    // The GUI thread is busy, inside no question.
    const bool cameBack =
        isReleased(telling.one.post([&] { telling.host.tell({TrueHost::Changed}); }));
    VERIFY_TREE_OF(telling.host);
    QVERIFY(telling.wasAsked());
    QVERIFY(cameBack);
}

void NobodyStandsTest::shouldNotKeepTheGuiThreadDuringAQuestionElsewhere_data()
{
    QTest::addColumn<TrueHost::Event>("event");
    for (const Event event : {TrueHost::GroupAdded, TrueHost::Added, TrueHost::Changed,
                              TrueHost::ProjectChanged, TrueHost::Warned})
        QTest::addRow("%s", qPrintable(TrueHost::name(event))) << event;
}

void NobodyStandsTest::shouldNotKeepTheGuiThreadDuringAQuestionElsewhere()
{
    QFETCH(TrueHost::Event, event);
    Telling telling;
    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {event});
    telling.host.start({adds ? TrueHost::Nothing : TrueHost::Ungrouped, TrueHost::Nothing});
    Latch asked;
    Latch done;
    std::atomic<bool> released{false};
    telling.doDuring(Telling::questionOf(event), true, [&] {
        asked.arrive();
        released = done.wait(1, kReleased);
    });
    const auto told = telling.one.post([&] { telling.host.tell({event}); });
    QTRY_VERIFY(asked.count() > 0);

    ProcessorTreeSnapshot snapshot;
    telling.panel.area().GetProcessorTree(snapshot, true);
    telling.panel.area().SetReadOnly(telling.panel.area().isHidden());
    telling.panel.area().SetReadOnly(false);
    telling.panel.area().SetCurrentProcessor(testId(1));
    telling.panel.area().UpdateMonitorWarningState();
    telling.panel.area().Reconnect();
    telling.host.tell({TrueHost::GroupAdded, TrueHost::Added, TrueHost::Changed, TrueHost::Moved,
                       TrueHost::Warned, TrueHost::ProjectChanged, TrueHost::GroupRemoved,
                       TrueHost::Removed, TrueHost::ListAdded, TrueHost::ListRemoved},
                      2);
    done.arrive();

    VERIFY_TREE_OF(telling.host);
    QVERIFY(comesBack(told));
    QVERIFY(released);
}

TSA_TEST_MAIN(NobodyStandsTest)
#include "tst_nobodystands.moc"
