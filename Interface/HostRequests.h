#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <algorithm>
#include <iterator>

/// What follows a request of the panel: the events with which the host answers, or what its records
/// say afterwards. docs/integrating.md shows the same as a table; the contract checks go by it, and
/// so does the log of the workbench.
///
/// The events may be told inside the request or later, on any thread.
namespace HostRequests {

/// No event; ends the list of a request.
constexpr int kNone = -1;

/// How long after a request the host has told its event, and changed its records, in milliseconds.
constexpr int kFollowUpMs = 2000;

/// What follows one operation. A host changes its project first and tells the events then.
struct Request
{
    const char* operation; ///< Of ITargetSelectInterfaceHandler.
    const char* thread;    ///< On which it comes.
    int events[3];         ///< One of these follows; none where the panel shows the change at once.
    const char* order;     ///< How often the events are told, and behind what; empty for none.
    const char* outcome;   ///< What the host's records say then.
    const char* refusal;   ///< What a host does that cannot do it.
    const char* untilThen; ///< What the panel does until one has taken effect, or at once.
};

/// Text that several requests share.
/// @{
constexpr const char* kThread = "GUI";
constexpr const char* kAdditionOrder = "18 for each one, or 19 once";
constexpr const char* kAdditionOutcome = "the new processors are listed";
constexpr const char* kAdditionRefusal = "adds those that it can, or none, and tells only those";
constexpr const char* kAdditionUntilThen = "shows nothing; selects and scrolls to what arrives";
/// @}

/// All requests that change the project.
constexpr Request kRequests[] = {
    {"AddProcessors",
     kThread,
     {18, 19, 16},
     kAdditionOrder,
     kAdditionOutcome,
     kAdditionRefusal,
     kAdditionUntilThen},
    {"AddProcessorsWithIps",
     kThread,
     {18, 19, 16},
     kAdditionOrder,
     kAdditionOutcome,
     kAdditionRefusal,
     kAdditionUntilThen},
    {"AddProcessorsFromIpList",
     kThread,
     {18, 19, 16},
     kAdditionOrder,
     kAdditionOutcome,
     kAdditionRefusal,
     kAdditionUntilThen},
    {"DeleteProcessors",
     kThread,
     {20, 21, 16},
     "20 for each one, or 21 once",
     "the processors are no longer known",
     "deletes those that it can, or none, and tells only those",
     "keeps the rows"},
    {"CreateGroup",
     kThread,
     {17, 16, kNone},
     "17 before any event about a processor of the group",
     "the group is known under the identity that was returned",
     "returns the null identity",
     "shows nothing; opens the field for the name of the group when it arrives, or moves the "
     "selected processors there"},
    {"Ungroup",
     kThread,
     {kNone, kNone, kNone},
     "",
     "the group is no longer known",
     "keeps the group and the records, and tells 16",
     "takes the group out on return and moves its processors to the root, each with a "
     "`SetProcessorGroup`"},
    {"SetProcessorGroup",
     kThread,
     {kNone, kNone, kNone},
     "",
     "the processors' records name the group",
     "keeps the records, and tells 16",
     "has moved the rows already"},
    {"RenameProcessor",
     kThread,
     {kNone, kNone, kNone},
     "",
     "the record has the name, unless it was refused",
     "returns false",
     "shows the name on return, unless it was refused"},
    {"RenameGroup",
     kThread,
     {kNone, kNone, kNone},
     "",
     "the record has the name",
     "keeps the name, and tells 16",
     "shows the name on return"},
};

/// Returns the request that calls `operation`, or null if it is none that changes the project.
inline const Request* find(const char* operation)
{
    const auto* const found =
        std::find_if(std::begin(kRequests), std::end(kRequests), [&](const Request& request) {
            return qstrcmp(request.operation, operation) == 0;
        });
    return found == std::end(kRequests) ? nullptr : found;
}

/// Returns whether event number `event` answers `request`.
constexpr bool isFollowedBy(const Request& request, quint32 event)
{
    for (const int number : request.events) {
        if (number != kNone && static_cast<quint32>(number) == event)
            return true;
    }
    return false;
}

/// Returns the events that answer `request`, such as "17 or 16"; empty if none has to.
inline QString eventNumbers(const Request& request)
{
    QStringList numbers;
    for (const int number : request.events) {
        if (number != kNone)
            numbers.append(QString::number(number));
    }
    return numbers.join(QStringLiteral(" or "));
}

} // namespace HostRequests
