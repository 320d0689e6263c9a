#include "base/TargetSelectHandler.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/LogTrap.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <future>

/// What happens to events when the panel, the bridge or the application goes.
class BridgeLifeTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldDoNothingWithoutAPanel();
    void shouldDropJobsOfADestroyedPanel();
    void shouldAddNothingForADestroyedPanel();
    void shouldKeepAReplacedHandlerAliveDuringItsCall();
    void shouldStartOverWithANewPanel();
    void shouldReleaseTheHostWhenTheBridgeIsDeleted();
    void shouldTakeNoEventsAfterStopAndAgainAfterStart();
    void shouldStopWhileTheWorkThreadWaitsForTheGuiThread();
    void shouldStopWhenTheApplicationQuits();
    void shouldRefuseArgumentsOnTheWorkThread();
    void shouldStandAHandlerOfAnotherKind();
};

void BridgeLifeTest::shouldDoNothingWithoutAPanel()
{
    HostThread host;
    auto handler = std::make_shared<FakeHandler>();
    CObserver* observer = nullptr;
    {
        TestPanel panel;
        observer = panel.host().observer;
        panel.host().setProject({}, {testProcessor(1)});
        panel.notify(16);
    }
    QVERIFY(!CTargetSelectArea::Existing());
    QVERIFY(!GetTargetSelectHandler());
    QSignalSpy resets(CTargetSelectData::Instance()->GetModel(), &QAbstractItemModel::modelReset);
    QVERIFY(host.run([&] {
        CSubject subject;
        subject.Attach(observer);
        subject.Notify<int>(0, 1);
        subject.Notify(16);
        subject.Notify<QUuid>(17, testId(5));
        subject.Notify<QList<QUuid>>(19, {});
        subject.Notify(30);
        subject.Notify<QList<QUuid>>(39, {testId(1)});
    }));
    QCOMPARE(resets.count(), 0);
}

void BridgeLifeTest::shouldDropJobsOfADestroyedPanel()
{
    HostThread host;
    std::future<void> raised;
    {
        TestPanel panel;
        panel.host().setProject({}, {testProcessor(1)});
        panel.notify(16);
        panel.host().currentProcessor = testId(1);
        CObserver* observer = panel.host().observer;
        raised = host.post([observer] {
            CSubject subject;
            subject.Attach(observer);
            for (int i = 0; i < 50; ++i) {
                subject.Notify(30);
                subject.Notify(37);
                subject.Notify(29);
                subject.Notify<int>(0, i);
            }
        });
    }
    QVERIFY(comesBack(raised));
    // A panel that comes later gets the later jobs, in peace.
    TestPanel panel;
    panel.notify<int>(0, 1234);
    QTRY_COMPARE(panel.area().detectStrategy(), 1234);
}

void BridgeLifeTest::shouldAddNothingForADestroyedPanel()
{
    HostThread host;
    auto panel = std::make_unique<TestPanel>();
    CProcessorTreeModel& model = panel->model();
    CObserver* observer = panel->host().observer;
    panel->host().setProject({}, {testProcessor(1)});
    std::promise<void> queued;
    const auto done = host.post([&] {
        CSubject subject;
        subject.Attach(observer);
        subject.Notify(16);
        queued.set_value();
        // Waits for the refill, and finds no panel behind it.
        subject.Notify<QUuid>(18, testId(9));
        subject.Notify<QUuid>(17, testId(9));
    });
    QVERIFY(comesBack(queued.get_future()));
    panel.reset();
    QTRY_VERIFY(done.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QCOMPARE(model.getAllProcessorCount(), 0);
    QCOMPARE(model.groupCount(), 0);
}

void BridgeLifeTest::shouldKeepAReplacedHandlerAliveDuringItsCall()
{
    TestPanel panel;
    auto first = std::make_shared<FakeHandler>();
    const std::weak_ptr<FakeHandler> watched = first;
    bool aliveInside = false;
    first->inside = [&](const QString&) {
        panel.area().m_controlHandler = std::make_shared<FakeHandler>();
        aliveInside = !watched.expired();
    };
    panel.area().m_controlHandler = first;
    first.reset();
    panel.area().GetAllProcessorNodes();
    QVERIFY(aliveInside);
    QVERIFY(watched.expired());
}

void BridgeLifeTest::shouldStartOverWithANewPanel()
{
    {
        TestPanel panel;
        panel.host().setProject({}, {testProcessor(1)});
        panel.notify(16);
        QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
    }
    TestPanel panel;
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
    panel.host().setProject({}, {testProcessor(2)});
    panel.notify(16);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[2]"));
    // Initialising twice leaves one root.
    panel.area().Initialize();
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
    QVERIFY(panel.area().Reconnect());
}

void BridgeLifeTest::shouldReleaseTheHostWhenTheBridgeIsDeleted()
{
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1)});
    auto bridge = std::make_unique<CTargetSelectData>();
    bridge->ResetModel();
    std::promise<void> asked;
    panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetProcessorNode"))
            asked.set_value();
    };
    const auto done = host.post([&] {
        CSubject subject;
        subject.Attach(bridge.get());
        subject.Notify<QUuid>(18, testId(1));
    });
    QVERIFY(comesBack(asked.get_future()));
    bridge.reset();
    QVERIFY(comesBack(done));
}

