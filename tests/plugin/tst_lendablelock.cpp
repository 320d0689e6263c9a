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

/// Takes the lock one way, then the other, then the first way again; false when that locks up.
template <typename Outer, typename Inner>
bool nests()
{
    CLendableLock lock;
    return runOnThread([&] {
        const Outer outer(lock);
        const Inner inner(lock);
        const Outer again(lock);
    });
}

/// A thread that has the lock for writing and lends it until end().
class Lender final
{
public:
    Lender(CLendableLock& lock, Borrower borrower)
        : m_done(m_thread.post([this, &lock, borrower] {
            const CLendableLock::CWriter writer(lock);
            {
                const CLendableLock::CLoan loan(lock, borrower);
                m_lent.set_value();
                // What a blocking invocation does: somebody else has to get on before this thread.
                m_end.get_future().wait_for(kSoon);
            }
            const CLendableLock::CReader again(lock);
        }))
    {
    }

    bool lends() { return comesBack(m_lent.get_future()); }
    void end() { m_end.set_value(); }
    const std::future<void>& done() const { return m_done; }

private:
    std::promise<void> m_lent;
    std::promise<void> m_end;
    HostThread m_thread;
    std::future<void> m_done;
};

} // namespace

/// The GUI thread is the test's own. Each case would wait for ever with a plain recursive
/// QReadWriteLock, or let in who must stay out.
class LendableLockTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_trap.emplace(); }
    void cleanup() { m_trap.reset(); }

    void shouldReadWhileWriting_data() { addThreads(); }
    void shouldReadWhileWriting();
    void shouldWriteWhileReading_data() { addThreads(); }
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

void LendableLockTest::shouldReadWhileWriting()
{
    QVERIFY((nests<CLendableLock::CWriter, CLendableLock::CReader>()));
}

void LendableLockTest::shouldWriteWhileReading()
{
    QVERIFY((nests<CLendableLock::CReader, CLendableLock::CWriter>()));
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
    Lender lender(lock, Borrower::GuiThread);
    QVERIFY(lender.lends());
    {
        const CLendableLock::CReader reader(lock);
        const CLendableLock::CWriter writer(lock);
    }
    lender.end();
    QVERIFY(comesBack(lender.done()));
}

void LendableLockTest::shouldKeepOtherThreadsOutDuringALoan()
{
    CLendableLock lock;
    Lender lender(lock, Borrower::GuiThread);
    HostThread other;
    QVERIFY(lender.lends());
    const auto read = other.post([&] { const CLendableLock::CReader reader(lock); });
    QVERIFY(isStillWaiting(read));
    lender.end();
    QVERIFY(comesBack(lender.done()));
    QVERIFY(comesBack(read));
}

void LendableLockTest::shouldLetEverybodyInDuringALoanToEverybody()
{
    CLendableLock lock;
    Lender lender(lock, Borrower::Everybody);
    HostThread other;
    QVERIFY(lender.lends());
    QVERIFY(comesBack(other.post([&] { const CLendableLock::CWriter writer(lock); })));
    {
        const CLendableLock::CWriter writer(lock);
        lender.end();
        QVERIFY(isStillWaiting(lender.done()));
    }
    QVERIFY(comesBack(lender.done()));
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
    Lender lender(lock, Borrower::GuiThread);
    QVERIFY(lender.lends());
    {
        const CLendableLock::CReader reader(lock);
        lender.end();
        QVERIFY(isStillWaiting(lender.done()));
    }
    QVERIFY(comesBack(lender.done()));
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
