#include "host/common/WorkThread.h"

#include "tests/support/WarningTrap.h"

#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace {
constexpr int kLimitMs = 30000;

/// Jobs that append a letter each, and a job that blocks the thread.
class Jobs final
{
public:
    explicit Jobs(CWorkThread& worker)
        : m_worker(&worker)
    {
    }
    ~Jobs()
    {
        open();
        if (m_worker) {
            m_worker->ThreadExit();
            m_worker->wait();
        }
    }
    Jobs(const Jobs&) = delete;
    Jobs& operator=(const Jobs&) = delete;

    void post(int number, char letter, bool replacePending = false)
    {
        m_worker->AppendEvent({number, [this, letter] { m_text.append(QLatin1Char(letter)); }},
                              replacePending);
    }

    /// Posts a job that blocks until open() is called.
    void postGate(int number = 0)
    {
        m_worker->AppendEvent({number,
                               [this] {
                                   m_reached.release();
                                   m_gate.acquire();
                               }},
                              false);
    }
    bool waitAtGate() { return m_reached.tryAcquire(1, kLimitMs); }
    void open() { m_gate.release(); }

    /// Waits for all posted jobs and returns the letters.
    QString text()
    {
        m_worker->AppendEvent({-1, [this] { m_done.release(); }}, false);
        return m_done.tryAcquire(1, kLimitMs) ? m_text : QStringLiteral("stuck");
    }

    /// Returns the letters after the thread has finished.
    QString textAfterEnd() const { return m_text; }

private:
    QPointer<CWorkThread> m_worker;
    QString m_text;
    QSemaphore m_reached;
    QSemaphore m_gate;
    QSemaphore m_done;
};

/// Posts a job that is the only owner of the returned object.
std::weak_ptr<int> postHolding(CWorkThread& worker)
{
    const auto held = std::make_shared<int>(1);
    worker.AppendEvent({1, [held] { Q_UNUSED(held) }}, false);
    return held;
}

} // namespace

class WorkThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRunJobsInOrderOnItsOwnThread();
    void shouldKeepJobsUntilTheStart();
    void shouldReplaceAPendingJobAtItsPosition();
    void shouldDestroyAReplacedJobWithoutTheLock();
    void shouldNotReplaceByDefault();
    void shouldReplaceOnlyTheFirstOfSeveral();
    void shouldNotReplaceTheCurrentJob();
    void shouldRunJobsPostedByJobs();
    void shouldKeepTheOrderOfEveryPostingThread();
    void shouldDestroyAJobAfterItHasRun();
    void shouldDropWaitingJobsOnExit();
    void shouldDropJobsPostedAfterTheExit();
    void shouldExitFromInsideAJob();
    void shouldRunAgainAfterAnExit();
    void shouldExitWithoutAStart();
    void shouldFinishTheCurrentJobOnDestruction();
    void shouldAcceptActivationsWhileRunning();
    void shouldAcceptActivationsRightAfterARestart();

private:
};

void WorkThreadTest::shouldRunJobsInOrderOnItsOwnThread()
{
    CWorkThread worker;
    Jobs jobs(worker);
    worker.start();
    for (char letter = 'a'; letter <= 'z'; ++letter)
        jobs.post(letter % 3, letter);
    QThread* thread = nullptr;
    worker.AppendEvent({1, [&] { thread = QThread::currentThread(); }}, false);
    QCOMPARE(jobs.text(), QStringLiteral("abcdefghijklmnopqrstuvwxyz"));
    QCOMPARE(thread, static_cast<QThread*>(&worker));
}

void WorkThreadTest::shouldKeepJobsUntilTheStart()
{
    CWorkThread worker;
    Jobs jobs(worker);
    jobs.post(1, 'a');
    jobs.post(2, 'b');
    jobs.post(1, 'c', true);
    QVERIFY(!worker.isRunning());
    QCOMPARE(jobs.textAfterEnd(), QString());
    worker.start();
    QCOMPARE(jobs.text(), QStringLiteral("cb"));
}

