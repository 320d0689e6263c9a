#include "tests/storm/StormPlayer.h"

#include "tests/storm/StormHost.h"
#include "tests/storm/StormOracle.h"
#include "tests/storm/StormPanel.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

/// The number of steps that one actor may be ahead of another one.
constexpr int kWindow = 12;
constexpr int kMostNested = 3;
constexpr int kTickMs = 10;

/// Limit of the wait until nothing is pending.
constexpr int kRestMs = 20000;
constexpr int kAgreementMs = 4000;
constexpr int kStuckMs = 120000;

/// Gives each actor its steps in order, and makes actors wait that are too far ahead.
class Score final
{
public:
    Score(const StormPlan& plan, int stepCount)
        : m_plan(plan)
        , m_begun(static_cast<std::size_t>(stepCount), false)
    {
    }

    /// Returns the next step of `actor`, or null if it has none now. Waits for its turn unless
    /// `wait` is false.
    const StormStep* next(int actor, bool wait)
    {
        std::unique_lock guard(m_mutex);
        int step = 0;
        while (step < size() && (m_begun[at(step)] || m_plan.steps[at(step)].actor != actor))
            ++step;
        if (step == size())
            return nullptr;
        const auto isDue = [&] { return step < m_first + kWindow; };
        if (wait)
            m_changed.wait(guard, isDue);
        else if (!isDue())
            return nullptr;
        m_begun[at(step)] = true;
        while (m_first < size() && m_begun[at(m_first)])
            ++m_first;
        m_changed.notify_all();
        return &m_plan.steps[at(step)];
    }

    bool isOver()
    {
        const std::lock_guard guard(m_mutex);
        return m_first == size();
    }

private:
    static std::size_t at(int step) { return static_cast<std::size_t>(step); }
    int size() const { return static_cast<int>(m_begun.size()); }

    const StormPlan& m_plan;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<bool> m_begun;
    int m_first = 0; // the first step that has not begun
};

/// One round. The GUI thread performs its steps in its event loop and in those that answers run.
class Round final
{
public:
    Round(const StormPlan& plan, int stepCount)
        : m_plan(plan)
        , m_score(plan, stepCount)
        , m_host(plan)
        , m_panel(m_host)
    {
        for (int family = 0; family < StormProject::kFamilies; ++family) {
            m_host.project.addGroup(family, plan.seed);
            m_host.project.addProcessors(family, 4, plan.seed);
        }
    }

    StormOutcome play()
    {
        m_panel.build();
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &m_context, [this] { tick(); });
        timer.start(kTickMs);
        std::vector<std::thread> tellers;
        tellers.reserve(static_cast<std::size_t>(m_plan.tellers));
        for (int teller = 0; teller < m_plan.tellers; ++teller)
            tellers.emplace_back([this, teller] { runTeller(teller); });

        const auto isPlayed = [&] {
            return m_score.isOver() && m_ended == m_plan.tellers && m_nested == 0;
        };
        if (!waitFor(isPlayed, kStuckMs))
            giveUp();
        for (std::thread& teller : tellers)
            teller.join();
        m_host.calm();
        rest();
        return {m_host.watch.complaints() + m_complaints, m_host.watch.journal()};
    }

private:
    void runTeller(int teller)
    {
        StormHost::becomeTeller();
        while (const StormStep* step = m_score.next(teller, true)) {
            m_host.watch.note(step->describe());
            m_host.perform(*step);
        }
        ++m_ended;
    }

    /// Queues the next step, because a timer does not expire again inside its own event.
    void tick()
    {
        m_host.watch.beat();
        if (m_stepPending)
            return;
        m_stepPending = true;
        QMetaObject::invokeMethod(
            &m_context, [this] { runGuiStep(); }, Qt::QueuedConnection);
    }

    void runGuiStep()
    {
        m_stepPending = false;
        m_host.watch.beat();
        if (m_nested > kMostNested)
            return;
        ++m_nested;
        if (!m_host.isCalm()) {
            // This is done at every depth, because an open dialog keeps the steps around it from
            // ending.
            m_panel.tick();
            const StormStep* step =
                m_nested > kMostNested ? nullptr : m_score.next(StormStep::kGuiThread, false);
            if (step && step->kind < StormStep::FirstGuiStep)
                m_host.perform(*step);
            else if (step)
                m_panel.perform(*step);
        }
        --m_nested;
    }

    template <typename Condition>
    bool waitFor(const Condition& condition, int limitMs)
    {
        const QDeadlineTimer deadline(limitMs);
        while (!condition()) {
            if (deadline.hasExpired())
                return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return true;
    }

    /// Waits until all events have taken effect, then once more to see that nothing follows.
    void rest()
    {
        const bool closed = waitFor([this] { return m_panel.closeWindows(); }, kRestMs);
        const bool ended = m_host.finish();
        QCoreApplication::processEvents();
        m_panel.build();
        if (!closed || !ended || !passThrough()) {
            m_complaints.append(QStringLiteral("the panel does not come to rest"));
            return;
        }
        waitFor([this] { return differences().isEmpty(); }, kAgreementMs);
        if (!passThrough())
            m_complaints.append(QStringLiteral("the panel does not come to rest"));
        m_complaints += differences();
    }

    /// Raises device sets, which pass the work thread of the panel and the queue of the GUI thread.
    /// Returns whether the panel has asked for the text of a set that was raised here.
    bool passThrough()
    {
        const quint32 number = m_nextMark += 2;
        m_host.tellDeviceSets(number);
        return waitFor([this, number] { return m_host.lastDeviceSet() >= number; }, kRestMs);
    }

    QStringList differences() const
    {
        const QAbstractItemModel* model = m_panel.model();
        return model ? stormDifferences(m_host.project.state(), *model, m_plan.groupsInTurn)
                     : QStringList{QStringLiteral("there is no panel")};
    }

    /// Ends the process, because blocked threads cannot be joined.
    void giveUp()
    {
        const QString journal = m_host.watch.journal().join(QLatin1Char('\n'));
        qFatal("%s\n%s\nlocked up", qPrintable(m_plan.describe(int(m_plan.steps.size()))),
               qPrintable(journal));
    }

    const StormPlan& m_plan;
    Score m_score;
    StormHost m_host;
    StormPanel m_panel;
    QObject m_context;
    std::atomic<int> m_ended{0};
    bool m_stepPending = false;
    int m_nested = 0;
    quint32 m_nextMark = 1000;
    QStringList m_complaints;
};

} // namespace

StormOutcome playStorm(const StormPlan& plan, int stepCount)
{
    return Round(plan, stepCount).play();
}

int shrinkStorm(const StormPlan& plan, int failing, StormOutcome& outcome)
{
    constexpr int kAttempts = 3;
    int holds = 0;
    while (holds + 1 < failing) {
        const int middle = (holds + failing) / 2;
        bool failed = false;
        for (int attempt = 0; attempt < kAttempts && !failed; ++attempt) {
            const StormOutcome now = playStorm(plan, middle);
            failed = !now.isGood();
            if (failed)
                outcome = now;
        }
        (failed ? failing : holds) = middle;
    }
    return failing;
}
