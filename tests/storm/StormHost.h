#pragma once

#include "tests/storm/HostLock.h"
#include "tests/storm/StormPlan.h"
#include "tests/storm/StormProject.h"
#include "tests/storm/StormWatch.h"
#include "tests/support/HostThread.h"

#include <QObject>

#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>

class CObserver;

/// A host whose project changes on several threads, and which tells every change after it has made
/// it. What concerns one family is changed and told by one thread at a time, so the events about
/// one identity come in the order of its changes.
///
/// Its answers (see StormHandler) have the habits of the plan: they take time, change and tell
/// something themselves, wait for another thread that does, or run an event loop.
class StormHost final
{
public:
    explicit StormHost(StormPlan plan);
    ~StormHost();

    StormProject project;
    StormWatch watch;

    void setObserver(CObserver* observer) { m_observer = observer; }

    /// Does what a step says, below StormStep::FirstGuiStep. On the GUI thread, and inside an
    /// answer, a family that somebody else is busy with is passed over for another one.
    void perform(const StormStep& step);

    /// Delivers an event on the calling thread.
    void tell(quint32 event, const QList<QUuid>& ids = {});
    void tellDeviceSets(quint32 firstNumber);

    /// Tells it on the GUI thread, when that gets back to its event loop.
    void tellLater(quint32 event, const QList<QUuid>& ids = {});

    /// Removes processors, as a user has asked, on a thread of its own.
    void removeLater(const QList<QUuid>& ids);

    /// Makes the calling thread one that steps run on.
    static void becomeTeller();

    bool refills() const { return m_plan.refills; }

    /// The right to change and tell what concerns a family; waits only on threads that tell.
    HostLock& family(int number) { return m_families[static_cast<std::size_t>(number)]; }
    std::chrono::milliseconds patience() const;

    // For StormHandler.
    quint32 roll();
    void dwell(const char* question);
    HostLock& answerLock() { return m_telling; }
    std::chrono::milliseconds answerPatience() const;
    void noteDeviceSet(quint32 number);
    quint32 lastDeviceSet() const { return m_lastDeviceSet; }

    /// From here on answers come at once, and nothing is told any more.
    void calm();
    bool isCalm() const { return m_calm; }

    /// Lets the threads of its own end what they have begun. GUI thread, with its events.
    bool finish();

    /// The GUI thread is busy with something of the host's.
    void pause(std::chrono::milliseconds duration);

private:
    void performFor(const StormStep& step, int family);
    void lookAgain(int family, quint32 dice);
    void tellNonsense(quint32 dice);
    void addGroup(int family, quint32 dice);
    void burst(int family, quint32 dice);
    StormStep drawStep();

    const StormPlan m_plan;
    std::atomic<CObserver*> m_observer{nullptr};
    std::array<HostLock, StormProject::kFamilies> m_families;
    HostLock m_groupTurn;
    HostLock m_telling;
    std::atomic<quint32> m_rolls{0};
    std::atomic<quint32> m_lastDeviceSet{0};
    std::atomic<int> m_guiBudget; // ms that answers on the GUI thread may still take
    std::atomic<int> m_budget;    // the others
    std::atomic<bool> m_calm{false};
    std::mutex m_pauseMutex;
    std::condition_variable m_over;
    QObject m_guiContext;
    HostThread m_helper; // tells what an answer waits for
    HostThread m_clerk;  // does what a user asked
};
