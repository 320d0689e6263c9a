#include "tests/widgets/SlowAddressField.h"

#include <QStringList>

namespace {

bool isDigit(QChar character)
{
    return QStringLiteral("0123456789").contains(character);
}

bool fits(const QString& digits)
{
    int number = 0;
    for (const QChar digit : digits) {
        if (!isDigit(digit))
            return false;
        number = number * 10 + digit.digitValue();
    }
    return digits.size() < 4 && number < 256;
}

QString withoutZeros(QString octet)
{
    while (octet.size() > 1 && octet.at(0) == QLatin1Char('0'))
        octet.remove(0, 1);
    return octet;
}

/// Returns the four octets of an address; empty for any other text.
QStringList octetsOf(const QString& text)
{
    QStringList octets = text.simplified().split(QLatin1Char('.'));
    if (octets.size() != 4)
        return {};
    for (QString& octet : octets) {
        if (octet.isEmpty() || !fits(octet))
            return {};
        octet = withoutZeros(octet);
    }
    return octets;
}

} // namespace

void SlowAddressField::type(QChar character)
{
    if (isDigit(character)) {
        put(character);
        return;
    }
    if (character != QLatin1Char('.'))
        return;
    const bool skips = m_justFilled;
    m_justFilled = false;
    const int octet = m_cursor.octet;
    if (!skips && octet < 3 && !m_octets.at(static_cast<std::size_t>(octet)).isEmpty())
        select(octet + 1);
}

void SlowAddressField::left(bool extend)
{
    if (selects() && !extend) {
        go(flat(m_anchor) < flat(m_cursor) ? m_anchor : m_cursor, false);
    } else if (m_cursor.digit > 0) {
        go({m_cursor.octet, m_cursor.digit - 1}, extend);
    } else if (m_cursor.octet > 0) {
        const int octet = m_cursor.octet - 1;
        go({octet, m_octets.at(static_cast<std::size_t>(octet)).size()}, extend);
    } else {
        go(m_cursor, extend);
    }
}

void SlowAddressField::right(bool extend)
{
    if (selects() && !extend)
        go(flat(m_anchor) < flat(m_cursor) ? m_cursor : m_anchor, false);
    else if (m_cursor.digit < m_octets.at(static_cast<std::size_t>(m_cursor.octet)).size())
        go({m_cursor.octet, m_cursor.digit + 1}, extend);
    else if (m_cursor.octet < 3)
        go({m_cursor.octet + 1, 0}, extend);
    else
        go(m_cursor, extend);
}

void SlowAddressField::octetLeft(bool extend)
{
    if (m_cursor.digit == 0 && m_cursor.octet > 0)
        go({m_cursor.octet - 1, 0}, extend);
    else
        go({m_cursor.octet, 0}, extend);
}

void SlowAddressField::octetRight(bool extend)
{
    if (m_cursor.octet < 3)
        go({m_cursor.octet + 1, 0}, extend);
    else
        go({3, m_octets[3].size()}, extend);
}

void SlowAddressField::home(bool extend)
{
    go({0, 0}, extend);
}

void SlowAddressField::end(bool extend)
{
    go({3, m_octets[3].size()}, extend);
}

void SlowAddressField::backspace()
{
    m_justFilled = false;
    if (selects()) {
        eraseSelected();
        return;
    }
    if (m_cursor.digit == 0)
        left(false);
    if (m_cursor.digit > 0) {
        go({m_cursor.octet, m_cursor.digit - 1}, false);
        m_octets.at(static_cast<std::size_t>(m_cursor.octet)).remove(m_cursor.digit, 1);
    }
}

void SlowAddressField::erase()
{
    m_justFilled = false;
    if (selects()) {
        eraseSelected();
        return;
    }
    const auto octet = static_cast<std::size_t>(m_cursor.octet);
    if (m_cursor.digit == m_octets.at(octet).size()) {
        bool more = false;
        for (std::size_t next = octet + 1; next < m_octets.size(); ++next)
            more = more || !m_octets.at(next).isEmpty();
        if (more)
            right(false);
    }
    m_octets.at(static_cast<std::size_t>(m_cursor.octet)).remove(m_cursor.digit, 1);
}

void SlowAddressField::eraseOctetLeft()
{
    if (!selects())
        octetLeft(true);
    eraseSelected();
}

void SlowAddressField::eraseOctetRight()
{
    if (!selects())
        octetRight(true);
    eraseSelected();
}

void SlowAddressField::selectAll()
{
    if (isEmpty()) {
        home(false);
        return;
    }
    m_anchor = {0, 0};
    end(true);
}

