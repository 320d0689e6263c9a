#include "base/GuiCalls.h"
#include "tests/support/HostThread.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"

#include <QTest>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

class GuiCallsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRunOnTheGuiThreadAndWait();
    void shouldRunAtOnceOnTheGuiThread();
    void shouldKeepTheOrder();
    void shouldLiveOnTheGuiThreadWhereverCreated();
    void shouldReleaseTheCallerWhenShutDown();
    void shouldReleaseTheCallerWhenClosed();
    void shouldReleaseTheCallerWhenTheGuiThreadAsksTheHost();
    void shouldWaitForACallWithAShortQuestion();
    void shouldReleaseTheCallerOfACallThatStaysInAQuestion();
    void shouldNotWaitAtAllOnceAQuestionIsLong();
    void shouldWaitOnceForAllOfAnEvent();
    void shouldWaitAnewForEachEvent();
    void shouldTellACallWhetherItIsAwaited();
    void shouldRunWhatWasRaisedInsideACallBehindIt();
    void shouldGoOnAfterAnException();
    void shouldLogWhatIsThrownToNobody();
    void shouldNotWaitLongerThanItsPatience();
    void shouldSettleFromAnotherThread();
    void shouldSettleOnTheGuiThread();
    void shouldNotSettleInsideACall();
    void shouldWaitWhileBusy();
    void shouldRunOneAfterTheOther();
    void shouldNotOvertakeWhatIsQueued();
    void shouldSayWhenSomethingIsLeft();
    void shouldPokeOncePerCall();

private:
};

void GuiCallsTest::shouldRunOnTheGuiThreadAndWait()
{
    CGuiCalls calls;
    HostThread thread;
    QThread* ranOn = nullptr;
    bool answer = false;
    thread.run([&] { answer = calls.run([&] { ranOn = QThread::currentThread(); }); });
    QVERIFY(answer);
    QCOMPARE(ranOn, QThread::currentThread());
}

void GuiCallsTest::shouldRunAtOnceOnTheGuiThread()
{
    CGuiCalls calls;
    int runs = 0;
    QVERIFY(calls.run([&] { ++runs; }));
    calls.post([&] { ++runs; });
    QCOMPARE(runs, 2);
}

void GuiCallsTest::shouldKeepTheOrder()
{
    CGuiCalls calls;
    HostThread thread;
    QVector<int> order;
    thread.run([&] {
        for (int i = 0; i < 100; ++i) {
            if (i % 7 == 0)
                calls.run([&order, i] { order.append(i); });
            else
                calls.post([&order, i] { order.append(i); });
        }
        calls.settle();
    });
    QCOMPARE(order.size(), 100);
    QVERIFY(std::is_sorted(order.begin(), order.end()));
}

void GuiCallsTest::shouldLiveOnTheGuiThreadWhereverCreated()
{
    std::unique_ptr<CGuiCalls> calls;
    HostThread thread;
    thread.run([&] { calls = std::make_unique<CGuiCalls>(); });
    QCOMPARE(calls->thread(), QThread::currentThread());
}

void GuiCallsTest::shouldReleaseTheCallerWhenShutDown()
{
    const auto calls = std::make_unique<CGuiCalls>();
    HostThread thread;
    bool ran = false;
    bool answer = true;
    std::promise<void> begun;
    const auto held = std::make_shared<int>(0);
    const auto done = thread.post([&] {
        begun.set_value();
        answer = calls->run([&ran, held] { ran = true; });
    });
    QVERIFY(comesBack(begun.get_future()));
    while (held.use_count() < 2)
        std::this_thread::yield();
    calls->shutDown();
    QVERIFY(comesBack(done));
    QVERIFY(!answer);
    QVERIFY(!ran);
}

void GuiCallsTest::shouldReleaseTheCallerWhenClosed()
{
    CGuiCalls calls;
    HostThread thread;
    bool ran = false;
    const auto done = thread.post([&] { calls.run([&] { ran = true; }); });
    calls.close();
    QVERIFY(comesBack(done));
    // Later waits end as well, until it opens again.
    QVERIFY(comesBack(thread.post([&] { calls.run([] {}); })));
    calls.open();
    bool answer = false;
    thread.run([&] { answer = calls.run([] {}); });
    QVERIFY(answer);
    QVERIFY(ran);
}

void GuiCallsTest::shouldReleaseTheCallerWhenTheGuiThreadAsksTheHost()
{
    CGuiCalls calls;
    HostThread thread;
    bool ran = false;
    {
        const CHostQuestion question;
        // The host, inside the question, waits for its own thread.
        QVERIFY(comesBack(thread.post([&] { calls.run([&] { ran = true; }); })));
        QVERIFY(!ran);
    }
    QTRY_VERIFY(ran);
}

void GuiCallsTest::shouldWaitForACallWithAShortQuestion()
{
    CGuiCalls calls;
    HostThread thread;
    bool ended = false;
    thread.run([&] {
        calls.run([&] {
            const CHostQuestion question;
            ended = true;
        });
    });
    QVERIFY(ended);
}

