#pragma once

#include "host/workbench/replay/Recording.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QString>
#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/// Where the panel behaved otherwise than in the recording.
struct Difference
{
    int line = 0;     ///< Of the recording; 0 for its end.
    QString recorded; ///< What the recording has there.
    QString came;     ///< What came instead.
};

/// How far a replay has come. Thread-safe.
class ReplayProgress final
{
    Q_DECLARE_TR_FUNCTIONS(ReplayProgress)

public:
    explicit ReplayProgress(std::shared_ptr<const Recording> recording);

    const Recording& recording() const { return *m_recording; }

    /// Compares a request of the panel with the next recorded one. Returns it, or null after the
    /// first difference, which is noted.
    const CTraceEntry* takeRequest(const QString& name, const QJsonObject& arguments);

    /// Returns the recorded answer to a question, null for none.
    const CTraceEntry* answer(const QString& name, const QJsonObject& arguments);

    /// An event is being told on this thread, as long as this object exists. Questions inside are
    /// answered as they were inside the recorded one.
    class Telling final
    {
    public:
        explicit Telling(qint64 event);
        ~Telling();
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;

    private:
        const qint64 m_former;
    };

    /// Blocks a thread that tells an event until the gestures before this question have been
    /// repeated, or half a second has passed, or 3 s for all questions of the event. So the panel
    /// gets the answer, and shows what the event changes, after these gestures, as it did in the
    /// recording.
    void waitForInputBefore(const CTraceEntry& question);

    /// Returns whether the panel may know less of `event` than it did before `driver`: it has asked
    /// fewer questions inside the event, or the last answer is more recent than it was then.
    bool isEventBehind(qint64 event, const CTraceEntry& driver) const;

    /// Notes a question that the recording has no answer to.
    void noteUnanswered(const QString& question);

    /// Returns these questions.
    QStringList unanswered() const;

    /// Counts a question of the panel's work thread.
    void countWorkQuestion();

    /// Returns whether the work thread still has to ask what it asked before `driver`.
    bool isWorkBehind(const CTraceEntry& driver) const;

    /// Return what comes next, null for nothing.
    const CTraceEntry* nextDriver() const;
    const CTraceEntry* nextRequest() const;

    /// Returns whether all requests have come that the panel made before `driver`.
    bool isDue(const CTraceEntry& driver) const;

    /// Marks `driver`, the next one, as repeated. Returns false if another thread has done so.
    bool take(const CTraceEntry& driver);

    /// Takes the next driver and returns it if the host did it inside `cause`: told an event or
    /// called the panel. What it did on the GUI thread is for the GUI thread only.
    const CTraceEntry* takeInside(const CTraceEntry& cause, bool isGuiThread);

    /// Takes the next driver and returns it if it is an event that another thread told before the
    /// end of `call`, which goes on on the GUI thread.
    const CTraceEntry* takeEventDuring(const CTraceEntry& call);

    /// Takes the next driver and returns it if it is an event right after the last one, on the same
    /// thread.
    const CTraceEntry* takeEventInARow();

    /// Returns whether the GUI thread did something between now and the end of `entry`.
    bool isGuiBusyUntilEndOf(const CTraceEntry& entry) const;

    /// Ends the replay, with its first difference or without one. Later calls have no effect.
    void end(std::optional<Difference> difference = {});

    bool isOver() const;
    std::optional<Difference> difference() const;

    /// Returns a number that grows with each step.
    qint64 steps() const;

private:
    /// What has been asked inside an event.
    struct Inside
    {
        std::size_t questions = 0;
        QElapsedTimer last;
        std::chrono::steady_clock::duration waited{}; // for the user
    };

    const CTraceEntry* driver() const;
    const CTraceEntry* request() const;
    bool hasInputBefore(const CTraceEntry& question) const;

    const std::shared_ptr<const Recording> m_recording;
    mutable std::mutex m_mutex;
    std::condition_variable m_taken;        // a driver, or the end
    std::size_t m_driver = 0;               // guarded by m_mutex
    std::size_t m_request = 0;              // guarded by m_mutex
    std::size_t m_workQuestions = 0;        // guarded by m_mutex
    int m_asked = 0;                        // guarded by m_mutex; since the last step, the question
                                            // inside which the next driver was
    QHash<qint64, Inside> m_inside;         // guarded by m_mutex; by event
    std::vector<QString> m_unanswered;      // guarded by m_mutex
    qint64 m_position = 0;                  // guarded by m_mutex
    bool m_isOver = false;                  // guarded by m_mutex
    std::optional<Difference> m_difference; // guarded by m_mutex
};
