#include "host/workbench/AddressTexts.h"

#include "host/workbench/Project.h"

#include <QStringList>

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
