#include "host/workbench/events/Notifier.h"
#include "host/workbench/trace/TraceModel.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/RecordingObserver.h"
#include "tests/workbench/SampleRecords.h"

#include <QTest>

#include <future>
#include <thread>

namespace {
/// A notifier with an observer that it tells.
struct Watched
{
    explicit Watched(Notifier::Delivery delivery = Notifier::Delivery::NotifyingThread)
    {
        notifier.setObserver(&observer);
        notifier.setDelivery(delivery);
    }

    TraceModel trace;
    Notifier notifier{trace};
    RecordingObserver observer;
};

} // namespace

class NotifierTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldDeliverInOrderOnItsOwnThread();
    void shouldDeliverAtOnceOnTheGuiThread();
    void shouldBringEventsOfOtherThreadsToTheGuiThread();
    void shouldNotLetTheGuiThreadOvertakeTheQueue();
    void shouldNestDeliveriesOnTheGuiThread();
    void shouldWaitForDeliveries();
    void shouldCarryTypedArguments();
    void shouldEndWhileADeliveryWaitsForTheGuiThread();
    void shouldDropEventsAfterTheEnd();
    void shouldRunWithoutAnObserver();
};

void NotifierTest::shouldDeliverInOrderOnItsOwnThread()
{
    Watched host;
    for (const quint32 number : {16U, 30U, 37U})
        host.notifier.raise(HostEvent(number));
    QTRY_VERIFY(host.notifier.isIdle());
    QCOMPARE(host.observer.numbers(), QStringLiteral("16 30 37"));
    for (const QThread* thread : host.observer.threads())
        QVERIFY(thread != QThread::currentThread());
}

void NotifierTest::shouldDeliverAtOnceOnTheGuiThread()
{
    Watched host(Notifier::Delivery::GuiThread);
    host.notifier.raise(HostEvent(16));
    QCOMPARE(host.observer.numbers(), QStringLiteral("16"));
    QCOMPARE(host.observer.threads(), QList<QThread*>{QThread::currentThread()});
    host.trace.flush();
    QCOMPARE(host.trace.rowCount(), 2);
    QCOMPARE(host.trace.entry(0).text, QStringLiteral("16 TreeReset()"));
    QCOMPARE(host.trace.entry(1).text, QStringLiteral("16 returned"));
    QVERIFY(host.trace.entry(1).nanoseconds >= 0);
    QCOMPARE(host.trace.entry(0).thread, QStringLiteral("GUI"));
}

void NotifierTest::shouldBringEventsOfOtherThreadsToTheGuiThread()
{
    Watched host(Notifier::Delivery::GuiThread);
    std::thread other([&] { host.notifier.raise(HostEvent(37)); });
    other.join();
    QVERIFY(!host.notifier.isIdle());
    QTRY_VERIFY(host.notifier.isIdle());
    QCOMPARE(host.observer.numbers(), QStringLiteral("37"));
    QCOMPARE(host.observer.threads(), QList<QThread*>{QThread::currentThread()});
}

void NotifierTest::shouldNotLetTheGuiThreadOvertakeTheQueue()
{
    Watched host;
    std::promise<void> go;
    const auto gone = go.get_future().share();
    host.observer.inside = [&](const CSubject& subject) {
        if (subject.GetEvent() == 16)
            gone.wait();
    };
    host.notifier.raise(HostEvent(16));
    host.notifier.setDelivery(Notifier::Delivery::GuiThread);
    host.notifier.raise(HostEvent(30));
    go.set_value();
    QTRY_VERIFY(host.notifier.isIdle());
    QCOMPARE(host.observer.numbers(), QStringLiteral("16 30"));
}

void NotifierTest::shouldNestDeliveriesOnTheGuiThread()
{
    Watched host(Notifier::Delivery::GuiThread);
    QUuid outerAfterwards;
    host.observer.inside = [&](const CSubject& subject) {
        if (subject.GetEvent() != 20)
            return;
        host.notifier.raise(HostEvent(30));
        outerAfterwards = std::get<0>(subject.GetArgument<QUuid>());
    };
    host.notifier.raise(HostEvent(20, sampleId(5)));
    QCOMPARE(host.observer.numbers(), QStringLiteral("20 30"));
    QCOMPARE(outerAfterwards, sampleId(5));
}