void GuiCallsTest::shouldReleaseTheCallerOfACallThatStaysInAQuestion()
{
    CGuiCalls calls;
    HostThread thread;
    bool cameBack = false;
    std::promise<void> left;
    auto hasLeft = left.get_future();
    thread.run([&] {
        calls.run([&] {
            const CHostQuestion question;
            // The host, inside the question, waits for the thread that waits for this call.
            cameBack = hasLeft.wait_for(kSoon) == std::future_status::ready;
        });
        left.set_value();
    });
    QTRY_VERIFY(cameBack);
}

void GuiCallsTest::shouldNotWaitAtAllOnceAQuestionIsLong()
{
    CGuiCalls calls;
    calls.setPatience(std::chrono::hours(1));
    HostThread thread;
    const CHostQuestion question;
    QTRY_VERIFY(CHostQuestion::holdsUpGuiThread());
    // One question however often it is nested: no caller waits for it again.
    for (int n = 0; n < 5000; ++n) {
        const CHostQuestion nested;
        QVERIFY(comesBack(thread.post([&] { calls.run([] {}); })));
    }
}

void GuiCallsTest::shouldWaitOnceForAllOfAnEvent()
{
    // One wait for each of them would take longer than anybody waits here.
    constexpr int kWaits = 1000;

    CGuiCalls calls;
    calls.setPatience(std::chrono::milliseconds(200));
    HostThread thread;
    QVERIFY(comesBack(thread.post([&] {
        const CGuiCalls::SharedPatience event;
        calls.post([] {});
        for (int n = 0; n < kWaits; ++n) {
            const CGuiCalls::SharedPatience inside;
            calls.settle();
            calls.run([] {});
        }
    })));
}

void GuiCallsTest::shouldWaitAnewForEachEvent()
{
    CGuiCalls calls;
    calls.setPatience(std::chrono::milliseconds(0));
    HostThread thread;
    bool ran = true;
    QVERIFY(comesBack(thread.post([&] {
        const CGuiCalls::SharedPatience event;
        ran = calls.run([] {});
    })));
    QVERIFY(!ran);
    calls.settle();
    calls.setPatience(std::chrono::seconds(60));
    const auto told = thread.post([&] {
        const CGuiCalls::SharedPatience event;
        ran = calls.run([] {});
    });
    QTRY_VERIFY(told.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QVERIFY(ran);
}

void GuiCallsTest::shouldTellACallWhetherItIsAwaited()
{
    CGuiCalls calls;
    HostThread thread;
    QStringList awaited;
    const auto note = [&] {
        awaited.append(calls.isAwaited() ? QStringLiteral("yes") : QStringLiteral("no"));
    };
    calls.run(note);
    calls.post(note);
    thread.run([&] { calls.run(note); });
    thread.run([&] { calls.post(note); });
    calls.settle();
    // A caller that has given up.
    calls.setPatience(std::chrono::milliseconds(0));
    QVERIFY(comesBack(thread.post([&] { calls.run(note); })));
    calls.settle();
    QCOMPARE(awaited.join(QLatin1Char(' ')), QStringLiteral("yes yes yes no no"));
    QVERIFY(!calls.isAwaited());
}

void GuiCallsTest::shouldRunWhatWasRaisedInsideACallBehindIt()
{
    CGuiCalls calls;
    QStringList order;
    calls.run([&] {
        QVERIFY(!calls.run([&] { order.append(QStringLiteral("raised")); }));
        order.append(QStringLiteral("raising"));
    });
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("raising raised"));
}

void GuiCallsTest::shouldGoOnAfterAnException()
{
    CGuiCalls calls;
    int runs = 0;
    const auto fail = [&] {
        calls.post([&] { ++runs; });
        const CHostQuestion question;
        throw std::runtime_error("the host's");
    };
    QVERIFY_EXCEPTION_THROWN(calls.run(fail), std::runtime_error);
    QTRY_COMPARE(runs, 1);
    QVERIFY(!CHostQuestion::holdsUpGuiThread());
    QVERIFY(calls.run([&] { ++runs; }));
    QCOMPARE(runs, 2);
}

void GuiCallsTest::shouldLogWhatIsThrownToNobody()
{
    CGuiCalls calls;
    HostThread thread;
    const LogTrap log;
    const auto fail = [] { throw std::runtime_error("the host's"); };
    // Another thread's, which runs before the caller's own.
    QVERIFY(comesBack(thread.post([&] { calls.post(fail); })));
    bool ran = false;
    QVERIFY(calls.run([&] { ran = true; }));
    QVERIFY(ran);
    QCOMPARE(log.messages().size(), 1);
    // One that has to wait, so that its caller has gone on.
    QVERIFY(calls.run([&] { calls.post(fail); }));
    QCOMPARE(log.messages().size(), 2);
}

