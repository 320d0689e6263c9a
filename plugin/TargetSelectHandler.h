#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"

#include <memory>

/// The host's handler, the one way to reach the host. Empty while there is no panel, or when the
/// host gave its layer no handler or one of another kind.
///
/// Ask for it anew for each call and hold it only that long: a host may replace it at any time, and
/// the one in hand lives until the call ends. While the GUI thread holds it, it counts as being
/// inside a question to the host, and threads that wait for the GUI thread do not do so for ever.
/// Any thread.
std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler();
