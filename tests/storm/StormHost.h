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

/// A host that changes its project on several threads and raises the event of each change after the
/// change. Only one thread at a time changes a family and raises its events, so the events about
/// one identity come in the order of its changes.
///
/// The plan sets the habits of its answers (see StormHandler): they take time, change the project
/// and raise events themselves, wait for another thread that does so, or run an event loop.
class StormHost final
{
public:
    explicit StormHost(StormPlan plan);
    ~StormHost();

    StormProject project;
    StormWatch watch;

    void setObserver(CObserver* observer) { m_observer = observer; }

    /// Performs a step below StormStep::FirstGuiStep. On the GUI thread and inside an answer, takes
    /// another family if a thread holds the lock of the step's family.
    void perform(const StormStep& step);

    /// Delivers an event on the calling thread.
    void tell(quint32 event, const QList<QUuid>& ids = {});
    void tellDeviceSets(quint32 firstNumber);

    /// Queues an event that is delivered on the GUI thread by its event loop.
    void tellLater(quint32 event, const QList<QUuid>& ids = {});

    /// Removes processors on a separate thread, as after a request of the user.
    void removeLater(const QList<QUuid>& ids);

    /// Dissolves a group at once, or on that thread, and raises the event afterwards.
    void dissolve(const QUuid& group);

    /// Marks the calling thread as one that performs steps.
    static void becomeTeller();

    bool refills() const { return m_plan.refills; }

    /// Returns the lock for changes and events of a family. Only threads that deliver events wait
    /// for it.
    HostLock& family(int number) { return m_families[static_cast<std::size_t>(number)]; }
    std::chrono::milliseconds patience() const;

    // For StormHandler.
    quint32 roll();
    void dwell(const char* question);
    HostLock& answerLock() { return m_telling; }
    std::chrono::milliseconds answerPatience() const;
    void noteDeviceSet(quint32 number);
    quint32 lastDeviceSet() const { return m_lastDeviceSet; }

    /// Makes later answers return at once, and raises no more events.
    void calm();
    bool isCalm() const { return m_calm; }

    /// Waits until the threads of the host have finished their work. Processes the events of the
    /// GUI thread meanwhile. Returns false on timeout. GUI thread.
    bool finish();

    /// Keeps the GUI thread busy for `duration`.
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
    std::atomic<int> m_guiBudget; // ms that remain for answers on the GUI thread
    std::atomic<int> m_budget;    // ms that remain for other answers
    std::atomic<bool> m_calm{false};
    std::mutex m_pauseMutex;
    std::condition_variable m_over;
    QObject m_guiContext;
    HostThread m_helper; // raises the events that an answer waits for
    HostThread m_clerk;  // carries out requests of the user
};
