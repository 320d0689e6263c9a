#pragma once

#include "host/workbench/project/FaultRule.h"

#include <QList>
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <random>
#include <vector>

/// The rules by which the host makes faults, and how often each has struck. Thread-safe.
class FaultPlan final : public QObject
{
    Q_OBJECT

public:
    /// Tells whether an effect is possible now; one that is not does not count as a strike.
    using IsPossible = std::function<bool(FaultEffect)>;

    using QObject::QObject;

    /// Replaces the rules. A rule that stays in its place keeps its counts. Ends every keepThread()
    /// if the rules are other ones than before.
    void setRules(const QList<FaultRule>& rules);

    /// Starts to count anew, and the random numbers with it.
    void restart();

    /// Counts a call of `operation` and returns the rules that strike it, in their order.
    QList<FaultRule> strike(const Operations::Operation& operation, const IsPossible& isPossible);

    /// Counts an event and returns the rules that strike it, in their order.
    QList<FaultRule> strike(quint32 event);

    /// Returns how often the rules have changed.
    quint64 changes() const;

    /// Keeps the calling thread for so long, as a host does whose answer comes late: no events are
    /// processed meanwhile. Returns at once or earlier if the rules have changed more often than
    /// `changes`, as changes() was before the rule struck.
    void keepThread(std::chrono::milliseconds time, quint64 changes);

    /// Returns how often each rule has struck.
    QList<qint64> strikes() const;

signals:
    /// Emitted after a rule has struck, on the thread of the call or event.
    void struck();

private:
    struct Counted
    {
        FaultRule rule;
        std::minstd_rand random;
        qint64 seen = 0;
        qint64 strikes = 0;
    };

    static Counted fresh(const FaultRule& rule);
    template <typename IsAbout>
    QList<FaultRule> strikeIf(const IsAbout& isAbout, const IsPossible& isPossible);

    mutable std::mutex m_mutex;
    std::condition_variable m_rulesChanged;
    std::vector<Counted> m_rules; // guarded by m_mutex
    quint64 m_changes = 0;        // of the rules; guarded by m_mutex
};
