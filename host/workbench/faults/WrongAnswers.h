#pragma once

#include "sdk/relay/HandlerRelay.h"

#include <QVariant>

/// Returns `answer` with another identity: in a list, the first one becomes that of the last, so
/// that it stands there twice; elsewhere it becomes one that nobody has. Always the same for the
/// same answer.
QVariant withWrongIdentity(const QVariant& answer);

/// Returns the answer of a host that refuses `operation`.
CHandlerRelay::Answer refusalOf(const Operations::Operation& operation);
