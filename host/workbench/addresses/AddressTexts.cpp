#include "host/workbench/addresses/AddressTexts.h"

#include <QStringList>

#include <algorithm>

QString dottedAddress(quint32 address)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(address >> 24U & 0xFFU)
        .arg(address >> 16U & 0xFFU)
        .arg(address >> 8U & 0xFFU)
        .arg(address & 0xFFU);
}

bool parseDottedAddress(const QString& text, quint32& address)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return false;
    quint32 value = 0;
    for (const QString& part : parts) {
        const bool digits = std::all_of(part.begin(), part.end(), [](QChar character) {
            return character >= QLatin1Char('0') && character <= QLatin1Char('9');
        });
        if (part.isEmpty() || part.size() > 3 || !digits || part.toUInt() > 255)
            return false;
        value = value << 8U | part.toUInt();
    }
    address = value;
    return true;
}

QString addressesText(const QList<quint32>& addresses)
{
    QStringList texts;
    for (const quint32 address : addresses)
        texts.append(dottedAddress(address));
    return texts.join(QStringLiteral(", "));
}

std::optional<QList<quint32>> addressesOfText(const QString& text)
{
    QList<quint32> addresses;
    const QStringList parts = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        quint32 address = 0;
        if (part.trimmed().isEmpty())
            continue;
        if (!parseDottedAddress(part.trimmed(), address))
            return std::nullopt;
        addresses.append(address);
    }
    return addresses;
}
