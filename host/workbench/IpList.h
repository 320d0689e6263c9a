#pragma once

#include <QString>
#include <QStringList>

/// Entries of the host's IP list: the dotted address directly followed by the name in parentheses.

QString ipEntry(const QString& ip, const QString& name);

/// What stands before the first "(".
QString ipOfEntry(const QString& entry);

/// What stands between the first "(" and the closing ")".
QString nameOfEntry(const QString& entry);

/// Whether an entry of `entries` has this address.
bool containsIp(const QStringList& entries, quint32 address);

/// Takes away every entry with this address; returns whether there was one.
bool removeIp(QStringList& entries, quint32 address);

/// Appends those of `fresh` whose address is not there yet. False when the list was full before all
/// had their place.
bool mergeIpEntries(QStringList& entries, const QStringList& fresh);

/// The entries of an address file: one "address,name" a line; lines without an address are left
/// out.
QStringList ipEntriesOfText(const QString& text);
