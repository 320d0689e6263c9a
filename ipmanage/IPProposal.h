#pragma once

#include <QList>
#include <QtGlobal>

#include <functional>

/// Returns up to `wanted` addresses after `base` that `isRejected` does not reject.
///
/// After .255 the search continues at .2 of the next third octet; third octet 255 is followed by 1.
/// A second octet 255 becomes 1, and a first octet 0 or 255 becomes 192.
///
/// The searches for all addresses share one count of rejections. The search for an address ends at
/// the 257th rejection, and each later search ends at its first rejection. So at most 257 addresses
/// are checked for one wanted address and 258 for two, and the result may be shorter than `wanted`.
QList<quint32> proposeIPAddresses(quint32 base, int wanted,
                                  const std::function<bool(quint32)>& isRejected);
