#pragma once

#include <QList>
#include <QtGlobal>

#include <functional>

/// Proposes up to `wanted` addresses that `isRejected` does not refuse, beginning behind `base`.
///
/// Behind .255 the search goes on at .2 of the next third octet, after 255 at 1. A second octet 255
/// becomes 1, a first octet 0 or 255 becomes 192.
///
/// All searches share one count of refusals. With the 257th, the search for an address is given up,
/// and a further one ends with its first refusal. So for one address at most 257 questions are
/// asked, for two at most 258, and the list may be shorter than wanted.
QList<quint32> proposeIPAddresses(quint32 base, int wanted,
                                  const std::function<bool(quint32)>& isRejected);
