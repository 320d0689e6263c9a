#include "host/widgets/IPOctets.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr int kLargestOctet = 255;

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

bool IPOctets::isOctet(const QString& text)
{
    return !text.isEmpty() && text.size() <= kOctetDigits
           && std::all_of(text.cbegin(), text.cend(), isDigit) && text.toInt() <= kLargestOctet;
}

QString IPOctets::normalizedOctet(const QString& octet)
{
    return octet.isEmpty() ? octet : QString::number(octet.toInt());
}

QString IPOctets::normalizedAddress(const QString& text)
{
    QStringList octets = text.trimmed().split(QLatin1Char('.'));
    if (octets.size() != kOctets || !std::all_of(octets.cbegin(), octets.cend(), isOctet))
        return {};
    std::transform(octets.cbegin(), octets.cend(), octets.begin(), normalizedOctet);
    return octets.join(QLatin1Char('.'));
}