void NotifierTest::shouldWaitForDeliveries()
{
    TraceModel trace;
    Notifier notifier(trace);
    QVERIFY(notifier.waitForDeliveries(0));
    RecordingObserver observer;
    notifier.setObserver(&observer);
    std::promise<void> go;
    const auto gone = go.get_future().share();
    observer.inside = [&](const CSubject&) { gone.wait(); };
    notifier.raise({HostEvent(16), HostEvent(30)});
    QVERIFY(!notifier.waitForDeliveries(1));
    go.set_value();
    QVERIFY(notifier.waitForDeliveries(30000));
    QCOMPARE(observer.numbers(), QStringLiteral("16 30"));
    notifier.stop();
    QVERIFY(notifier.waitForDeliveries(0));
}

void NotifierTest::shouldCarryTypedArguments()
{
    Watched host(Notifier::Delivery::GuiThread);
    QStringList taken;
    host.observer.inside = [&](const CSubject& subject) {
        if (subject.GetEvent() == 0)
            taken.append(QString::number(std::get<0>(subject.GetArgument<int>())));
        if (subject.GetEvent() == 21)
            taken.append(QString::number(std::get<0>(subject.GetArgument<QList<QUuid>>()).size()));
        if (subject.GetEvent() == 26)
            taken.append(std::get<1>(subject.GetArgument<QUuid, SPrjProcessor>()).name);
        if (subject.GetEvent() == 1)
            taken.append(QString::number(
                std::get<1>(subject.GetArgument<GUID, QList<SDeviceSetInfo>>()).first().id.Data1));
    };
    SDeviceSetInfo set{};
    set.id.Data1 = 7;
    host.notifier.raise(
        {HostEvent(0, 2), HostEvent(21, QList<QUuid>{sampleId(1), sampleId(2)}),
         HostEvent(26, HostEvent::ChangedProcessor(
                           sampleId(1), SPrjProcessor{sampleId(1), QStringLiteral("N")})),
         HostEvent(1, HostEvent::DeviceSets(set.id, {set}))});
    QCOMPARE(taken.join(QLatin1Char(' ')), QStringLiteral("2 2 N 7"));
    QCOMPARE(HostEvent::forIds(20, 21, {sampleId(1)}).number(), 20U);
    QCOMPARE(HostEvent::forIds(20, 21, {sampleId(1), sampleId(2)}).number(), 21U);
}

void NotifierTest::shouldEndWhileADeliveryWaitsForTheGuiThread()
{
    Watched host;
    bool ranOnGui = false;
    host.observer.inside = [&](const CSubject&) {
        QMetaObject::invokeMethod(
            this, [&] { ranOnGui = true; }, Qt::BlockingQueuedConnection);
    };
    host.notifier.raise(HostEvent(18, sampleId(1)));
    // Without events being processed the delivery is stuck; it is in hand when its line is there.
    while (host.observer.numbers().isEmpty())
        QThread::yieldCurrentThread();
    host.notifier.stop();
    QVERIFY(ranOnGui);
}

void NotifierTest::shouldDropEventsAfterTheEnd()
{
    Watched host;
    host.notifier.stop();
    host.notifier.raise(HostEvent(16));
    host.notifier.setDelivery(Notifier::Delivery::GuiThread);
    host.notifier.raise(HostEvent(16));
    QVERIFY(host.notifier.isIdle());
    QCOMPARE(host.observer.numbers(), QString());
}

void NotifierTest::shouldRunWithoutAnObserver()
{
    TraceModel trace;
    Notifier notifier(trace);
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    notifier.raise(HostEvent(16));
    trace.flush();
    QCOMPARE(trace.entry(1).text, QStringLiteral("16 had no observer"));
}

TSA_GUILESS_TEST_MAIN(NotifierTest)
#include "tst_notifier.moc"