void SlowAddressField::paste(const QString& text)
{
    if (!octetsOf(text).isEmpty())
        setText(text);
    else if (!text.simplified().isEmpty() && fits(text.simplified()))
        put(text.simplified());
}

void SlowAddressField::setText(const QString& text)
{
    const QStringList octets = octetsOf(text);
    for (int octet = 0; octet < 4; ++octet)
        m_octets.at(static_cast<std::size_t>(octet)) = octets.value(octet);
    if (isEmpty())
        home(false);
    else
        end(false);
}

void SlowAddressField::cut()
{
    if (copied().isEmpty())
        return;
    if (!selects())
        setText(QString());
    else
        eraseSelected();
}

void SlowAddressField::leave()
{
    m_anchor = m_cursor;
    m_justFilled = false;
    dropZeros(-1);
}

QString SlowAddressField::copied() const
{
    QString part;
    bool all = true;
    for (int octet = 0; octet < 4; ++octet) {
        const QString& digits = m_octets.at(static_cast<std::size_t>(octet));
        for (int digit = 0; digit < digits.size(); ++digit) {
            if (selected(octet, digit))
                part += digits.at(digit);
            else
                all = false;
        }
        if (octet < 3) {
            if (selected(octet, digits.size()))
                part += QLatin1Char('.');
            else
                all = false;
        }
    }
    if ((!selects() || all) && !address().isEmpty())
        return address();
    return part.count(QLatin1Char('.')) == part.size() ? QString() : part;
}

QString SlowAddressField::address() const
{
    QStringList octets;
    for (const QString& octet : m_octets) {
        if (octet.isEmpty())
            return {};
        octets.append(withoutZeros(octet));
    }
    return octets.join(QLatin1Char('.'));
}

QString SlowAddressField::shown() const
{
    return m_octets[0] + QLatin1Char('.') + m_octets[1] + QLatin1Char('.') + m_octets[2]
           + QLatin1Char('.') + m_octets[3];
}

int SlowAddressField::flat(const Place& place) const
{
    int characters = place.digit;
    for (int octet = 0; octet < place.octet; ++octet)
        characters += m_octets.at(static_cast<std::size_t>(octet)).size() + 1;
    return characters;
}

bool SlowAddressField::selects() const
{
    return cursor() != anchor();
}

/// Returns whether the character at a place is selected. The place after the last digit of an octet
/// is its dot.
bool SlowAddressField::selected(int octet, int digit) const
{
    const int place = flat({octet, digit});
    return place >= qMin(cursor(), anchor()) && place < qMax(cursor(), anchor());
}

bool SlowAddressField::isEmpty() const
{
    return shown() == QLatin1String("...");
}

void SlowAddressField::go(Place place, bool extend)
{
    m_justFilled = false;
    m_cursor = place;
    if (!extend)
        m_anchor = place;
    dropZeros(place.octet);
}

void SlowAddressField::select(int octet)
{
    go({octet, 0}, false);
    go({octet, m_octets.at(static_cast<std::size_t>(octet)).size()}, true);
}

void SlowAddressField::dropZeros(int keptOctet)
{
    for (int octet = 0; octet < 4; ++octet) {
        QString& digits = m_octets.at(static_cast<std::size_t>(octet));
        if (octet == keptOctet)
            continue;
        digits = withoutZeros(digits);
        for (Place* place : {&m_cursor, &m_anchor}) {
            if (place->octet == octet)
                place->digit = qMin(place->digit, digits.size());
        }
    }
}

void SlowAddressField::eraseSelected()
{
    std::array<QString, 4> left;
    for (int octet = 0; octet < 4; ++octet) {
        const auto place = static_cast<std::size_t>(octet);
        for (int digit = 0; digit < m_octets.at(place).size(); ++digit) {
            if (!selected(octet, digit))
                left.at(place) += m_octets.at(place).at(digit);
        }
    }
    const Place start = cursor() < anchor() ? m_cursor : m_anchor;
    m_octets = left;
    go(start, false);
}

void SlowAddressField::put(const QString& digits)
{
    SlowAddressField attempt = *this;
    if (attempt.selects())
        attempt.eraseSelected();
    attempt.m_justFilled = false;
    const auto octet = static_cast<std::size_t>(attempt.m_cursor.octet);
    attempt.m_octets.at(octet).insert(attempt.m_cursor.digit, digits);
    if (!fits(attempt.m_octets.at(octet)))
        return;
    attempt.go({attempt.m_cursor.octet, attempt.m_cursor.digit + digits.size()}, false);
    if (octet < 3 && attempt.m_cursor.digit == 3) {
        attempt.select(attempt.m_cursor.octet + 1);
        attempt.m_justFilled = true;
    }
    *this = attempt;
}
