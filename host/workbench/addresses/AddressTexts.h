#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

#include <optional>

/// Returns the dotted form of an address in host byte order: "192.168.0.1".
QString dottedAddress(quint32 address);

/// Reads the address of four dotted decimal numbers; returns false for any other text.
bool parseDottedAddress(const QString& text, quint32& address);

/// Returns several addresses as one text: "192.168.0.1, 192.168.0.2".
QString addressesText(const QList<quint32>& addresses);

/// Reads the addresses of such a text; returns nothing if a part of it is not an address.
std::optional<QList<quint32>> addressesOfText(const QString& text);