void WorkThreadTest::shouldReplaceAPendingJobAtItsPosition()
{
    CWorkThread worker;
    Jobs jobs(worker);
    worker.start();
    jobs.postGate();
    QVERIFY(jobs.waitAtGate());
    jobs.post(1, 'a');
    jobs.post(2, 'b');
    jobs.post(3, 'c');
    jobs.post(2, 'B', true);
    jobs.post(4, 'd', true);
    jobs.open();
    QCOMPARE(jobs.text(), QStringLiteral("aBcd"));
}

void WorkThreadTest::shouldDestroyAReplacedJobWithoutTheLock()
{
    CWorkThread worker;
    Jobs jobs(worker);
    std::shared_ptr<int> poster(new int(1), [&](const int* number) {
        delete number;
        jobs.post(9, 'z');
    });
    worker.AppendEvent({1, [held = std::move(poster)] { Q_UNUSED(held) }}, false);
    jobs.post(1, 'a', true);
    worker.start();
    QCOMPARE(jobs.text(), QStringLiteral("az"));
}

void WorkThreadTest::shouldNotReplaceByDefault()
{
    CWorkThread worker;
    Jobs jobs(worker);
    jobs.post(1, 'a');
    jobs.post(1, 'b');
    worker.start();
    QCOMPARE(jobs.text(), QStringLiteral("ab"));
}

void WorkThreadTest::shouldReplaceOnlyTheFirstOfSeveral()
{
    CWorkThread worker;
    Jobs jobs(worker);
    jobs.post(1, 'a');
    jobs.post(1, 'b');
    jobs.post(1, 'c', true);
    worker.start();
    QCOMPARE(jobs.text(), QStringLiteral("cb"));
}

void WorkThreadTest::shouldNotReplaceTheCurrentJob()
{
    CWorkThread worker;
    Jobs jobs(worker);
    worker.start();
    jobs.postGate(7);
    QVERIFY(jobs.waitAtGate());
    jobs.post(7, 'a', true);
    jobs.open();
    QCOMPARE(jobs.text(), QStringLiteral("a"));
}

void WorkThreadTest::shouldRunJobsPostedByJobs()
{
    CWorkThread worker;
    Jobs jobs(worker);
    QSemaphore posted;
    worker.AppendEvent({1,
                        [&] {
                            jobs.post(2, 'b');
                            jobs.post(1, 'c', true);
                            posted.release();
                        }},
                       false);
    jobs.post(3, 'a');
    worker.start();
    QVERIFY(posted.tryAcquire(1, kLimitMs));
    QCOMPARE(jobs.text(), QStringLiteral("abc"));
}

