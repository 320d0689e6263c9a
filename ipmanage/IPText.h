#pragma once

#include <QString>
#include <QtGlobal>

// An entry of the IP list is the dotted address directly followed by the entry's name in
// parentheses: "192.168.0.10(Left wing)".

/// The IPv4 value of a dotted address; 0 when `text` is none.
quint32 addressOfText(const QString& text);

/// The dotted text of an address.
QString addressText(quint32 address);

/// The address in front of the first parenthesis; all of `entry` when there is none.
QString addressOfEntry(const QString& entry);

/// The address of an entry in network byte order, as the host takes it for a deletion; 0 when the
/// entry has none.
quint32 networkAddressOfEntry(const QString& entry);

/// An entry's line in the exported file, without its end: the address, a comma, the name. The name
/// is what stands between the first "(" and the first ")". It runs to the end of the entry when no
/// ")" follows the "(". Without a "(" the address is the whole entry, and the name begins with the
/// entry too.
QString exportLine(const QString& entry);