void GuiCallsTest::shouldNotWaitLongerThanItsPatience()
{
    CGuiCalls calls;
    calls.setPatience(std::chrono::milliseconds(20));
    HostThread thread;
    bool ran = false;
    bool answer = true;
    QVERIFY(comesBack(thread.post([&] { answer = calls.run([&] { ran = true; }); })));
    QVERIFY(!answer);
    QVERIFY(!ran);
    QTRY_VERIFY(ran);
}

void GuiCallsTest::shouldSettleFromAnotherThread()
{
    CGuiCalls calls;
    HostThread thread;
    bool ran = false;
    bool ranFirst = false;
    thread.run([&] {
        calls.post([&] { ran = true; });
        calls.settle();
        ranFirst = ran;
    });
    QVERIFY(ranFirst);
    // With nothing queued nobody is waited for.
    QVERIFY(comesBack(thread.post([&] { calls.settle(); })));
}

void GuiCallsTest::shouldSettleOnTheGuiThread()
{
    CGuiCalls calls;
    HostThread thread;
    bool ran = false;
    QVERIFY(comesBack(thread.post([&] { calls.post([&] { ran = true; }); })));
    QVERIFY(!ran);
    calls.settle();
    QVERIFY(ran);
}

void GuiCallsTest::shouldNotSettleInsideACall()
{
    CGuiCalls calls;
    HostThread thread;
    QStringList order;
    QVERIFY(comesBack(thread.post([&] {
        calls.post([&] {
            calls.settle();
            order.append(QStringLiteral("first"));
        });
        calls.post([&] { order.append(QStringLiteral("second")); });
    })));
    QTRY_COMPARE(order, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

void GuiCallsTest::shouldWaitWhileBusy()
{
    CGuiCalls calls;
    bool busy = true;
    calls.waitWhile([&busy] { return busy; });
    QVector<int> order;
    // A thread that did not wait for the first: the rest has to stay behind it.
    HostThread thread;
    thread.run([&] { calls.post([&] { order.append(1); }); });
    QVERIFY(!calls.run([&] { order.append(2); }));
    calls.post([&] { order.append(3); });
    QVERIFY(!calls.settle());
    QCoreApplication::processEvents();
    QCOMPARE(order, QVector<int>());

    busy = false;
    calls.resume();
    thread.run([&] { calls.run([&] { order.append(4); }); });
    QCOMPARE(order, (QVector<int>{1, 2, 3, 4}));
    QVERIFY(calls.settle());
}

void GuiCallsTest::shouldRunOneAfterTheOther()
{
    for (const bool queued : {false, true}) {
        CGuiCalls calls;
        HostThread thread;
        QStringList order;
        const auto first = [&] {
            order.append(QStringLiteral("1a"));
            thread.run([&] { calls.post([&] { order.append(QStringLiteral("2")); }); });
            QCoreApplication::processEvents();
            order.append(QStringLiteral("1b"));
        };
        if (queued)
            thread.run([&] { calls.post(first); });
        else
            calls.post(first);
        QTRY_COMPARE(order.join(QLatin1Char(' ')), QStringLiteral("1a 1b 2"));
    }
}

void GuiCallsTest::shouldNotOvertakeWhatIsQueued()
{
    CGuiCalls calls;
    QVector<int> order;
    // Without events in between: the first one must find the second one queued.
    std::thread([&] {
        calls.post([&] {
            order.append(1);
            QVERIFY(!calls.run([&] { order.append(3); }));
        });
        calls.post([&] { order.append(2); });
    }).join();
    QTRY_COMPARE(order, (QVector<int>{1, 2, 3}));
}

void GuiCallsTest::shouldSayWhenSomethingIsLeft()
{
    CGuiCalls calls;
    HostThread thread;
    int late = 0;
    thread.run([&] { calls.post([&] { thread.run([&] { calls.post([&] { ++late; }); }); }); });
    const bool settled = calls.settle();
    QCOMPARE(settled, late == 1);
    QTRY_COMPARE(late, 1);
    QVERIFY(calls.settle());
}

void GuiCallsTest::shouldPokeOncePerCall()
{
    class Counter final : public QObject
    {
    public:
        int events = 0;
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            Q_UNUSED(watched)
            if (event->type() >= QEvent::User)
                ++events;
            return false;
        }
    };
    CGuiCalls calls;
    Counter counter;
    calls.installEventFilter(&counter);
    HostThread thread;
    int runs = 0;
    thread.run([&] {
        for (int n = 0; n < 100; ++n)
            calls.post([&] {
                ++runs;
                calls.resume();
            });
        calls.settle();
    });
    QCoreApplication::processEvents();
    QCOMPARE(runs, 100);
    QVERIFY2(counter.events <= 102, qPrintable(QString::number(counter.events)));
}

TSA_GUILESS_TEST_MAIN(GuiCallsTest)
#include "tst_guicalls.moc"
