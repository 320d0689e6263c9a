#pragma once

#include <QString>
#include <QtGlobal>

#include <atomic>
#include <optional>

/// Tells a host's developer where the host breaks the contract of `Interface/`.
///
/// Off unless the environment variable TARGETSELECT_CHECK is "1" or "fatal", or the log category
/// targetselect.check is switched on. Each finding then is one line in the host's log (AppendLog)
/// and in that category: a stable code, what was expected and what came, the event, the thread.
/// With "fatal" the process ends at the first one. docs/diagnostics.md explains each code.
namespace ContractCheck {

/// A code's number. Numbers are never reused; docs/diagnostics.md has a paragraph for each.
enum class Finding {
    NoHandler = 1,
    ForeignHandler = 2,
    NoEvent = 3,
    EventBeforeInitialize = 4,
    HandlerReplaced = 5,
    NoApplication = 6,
    InitOnWrongThread = 7,
    NullParent = 8,
    CallOnWrongThread = 9,
    NeverShown = 10,
    TwoParents = 11,
    PanelIsDead = 12,
    ArgumentType = 13,
    UnknownNumber = 14,
    NotInTree = 15,
    AlreadyInTree = 16,
    UnknownIdentity = 17,
    ForeignIdentity = 18,
    NullIdentity = 19,
    RepeatedIdentity = 20,
    Contradiction = 21,
    UnknownGroup = 22,
    SlowAnswer = 23,
    EventWaited = 24,
    NoFollowUp = 25,
    NotCarriedOut = 26,
    Exception = 27,
    EventWithoutPanel = 28,
    UnequalLists = 29,
};

constexpr int kFindings = 29;

/// Returns the code as it stands in the log and in the docs, such as "TSA-E13". E is a breach of
/// the contract, W is what works but is hardly meant.
QString code(Finding finding);

/// Returns what the finding is about, in a few words; the title of its paragraph in the docs.
QString title(Finding finding);

/// Reads the switches anew, and tells of repeated findings anew. Any thread.
void configure();

extern std::atomic<bool> switchedOn;

/// Returns whether findings are wanted. Any thread; costs the read of a flag.
inline bool isOn()
{
    return switchedOn.load(std::memory_order_relaxed);
}

/// Tells of a finding if findings are wanted. `what` says what was expected and what came. `event`
/// is the number of the event that it is about; by default the one that this thread works for. The
/// same line is told the 1st, 10th, 100th … time that it comes. Any thread; the caller holds no
/// lock, as the host's log runs here.
void report(Finding finding, const QString& what, std::optional<quint32> event = std::nullopt);

/// While one lives, this thread works for a host event; for the panel itself, even inside an event,
/// where no number is given.
class EventScope final
{
public:
    explicit EventScope(std::optional<quint32> event);
    ~EventScope();
    EventScope(const EventScope&) = delete;
    EventScope& operator=(const EventScope&) = delete;

    /// Returns whether this thread works for an event.
    static bool isUnderWay();

private:
    std::optional<quint32> m_outer;
};

/// While one lives, this thread asks the host for what may well not be there: records of another
/// identity are no findings.
class Probe final
{
public:
    Probe();
    ~Probe();
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    /// Returns whether this thread is in the middle of one.
    static bool isUnderWay();
};

} // namespace ContractCheck
