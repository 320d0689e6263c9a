#pragma once

#include <QtGlobal>

/// What follows a request of the panel: the events with which the host answers, or what its records
/// say afterwards. docs/integrating.md shows the same as a table; the contract checks go by it.
namespace HostRequests {

/// No event; ends the list of a request.
constexpr int kNone = -1;

/// How long after a request the host has told its event, and changed its records, in milliseconds.
constexpr int kFollowUpMs = 2000;

/// What follows one operation.
struct Request
{
    const char* operation; ///< Of ITargetSelectInterfaceHandler.
    int events[3];         ///< One of these follows; none where the panel shows the change at once.
    const char* outcome;   ///< What the host's records say then.
};

/// All requests that change the project.
constexpr Request kRequests[] = {
    {"AddProcessors", {18, 19, 16}, "the new processors are listed"},
    {"AddProcessorsWithIps", {18, 19, 16}, "the new processors are listed"},
    {"AddProcessorsFromIpList", {18, 19, 16}, "the new processors are listed"},
    {"DeleteProcessors", {20, 21, 16}, "the processors are no longer known"},
    {"CreateGroup", {17, 16, kNone}, "the group is known under the identity that was returned"},
    {"Ungroup", {kNone, kNone, kNone}, "the group is no longer known"},
    {"SetProcessorGroup", {kNone, kNone, kNone}, "the processors' records name the group"},
    {"RenameProcessor", {kNone, kNone, kNone}, "the record has the name, unless it was refused"},
    {"RenameGroup", {kNone, kNone, kNone}, "the record has the name"},
};

/// Returns whether event number `event` answers `request`.
constexpr bool isFollowedBy(const Request& request, quint32 event)
{
    for (const int number : request.events) {
        if (number != kNone && static_cast<quint32>(number) == event)
            return true;
    }
    return false;
}

} // namespace HostRequests
