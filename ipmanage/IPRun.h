#pragma once

#include <QtGlobal>

#include <functional>

/// Passes `count` consecutive addresses from `start` on to `emitAddress`. `start` itself is not
/// checked. A `count` below 1 emits nothing.
///
/// Addresses that `isRejected` rejects are skipped and do not count. After .255 the run continues
/// at .1 of the next third octet, and this .1 is not checked. When the third octet is 255, the
/// carry is combined with the second octet by a bitwise or: an odd second octet stays unchanged, so
/// the run repeats earlier third octets. Each such carry counts as one address although it emits
/// nothing, and the run continues at .2.
///
/// The run stops when `emitAddress` returns false; `isRejected` cannot stop it.
///
/// The run always ends: each check advances the last octet, and passing 255 counts as one address.
/// So at most 255 * (count - 1) addresses are checked.
void generateIPRun(quint32 start, int count, const std::function<bool(quint32)>& isRejected,
                   const std::function<bool(quint32)>& emitAddress);
