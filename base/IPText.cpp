#include "base/IPText.h"

#include <QHostAddress>
#include <QtEndian>

quint32 addressOfText(const QString& text)
{
    return QHostAddress(text).toIPv4Address();
}

QString addressText(quint32 address)
{
    return QHostAddress(address).toString();
}

QString addressOfEntry(const QString& entry)
{
    return entry.left(entry.indexOf(QLatin1Char('(')));
}

quint32 networkAddressOfEntry(const QString& entry)
{
    return qToBigEndian(addressOfText(addressOfEntry(entry)));
}

QString exportLine(const QString& entry)
{
    // indexOf() returns -1 for a missing parenthesis. left() and mid() then take the rest of the
    // text.
    const int open = entry.indexOf(QLatin1Char('('));
    const int close = entry.indexOf(QLatin1Char(')'));
    return entry.left(open) + QLatin1Char(',') + entry.mid(open + 1, close - open - 1);
}
