#pragma once

#include <QString>
#include <QtGlobal>

// An entry of the IP list is a dotted address directly followed by a name in parentheses:
// "192.168.0.10(Left wing)".

/// Returns the IPv4 value of a dotted address; 0 for any other text.
quint32 addressOfText(const QString& text);

/// Returns the dotted text of an address.
QString addressText(quint32 address);

/// Returns the address before the first parenthesis; the whole entry if it has no parenthesis.
QString addressOfEntry(const QString& entry);

/// Returns the address of an entry in network byte order, which the host expects for a deletion; 0
/// if the entry has no valid address.
quint32 networkAddressOfEntry(const QString& entry);

/// Returns the line of an entry in the exported file, without the line end: the address, a comma
/// and the name. The name is the text between the first "(" and the first ")", or up to the end of
/// the entry if no ")" follows. Without a "(" the address is the whole entry, and the name starts
/// at the entry's beginning.
QString exportLine(const QString& entry);