void WorkThreadTest::shouldKeepTheOrderOfEveryPostingThread()
{
    constexpr int posters = 4;
    constexpr int each = 2000;
    CWorkThread worker;
    worker.start();
    std::vector<int> next(posters, 0);
    QSemaphore ran;
    std::atomic<int> outOfOrder{0};
    std::vector<std::thread> threads;
    threads.reserve(posters);
    for (int poster = 0; poster < posters; ++poster) {
        threads.emplace_back([&, poster] {
            for (int i = 0; i < each; ++i) {
                worker.AppendEvent({poster,
                                    [&, poster, i] {
                                        if (next[static_cast<std::size_t>(poster)]++ != i)
                                            ++outOfOrder;
                                        ran.release();
                                    }},
                                   false);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QVERIFY(ran.tryAcquire(posters * each, kLimitMs));
    QCOMPARE(outOfOrder.load(), 0);
}

void WorkThreadTest::shouldDestroyAJobAfterItHasRun()
{
    CWorkThread worker;
    Jobs jobs(worker);
    worker.start();
    const std::weak_ptr<int> watch = postHolding(worker);
    QTRY_VERIFY(watch.expired()); // without another job after it
    QCOMPARE(jobs.text(), QString());
}

void WorkThreadTest::shouldDropWaitingJobsOnExit()
{
    CWorkThread worker;
    Jobs jobs(worker);
    QSignalSpy finished(&worker, &QThread::finished);
    worker.start();
    jobs.postGate();
    QVERIFY(jobs.waitAtGate());
    const std::weak_ptr<int> watch = postHolding(worker);
    jobs.post(2, 'a');
    QVERIFY(!watch.expired());

    worker.ThreadExit();
    QVERIFY(watch.expired());
    QVERIFY(worker.isRunning());
    jobs.open();
    QVERIFY(worker.wait(kLimitMs));
    QCOMPARE(jobs.textAfterEnd(), QString());
    QTRY_COMPARE(finished.count(), 1);
}

void WorkThreadTest::shouldDropJobsPostedAfterTheExit()
{
    CWorkThread worker;
    Jobs jobs(worker);
    worker.start();
    worker.ThreadExit();
    const std::weak_ptr<int> watch = postHolding(worker);
    QVERIFY(watch.expired());
    QVERIFY(worker.wait(kLimitMs));
    jobs.post(1, 'a');
    worker.ActivateThread();
    QCOMPARE(jobs.text(), QString());
}

void WorkThreadTest::shouldExitFromInsideAJob()
{
    CWorkThread worker;
    Jobs jobs(worker);
    jobs.post(1, 'a');
    worker.AppendEvent({2, [&] { worker.ThreadExit(); }}, false);
    jobs.post(3, 'b');
    worker.start();
    QVERIFY(worker.wait(kLimitMs));
    QCOMPARE(jobs.textAfterEnd(), QStringLiteral("a"));
}

void WorkThreadTest::shouldRunAgainAfterAnExit()
{
    CWorkThread worker;
    Jobs jobs(worker);
    QString expected;
    for (char letter = 'a'; letter <= 'e'; ++letter) {
        worker.ActivateThread();
        jobs.post(1, letter);
        expected.append(QLatin1Char(letter));
        QCOMPARE(jobs.text(), expected);
        worker.ThreadExit();
        QVERIFY(worker.wait(kLimitMs));
        QVERIFY(!worker.isRunning());
    }
}

void WorkThreadTest::shouldExitWithoutAStart()
{
    std::weak_ptr<int> watch;
    {
        CWorkThread worker;
        watch = postHolding(worker);
        QVERIFY(!watch.expired());
    }
    QVERIFY(watch.expired());
}

void WorkThreadTest::shouldFinishTheCurrentJobOnDestruction()
{
    auto worker = std::make_unique<CWorkThread>();
    Jobs jobs(*worker);
    worker->start();
    jobs.postGate();
    QVERIFY(jobs.waitAtGate());
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    std::atomic<bool> ranDropped{false};
    worker->AppendEvent({1, [held, &ranDropped] { ranDropped = true; }}, false);
    held.reset();

    // The destructor drops the waiting job first and then waits for the current one.
    std::atomic<bool> destroyed{false};
    std::thread destroyer([&] {
        worker.reset();
        destroyed = true;
    });
    QTRY_VERIFY(watch.expired());
    QVERIFY(!destroyed);
    jobs.open();
    destroyer.join();
    QVERIFY(destroyed);
    QVERIFY(!ranDropped);
}

void WorkThreadTest::shouldAcceptActivationsWhileRunning()
{
    CWorkThread worker;
    Jobs jobs(worker);
    worker.ActivateThread();
    jobs.post(1, 'a');
    worker.ActivateThread();
    jobs.post(1, 'b');
    QCOMPARE(jobs.text(), QStringLiteral("ab"));
    QVERIFY(worker.isRunning());
}

void WorkThreadTest::shouldAcceptActivationsRightAfterARestart()
{
    CWorkThread worker;
    Jobs jobs(worker);
    QString expected;
    for (int round = 0; round < 300; ++round) {
        worker.ThreadExit();
        if (round % 2 == 0)
            worker.wait();
        worker.ActivateThread();
        worker.ActivateThread();
        jobs.post(1, 'a');
        expected.append(QLatin1Char('a'));
        QCOMPARE(jobs.text(), expected);
    }
}

TSA_TEST_MAIN(WorkThreadTest)
#include "tst_workthread.moc"
