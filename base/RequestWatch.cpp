#include "base/RequestWatch.h"

#include "Interface/HostRequests.h"
#include "base/ContractCheck.h"
#include "base/TargetSelectHandler.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QTimer>

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

struct RequestWatch::State
{
    const HostRequests::Request& request;
    bool isAnswered = false; // guarded like the list of them
};

namespace {

struct Open
{
    std::mutex mutex;
    std::vector<std::weak_ptr<RequestWatch::State>> states;
    quint64 events = 0;
    QHash<QUuid, quint64> requests; // about that record
    QSet<QUuid> takenOut;
};

// Never destroyed: other threads may tell events while the process ends.
Open& open()
{
    static auto* const instance = new Open;
    return *instance;
}

/// Returns what happened so far that may change the records of `subjects`.
quint64 happeningsSoFar(const QList<QUuid>& subjects)
{
    const std::lock_guard guard(open().mutex);
    quint64 happenings = open().events;
    for (const QUuid& subject : subjects)
        happenings += open().requests.value(subject);
    return happenings;
}

bool isAnswered(const RequestWatch::State& state)
{
    const std::lock_guard guard(open().mutex);
    return state.isAnswered;
}

} // namespace

RequestWatch::CRequest::CRequest(const char* operation, QList<QUuid> subjects)
    : m_state(new State{*HostRequests::find(operation)})
    , m_subjects(std::move(subjects))
{
    const std::lock_guard guard(open().mutex);
    auto& states = open().states;
    states.erase(std::remove_if(states.begin(), states.end(),
                                [](const auto& state) { return state.expired(); }),
                 states.end());
    states.push_back(m_state);
    for (const QUuid& subject : m_subjects)
        ++open().requests[subject];
}

void RequestWatch::CRequest::await(Outcome outcome)
{
    const auto judge = [state = m_state, subjects = m_subjects, outcome = std::move(outcome),
                        happenings = happeningsSoFar(m_subjects),
                        panel = HandlerPlace::CPanelWatch()] {
        // A panel that has gone wants to know nothing any more.
        if (panel.isOver() || !HandlerPlace::current())
            return;
        const HostRequests::Request& request = state->request;
        const QString events = HostRequests::eventNumbers(request);
        if (!events.isEmpty() && !isAnswered(*state)) {
            ContractCheck::report(ContractCheck::Finding::NoFollowUp,
                                  QStringLiteral("%1 is followed by event %2, none came in %3 ms")
                                      .arg(QLatin1String(request.operation), events)
                                      .arg(HostRequests::kFollowUpMs));
        } else if (outcome && happenings == happeningsSoFar(subjects)) {
            const QString contradiction = outcome();
            if (!contradiction.isEmpty()) {
                ContractCheck::report(ContractCheck::Finding::NotCarriedOut,
                                      QStringLiteral("after %1 %2, but %3")
                                          .arg(QLatin1String(request.operation),
                                               QLatin1String(request.outcome), contradiction));
            }
        }
    };
    if (auto* const application = QCoreApplication::instance())
        QTimer::singleShot(HostRequests::kFollowUpMs, application, judge);
}

void RequestWatch::noteTakenOut(const QUuid& id)
{
    const std::lock_guard guard(open().mutex);
    open().takenOut.insert(id);
}

bool RequestWatch::wasTakenOut(const QUuid& id)
{
    const std::lock_guard guard(open().mutex);
    return open().takenOut.remove(id);
}

void RequestWatch::noteEvent(quint32 event)
{
    const std::lock_guard guard(open().mutex);
    ++open().events;
    for (const auto& weak : open().states) {
        const auto state = weak.lock();
        if (state && HostRequests::isFollowedBy(state->request, event))
            state->isAnswered = true;
    }
}
