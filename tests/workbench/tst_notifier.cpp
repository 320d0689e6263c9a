#include "host/workbench/Notifier.h"
#include "host/workbench/TraceModel.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/RecordingObserver.h"
#include "tests/workbench/SampleRecords.h"

#include <QTest>

#include <future>
#include <thread>

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
    void shouldDropWhatComesAfterTheEnd();
    void shouldGetAlongWithoutAnObserver();
};

void NotifierTest::shouldDeliverInOrderOnItsOwnThread()
{
    const WarningTrap warnings;
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    for (const quint32 number : {16U, 30U, 37U})
        notifier.raise(HostEvent(number));
    QTRY_VERIFY(notifier.isIdle());
    QCOMPARE(observer.numbers(), QStringLiteral("16 30 37"));
    for (const QThread* thread : observer.threads())
        QVERIFY(thread != QThread::currentThread());
}

void NotifierTest::shouldDeliverAtOnceOnTheGuiThread()
{
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    notifier.raise(HostEvent(16));
    QCOMPARE(observer.numbers(), QStringLiteral("16"));
    QCOMPARE(observer.threads(), QList<QThread*>{QThread::currentThread()});
    trace.flush();
    QCOMPARE(trace.rowCount(), 2);
    QCOMPARE(trace.entry(0).text, QStringLiteral("16 ProjectReset()"));
    QVERIFY(trace.entry(1).text.startsWith(QStringLiteral("16 returned after ")));
    QCOMPARE(trace.entry(0).thread, QStringLiteral("GUI"));
}

void NotifierTest::shouldBringEventsOfOtherThreadsToTheGuiThread()
{
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    std::thread other([&] { notifier.raise(HostEvent(37)); });
    other.join();
    QVERIFY(!notifier.isIdle());
    QTRY_VERIFY(notifier.isIdle());
    QCOMPARE(observer.numbers(), QStringLiteral("37"));
    QCOMPARE(observer.threads(), QList<QThread*>{QThread::currentThread()});
}

void NotifierTest::shouldNotLetTheGuiThreadOvertakeTheQueue()
{
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    std::promise<void> go;
    const auto gone = go.get_future().share();
    observer.inside = [&](const CSubject& subject) {
        if (subject.GetEvent() == 16)
            gone.wait();
    };
    notifier.raise(HostEvent(16));
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    notifier.raise(HostEvent(30));
    go.set_value();
    QTRY_VERIFY(notifier.isIdle());
    QCOMPARE(observer.numbers(), QStringLiteral("16 30"));
}

void NotifierTest::shouldNestDeliveriesOnTheGuiThread()
{
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    QUuid outerAfterwards;
    observer.inside = [&](const CSubject& subject) {
        if (subject.GetEvent() != 20)
            return;
        notifier.raise(HostEvent(30));
        outerAfterwards = std::get<0>(subject.GetArgument<QUuid>());
    };
    notifier.raise(HostEvent(20, sampleId(5)));
    QCOMPARE(observer.numbers(), QStringLiteral("20 30"));
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
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    QStringList taken;
    observer.inside = [&](const CSubject& subject) {
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
    notifier.raise(
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
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    bool ranOnGui = false;
    observer.inside = [&](const CSubject&) {
        QMetaObject::invokeMethod(
            this, [&] { ranOnGui = true; }, Qt::BlockingQueuedConnection);
    };
    notifier.raise(HostEvent(18, sampleId(1)));
    // Without events being processed the delivery is stuck; it is in hand when its line is there.
    while (observer.numbers().isEmpty())
        QThread::yieldCurrentThread();
    notifier.stop();
    QVERIFY(ranOnGui);
}

void NotifierTest::shouldDropWhatComesAfterTheEnd()
{
    TraceModel trace;
    Notifier notifier(trace);
    RecordingObserver observer;
    notifier.setObserver(&observer);
    notifier.stop();
    notifier.raise(HostEvent(16));
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    notifier.raise(HostEvent(16));
    QVERIFY(notifier.isIdle());
    QCOMPARE(observer.numbers(), QString());
}

void NotifierTest::shouldGetAlongWithoutAnObserver()
{
    TraceModel trace;
    Notifier notifier(trace);
    notifier.setDelivery(Notifier::Delivery::GuiThread);
    notifier.raise(HostEvent(16));
    trace.flush();
    QCOMPARE(trace.entry(1).text, QStringLiteral("16 had no observer"));
}

QTEST_GUILESS_MAIN(NotifierTest)
#include "tst_notifier.moc"
