#pragma once

#include "base/HostQuestion.h"

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

/// Calls that run on the GUI thread, one after the other in the order in which they were made. A
/// call never runs inside another one, nor while the GUI thread is busy.
///
/// This class keeps the third law of the bridge: *nobody stands*. The GUI thread never waits for
/// another thread. Another thread may wait for the end of its call, but leaves when its patience is
/// at an end, when close() is called, and as soon as the GUI thread has been inside one question to
/// the host for longer than a question usually takes: the host may be waiting for that very thread.
/// The call stays queued and runs in its turn; isAwaited() tells it that nobody waits any more.
///
/// Lives on the GUI thread, wherever it is created.
class CGuiCalls final : public QObject
{
    Q_OBJECT

public:
    using Call = std::function<void()>;

    /// While the outermost one lives on a thread, the waits of that thread share one bound: those
    /// for one event, and those for the events that the host raises while it answers for the first.
    class SharedPatience final
    {
    public:
        SharedPatience();
        ~SharedPatience();
        SharedPatience(const SharedPatience&) = delete;
        SharedPatience& operator=(const SharedPatience&) = delete;
    };

    explicit CGuiCalls(QObject* parent = nullptr);
    ~CGuiCalls() override;

    /// Keeps calls queued while `isBusy` returns true, which is asked on the GUI thread. Whoever
    /// makes it return false again calls resume(). To be set before the first call.
    void waitWhile(std::function<bool()> isBusy) { m_isBusy = std::move(isBusy); }

    /// Schedules the calls that were due while the GUI thread was busy. GUI thread.
    void resume();

    /// On the GUI thread, runs `call` at once behind what is queued, unless that has to wait.
    /// Queues it on any other thread. `onQueued`, if given, runs while no other call can be queued
    /// or begin: just before `call` takes its place. Any thread.
    void post(Call call, const Call& onQueued = {});

    /// Does the same, but on another thread waits for the end of `call`. The caller holds no lock
    /// that the GUI thread may want. Returns whether the call has run. Any thread.
    bool run(Call call);

    /// Waits until what was queued so far has run; on the GUI thread, runs it now. Returns whether
    /// nothing is queued or running. Any thread.
    bool settle();

    /// Returns whether the caller of the running call waits for its end; true for a call made on
    /// the GUI thread that runs at once. GUI thread.
    bool isAwaited() const;

    /// Ends all waits, now and to come, until open(). Any thread.
    void close();
    void open();

    /// Closes for good and drops what is queued. GUI thread.
    void shutDown();

    /// Sets how long a wait lasts at most. Any thread.
    void setPatience(std::chrono::milliseconds patience) { m_patience = patience; }

protected:
    void customEvent(QEvent* event) override;

private:
    struct Line;
    struct Ticket;
    class Turn;

    bool isHere() const;
    bool isBusy() const { return m_isBusy && m_isBusy(); }
    bool isFree() const;
    std::shared_ptr<Ticket> enqueue(Call call, bool awaited, const Call& onQueued);
    bool runHere(Call call, const Call& onQueued);
    void runNext();
    void poke();

    std::shared_ptr<Line> m_line;
    std::function<bool()> m_isBusy;
    int m_missed = 0; // pokes that came while no call could run; GUI thread
    std::atomic<std::chrono::milliseconds> m_patience{std::chrono::milliseconds(5000)};
};
