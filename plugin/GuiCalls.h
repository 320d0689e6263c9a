#pragma once

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

/// Calls from other threads that run on the GUI thread, one after the other in the order in which
/// they were made, and of which a caller may wait for the end.
///
/// A wait always ends: when the call has run; when it was dropped, because this object was
/// destroyed; when the GUI thread stays inside a question to the host, which may be waiting for the
/// caller; when close() was called; and after patience(). In the last three cases the call stays
/// queued and runs later, in its turn.
///
/// Lives on the GUI thread, wherever it is created.
class CGuiCalls final : public QObject
{
    Q_OBJECT

public:
    using Call = std::function<void()>;

    explicit CGuiCalls(QObject* parent = nullptr);
    ~CGuiCalls() override;

    /// Has calls wait, on the GUI thread too, while `isBusy` says so, until resume(). It is asked
    /// on the GUI thread. To be set before the first call.
    void waitWhile(std::function<bool()> isBusy) { m_isBusy = std::move(isBusy); }

    /// Has the calls run that had to wait, soon. GUI thread.
    void resume();

    /// Runs `call` at once on the GUI thread, behind what is queued. Else, and where what is queued
    /// has to wait, queues it. Any thread.
    void post(Call call);

    /// The same, but another thread waits for the end of `call`. Hold no lock that the GUI thread
    /// may want. Returns whether it has run. Any thread.
    bool run(Call call);

    /// Has what was queued so far run: waits for it, or on the GUI thread runs it now, unless a
    /// call is what is running. Costs next to nothing when nothing is queued. Returns whether
    /// nothing is left. Any thread.
    bool settle();

    /// Ends all waits, now and to come, until open(). Any thread.
    void close();
    void open();

    /// How long a caller waits at most.
    std::chrono::milliseconds patience() const { return m_patience; }
    void setPatience(std::chrono::milliseconds patience) { m_patience = patience; }

    /// While one lives, the GUI thread is inside a question to the host, which may raise events on
    /// another thread and wait for them there. Callers are released when one question takes longer
    /// than a question usually does. Any thread; only the GUI thread's counts.
    class CHostQuestion final
    {
    public:
        explicit CHostQuestion(CGuiCalls& calls);
        ~CHostQuestion();
        CHostQuestion(const CHostQuestion&) = delete;
        CHostQuestion& operator=(const CHostQuestion&) = delete;

    private:
        CGuiCalls* m_calls;
    };

protected:
    void customEvent(QEvent* event) override;

private:
    struct Room;
    struct Ticket;

    bool isHere() const;
    bool isBusy() const { return m_isBusy && m_isBusy(); }
    bool isQueued() const;
    std::shared_ptr<Ticket> enqueue(Call call);
    void runNext();
    void poke();

    std::shared_ptr<Room> m_room;
    std::function<bool()> m_isBusy;
    int m_direct = 0; // nested calls that were not queued; GUI thread
    int m_missed = 0; // pokes that came while no call could run; GUI thread
    std::chrono::milliseconds m_patience{5000};
};
