#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QString>

/// The rules of a dotted IPv4 address as text. Digits are those of ASCII; other scripts' are not.
namespace IPOctets {

constexpr int kOctets = 4;
constexpr int kOctetDigits = 3;

/// Whether `text` is one to three digits, 255 at most. Leading zeros are allowed.
HOSTWIDGETS_EXPORT bool isOctet(const QString& text);

/// An octet without leading zeros; an empty text stays empty.
HOSTWIDGETS_EXPORT QString normalizedOctet(const QString& octet);

/// The address in `text`, without leading zeros and without the white space around it; empty when
/// it is none.
HOSTWIDGETS_EXPORT QString normalizedAddress(const QString& text);

} // namespace IPOctets