void BridgeLifeTest::shouldTakeNoEventsAfterStopAndAgainAfterStart()
{
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1)});
    panel.data().Stop();
    QVERIFY(comesBack(host.post([&] {
        panel.notify<QUuid>(18, testId(1));
        panel.notify<int>(0, 3);
    })));
    QCOMPARE(panel.host().callNames(), QStringList());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));

    panel.area().Reconnect();
    QVERIFY(host.run([&] { panel.notify<QUuid>(18, testId(1)); }));
    panel.notify<int>(0, 4);
    QTRY_COMPARE(panel.area().detectStrategy(), 4);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void BridgeLifeTest::shouldStopWhileTheWorkThreadWaitsForTheGuiThread()
{
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    panel.host().currentProcessor = testId(1);
    // The work thread waits for this thread, which does not process events but stops it, and so
    // does the host's thread.
    panel.notify(30);
    const auto done = host.post([&] { panel.notify<QUuid>(17, testId(100)); });
    panel.data().Stop();
    QVERIFY(comesBack(done));
    panel.data().Start();
}

void BridgeLifeTest::shouldStopWhenTheApplicationQuits()
{
    TestPanel panel;
    HostThread host;
    panel.host().setProject({}, {testProcessor(1)});
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    QCOMPARE(QCoreApplication::exec(), 0);
    // No event loop runs any more, and the host's thread still comes back.
    QVERIFY(comesBack(host.post([&] { panel.notify<QUuid>(18, testId(1)); })));
    QCOMPARE(panel.host().callNames(), QStringList());
    QVERIFY(panel.area().Initialize());
    QVERIFY(host.run([&] { panel.notify<QUuid>(18, testId(1)); }));
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void BridgeLifeTest::shouldRefuseArgumentsOnTheWorkThread()
{
    TestPanel panel;
    const LogTrap log;
    CSubject subject;
    subject.Notify<QUuid>(17, testId(1));
    QUuid taken = testId(2);
    HostThread thread;
    thread.run([&] { taken = std::get<0>(subject.GetArgument<QUuid>()); });
    const std::vector<LogRecord> records = log.records();
    QVERIFY(taken.isNull());
    QCOMPARE(records.size(), std::size_t(1));
    QCOMPARE(records.front().line, 126);
    QCOMPARE(records.front().file, std::string("Interface/ObserverPattern"));
}

void BridgeLifeTest::shouldStandAHandlerOfAnotherKind()
{
    class OtherHandler final : public IAbstractControlInterface
    {
    };

    TestPanel panel;
    CObserver* observer = panel.host().observer;
    panel.area().m_controlHandler = std::make_shared<OtherHandler>();
    QVERIFY(!GetTargetSelectHandler());
    CSubject subject;
    subject.Attach(observer);
    subject.Notify<QUuid>(17, testId(1));
    subject.Notify(16);
    subject.Notify(30);
    QVERIFY(panel.area().Initialize());
    QCOMPARE(panel.area().DetectDevices(), 0U);
    QCOMPARE(panel.area().GetAllProcessorNodes().size(), 0);
    panel.area().m_controlHandler.reset();
    QVERIFY(panel.area().Reconnect());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
}

TSA_TEST_MAIN(BridgeLifeTest)
#include "tst_bridgelife.moc"
