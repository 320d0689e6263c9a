#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"

#include <memory>
#include <utility>

/// The host's handler, the one way to reach the host. Empty while there is no panel, or when the
/// host gave its layer no handler or one of another kind.
///
/// Ask for it anew for each call and hold it only that long: a host may replace it at any time, and
/// the one in hand lives until the call ends. While the GUI thread holds it, it counts as being
/// inside a question to the host, and threads that wait for the GUI thread do not do so for ever.
/// Any thread.
std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler();

/// Asks the handler of the moment one question, as in `askHost(&Host::IsRestrictedMode)`. Without
/// one the answer is the empty one: no, zero, nothing. Any thread.
template <typename Result, typename... Parameters, typename... Arguments>
Result askHost(Result (ITargetSelectInterfaceHandler::*question)(Parameters...),
               Arguments&&... arguments)
{
    const auto handler = GetTargetSelectHandler();
    return handler ? (handler.get()->*question)(std::forward<Arguments>(arguments)...) : Result();
}

using Host = ITargetSelectInterfaceHandler;
