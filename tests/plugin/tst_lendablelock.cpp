#include "plugin/LendableLock.h"
#include "tests/support/HostThread.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <atomic>
#include <chrono>
#include <future>
#include <optional>

namespace {

using Borrower = CLendableLock::Borrower;

constexpr auto kNotYet = std::chrono::milliseconds(50);

bool isStillWaiting(const std::future<void>& done)
{
    return done.wait_for(kNotYet) == std::future_status::timeout;
}

} // namespace

/// The GUI thread is the test's own. Each case would wait for ever with a plain recursive
/// QReadWriteLock, or let in who must stay out.
class LendableLockTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_trap.emplace(); }
    void cleanup() { m_trap.reset(); }

    void shouldReadWhileWriting_data();
    void shouldReadWhileWriting();
    void shouldWriteWhileReading_data();
    void shouldWriteWhileReading();
    void shouldKeepOthersOutUntilTheLastUnlock();
    void shouldLetReadersShare();
    void shouldLetTheGuiThreadInDuringALoan();
    void shouldKeepOtherThreadsOutDuringALoan();
    void shouldLetEverybodyInDuringALoanToEverybody();
    void shouldLetTheLenderNestDuringALoan();
    void shouldWaitForTheGuiThreadAfterALoan();
    void shouldLendFromTheGuiThread();
    void shouldNotMindALoanWithoutALock();
    void shouldUpgradeAReaderAgainstAWaitingWriter();

private:
    std::optional<WarningTrap> m_trap;
};

namespace {

void addThreads()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("foreign thread") << true;
    QTest::newRow("GUI thread") << false;
}

/// Runs `work` on the thread of the row's choice; false when it does not come back.
bool runOnThread(const std::function<void()>& work)
{
    QFETCH(bool, foreign);
    if (!foreign) {
        // A lock-up here is the test's own time-out.
        work();
        return true;
    }
    HostThread thread;
    return comesBack(thread.post(work));
}

} // namespace

void LendableLockTest::shouldReadWhileWriting_data()
{
    addThreads();
}

void LendableLockTest::shouldReadWhileWriting()
{
    CLendableLock lock;
    QVERIFY(runOnThread([&] {
        const CLendableLock::CWriter writer(lock);
        const CLendableLock::CReader reader(lock);
        const CLendableLock::CWriter again(lock);
    }));
}

void LendableLockTest::shouldWriteWhileReading_data()
{
    addThreads();
}

void LendableLockTest::shouldWriteWhileReading()
{
    CLendableLock lock;
    QVERIFY(runOnThread([&] {
        const CLendableLock::CReader reader(lock);
        const CLendableLock::CWriter writer(lock);
        const CLendableLock::CReader again(lock);
    }));
}

void LendableLockTest::shouldKeepOthersOutUntilTheLastUnlock()
{
    CLendableLock lock;
    HostThread thread;
    lock.lockForRead();
    lock.lockForWrite();
    const auto read = thread.post([&] { const CLendableLock::CReader reader(lock); });
    QVERIFY(isStillWaiting(read));
    lock.unlock();
    QVERIFY(isStillWaiting(read));
    lock.unlock();
    QVERIFY(comesBack(read));
}

void LendableLockTest::shouldLetReadersShare()
{
    CLendableLock lock;
    HostThread one;
    HostThread two;
    std::promise<void> bothAreIn;
    const auto in = bothAreIn.get_future().share();
    std::atomic<int> readers{0};
    const auto read = [&] {
        const CLendableLock::CReader reader(lock);
        if (++readers == 3)
            bothAreIn.set_value();
        in.wait_for(kSoon);
    };
    const auto first = one.post(read);
    const auto second = two.post(read);
    read();
    QVERIFY(comesBack(first));
    QVERIFY(comesBack(second));
    QCOMPARE(readers.load(), 3);
}

void LendableLockTest::shouldLetTheGuiThreadInDuringALoan()
{
    CLendableLock lock;
    HostThread thread;
    std::promise<void> lent;
    std::promise<void> read;
    const auto done = thread.post([&] {
        const CLendableLock::CWriter writer(lock);
        const CLendableLock::CLoan loan(lock, Borrower::GuiThread);
        lent.set_value();
        // What a blocking invocation does: the GUI thread has to get on before this thread can.
        read.get_future().wait_for(kSoon);
    });
    QVERIFY(comesBack(lent.get_future()));
    {
        const CLendableLock::CReader reader(lock);
        const CLendableLock::CWriter writer(lock);
    }
    read.set_value();
    QVERIFY(comesBack(done));
}

