#include "tests/plugin/Telling.h"

#include <QTimer>

namespace {

/// A host that keeps every question for a record open until the application has quit.
class SlowHost final
{
public:
    explicit SlowHost(FakeHandler& host)
    {
        host.answered = [this](const QString& name, const QUuid&) {
            if (!m_isSlow || name != QLatin1String("GetProcessorNode"))
                return;
            asked.arrive();
            if (!m_over.wait(1, kReleased))
                waited = true;
        };
    }

    void answer()
    {
        m_isSlow = false;
        m_over.arrive();
    }

    Latch asked;
    std::atomic<bool> waited{false}; ///< The application did not quit in time.

private:
    std::atomic<bool> m_isSlow{true};
    Latch m_over;
};

int quitAtOnce()
{
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    return QCoreApplication::exec();
}

} // namespace

/// An application that quits does not wait for a host that is slow to answer.
class QuittingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldLeaveQuestionsBehind_data();
    void shouldLeaveQuestionsBehind();
    void shouldNotStoreWhatAJobLeftBehindWasAnswered();
};

void QuittingTest::shouldLeaveQuestionsBehind_data()
{
    QTest::addColumn<bool>("thread");
    QTest::addColumn<bool>("job");
    QTest::newRow("of a notifying thread") << true << false;
    QTest::newRow("of the job of 39") << false << true;
    QTest::newRow("of both") << true << true;
}

void QuittingTest::shouldLeaveQuestionsBehind()
{
    QFETCH(bool, thread);
    QFETCH(bool, job);
    Telling telling;
    telling.host.start({TrueHost::Ungrouped, TrueHost::Ungrouped});
    SlowHost slow(telling.panel.host());
    if (job)
        telling.host.tell({TrueHost::Warned}, 2);
    QTRY_COMPARE(slow.asked.count(), job ? 1 : 0);
    std::future<void> told = telling.one.post([&] {
        if (thread)
            telling.host.tell({TrueHost::Changed}, 1);
    });
    QTRY_COMPARE(slow.asked.count(), thread && job ? 2 : 1);

    QCOMPARE(quitAtOnce(), 0);
    slow.answer();

    QVERIFY(!slow.waited);
    QVERIFY(comesBack(told));
    // All goes on when the host starts over.
    telling.panel.area().Initialize();
    telling.host.tell({TrueHost::Reset, TrueHost::Changed, TrueHost::Warned}, 1);
    VERIFY_TREE_OF(telling.host);
}

void QuittingTest::shouldNotStoreWhatAJobLeftBehindWasAnswered()
{
    Telling telling;
    telling.host.start({TrueHost::Ungrouped});
    SlowHost slow(telling.panel.host());
    telling.host.tell({TrueHost::Warned});
    QTRY_COMPARE(slow.asked.count(), 1);
    QCOMPARE(quitAtOnce(), 0);
    telling.panel.area().Initialize();
    telling.host.tell({TrueHost::Reset});
    slow.answer();
    VERIFY_TREE_OF(telling.host);
    QVERIFY(!slow.waited);
}

TSA_TEST_MAIN(QuittingTest)
#include "tst_quitting.moc"
