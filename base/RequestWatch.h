#pragma once

#include <QList>
#include <QString>
#include <QUuid>
#include <QtGlobal>

#include <functional>
#include <memory>

/// Tells where the host does not do what the panel requested; see HostRequests.h. Works while the
/// contract checks are on.
namespace RequestWatch {

/// Returns what the host's records say instead of what was requested; empty if they agree. GUI
/// thread.
using Outcome = std::function<QString()>;

struct State;

/// A request that is about to be made: events that come from now on answer it.
class CRequest final
{
public:
    /// `operation` is one of HostRequests::kRequests. It is about the records of `subjects`.
    explicit CRequest(const char* operation, QList<QUuid> subjects = {});
    CRequest(const CRequest&) = delete;
    CRequest& operator=(const CRequest&) = delete;

    /// The host has returned, and has HostRequests::kFollowUpMs from now on. `outcome` is asked
    /// then, unless there was another request about the same records, or any event, in between. A
    /// request that is not awaited, as one that the host refused, is forgotten. GUI thread.
    void await(Outcome outcome = {});

private:
    const std::shared_ptr<State> m_state;
    const QList<QUuid> m_subjects;
};

/// Notes that the panel takes the row of `id` out by itself. Any thread.
void noteTakenOut(const QUuid& id);

/// Returns whether it did so since this was last asked. Any thread.
bool wasTakenOut(const QUuid& id);

/// Notes that the host tells event number `event`. Any thread.
void noteEvent(quint32 event);

} // namespace RequestWatch