void LendableLockTest::shouldKeepOtherThreadsOutDuringALoan()
{
    CLendableLock lock;
    HostThread lender;
    HostThread other;
    std::promise<void> lent;
    std::promise<void> end;
    const auto done = lender.post([&] {
        const CLendableLock::CWriter writer(lock);
        const CLendableLock::CLoan loan(lock, Borrower::GuiThread);
        lent.set_value();
        end.get_future().wait_for(kSoon);
    });
    QVERIFY(comesBack(lent.get_future()));
    const auto read = other.post([&] { const CLendableLock::CReader reader(lock); });
    QVERIFY(isStillWaiting(read));
    end.set_value();
    QVERIFY(comesBack(done));
    QVERIFY(comesBack(read));
}

void LendableLockTest::shouldLetEverybodyInDuringALoanToEverybody()
{
    CLendableLock lock;
    HostThread lender;
    HostThread other;
    std::promise<void> lent;
    std::promise<void> end;
    const auto done = lender.post([&] {
        const CLendableLock::CWriter writer(lock);
        {
            const CLendableLock::CLoan loan(lock, Borrower::Everybody);
            lent.set_value();
            end.get_future().wait_for(kSoon);
        }
        const CLendableLock::CReader again(lock);
    });
    QVERIFY(comesBack(lent.get_future()));
    QVERIFY(comesBack(other.post([&] { const CLendableLock::CWriter writer(lock); })));
    {
        const CLendableLock::CWriter writer(lock);
        end.set_value();
        QVERIFY(isStillWaiting(done));
    }
    QVERIFY(comesBack(done));
}

void LendableLockTest::shouldLetTheLenderNestDuringALoan()
{
    CLendableLock lock;
    HostThread thread;
    QVERIFY(comesBack(thread.post([&] {
        const CLendableLock::CWriter writer(lock);
        const CLendableLock::CLoan loan(lock, Borrower::GuiThread);
        const CLendableLock::CReader reader(lock);
        const CLendableLock::CWriter nested(lock);
        const CLendableLock::CLoan nestedLoan(lock, Borrower::Everybody);
    })));
    // Everything was given back.
    QVERIFY(comesBack(thread.post([&] { const CLendableLock::CWriter writer(lock); })));
    HostThread other;
    QVERIFY(comesBack(other.post([&] { const CLendableLock::CWriter writer(lock); })));
    const CLendableLock::CWriter writer(lock);
}

void LendableLockTest::shouldWaitForTheGuiThreadAfterALoan()
{
    CLendableLock lock;
    HostThread thread;
    std::promise<void> lent;
    std::promise<void> end;
    const auto done = thread.post([&] {
        const CLendableLock::CWriter writer(lock);
        {
            const CLendableLock::CLoan loan(lock, Borrower::GuiThread);
            lent.set_value();
            end.get_future().wait_for(kSoon);
        }
    });
    QVERIFY(comesBack(lent.get_future()));
    {
        const CLendableLock::CReader reader(lock);
        end.set_value();
        QVERIFY(isStillWaiting(done));
    }
    QVERIFY(comesBack(done));
}

void LendableLockTest::shouldLendFromTheGuiThread()
{
    CLendableLock lock;
    HostThread thread;
    const CLendableLock::CWriter writer(lock);
    const CLendableLock::CReader reader(lock);
    const auto write = thread.post([&] { const CLendableLock::CWriter other(lock); });
    QVERIFY(isStillWaiting(write));
    const CLendableLock::CLoan loan(lock, Borrower::GuiThread);
    QVERIFY(comesBack(write));
}

void LendableLockTest::shouldNotMindALoanWithoutALock()
{
    CLendableLock lock;
    {
        const CLendableLock::CLoan loan(lock, Borrower::GuiThread);
        const CLendableLock::CReader reader(lock);
    }
    HostThread thread;
    QVERIFY(comesBack(thread.post([&] { const CLendableLock::CWriter writer(lock); })));
}

void LendableLockTest::shouldUpgradeAReaderAgainstAWaitingWriter()
{
    CLendableLock lock;
    HostThread reader;
    HostThread writer;
    std::promise<void> reading;
    std::promise<void> upgrade;
    const auto upgraded = reader.post([&] {
        const CLendableLock::CReader held(lock);
        reading.set_value();
        upgrade.get_future().wait_for(kSoon);
        const CLendableLock::CWriter more(lock);
    });
    QVERIFY(comesBack(reading.get_future()));
    const auto written = writer.post([&] { const CLendableLock::CWriter held(lock); });
    QVERIFY(isStillWaiting(written));
    upgrade.set_value();
    QVERIFY(comesBack(upgraded));
    QVERIFY(comesBack(written));
}

QTEST_GUILESS_MAIN(LendableLockTest)
#include "tst_lendablelock.moc"
