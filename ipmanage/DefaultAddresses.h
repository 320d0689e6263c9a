#pragma once

#include <QStringList>

/// Free addresses that a dialog proposes when it opens: the next ones after the PC's own that the
/// host takes. Up to `wanted`, which is 1 or 2; fewer when the search gives up. Brings the host's
/// IP list up to date first when that is what they are for. GUI thread.
QStringList defaultAddresses(int wanted, bool ipManagementMode);
