#pragma once

#include <QStringList>

/// Returns free addresses that a dialog proposes when it opens: the first ones after the PC's own
/// address that the host accepts. Returns up to `wanted` (1 or 2) addresses, fewer when the search
/// gives up. In IP management mode the host refreshes its IP list first. GUI thread.
QStringList defaultAddresses(int wanted, bool ipManagementMode);
