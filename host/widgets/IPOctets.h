#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QString>

/// The syntax of a dotted IPv4 address. Only ASCII digits count as digits.
namespace IPOctets {

constexpr int kOctets = 4;
constexpr int kOctetDigits = 3;

/// Returns whether `text` has one to three digits and is at most 255. Leading zeros are allowed.
HOSTWIDGETS_EXPORT bool isOctet(const QString& text);

/// Returns `octet` without leading zeros. An empty text stays empty.
HOSTWIDGETS_EXPORT QString normalizedOctet(const QString& octet);

/// Returns the address in `text` without leading zeros and surrounding white space; empty if `text`
/// is not an address.
HOSTWIDGETS_EXPORT QString normalizedAddress(const QString& text);

} // namespace IPOctets
