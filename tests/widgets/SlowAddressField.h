#pragma once

#include <QString>

#include <array>

/// A reference implementation of the address field: four texts, and two places that consist of an
/// octet and a digit. Each operation works digit by digit.
class SlowAddressField final
{
public:
    struct Place
    {
        int octet = 0;
        int digit = 0;
    };

    void type(QChar character);
    void left(bool extend);
    void right(bool extend);
    void octetLeft(bool extend);
    void octetRight(bool extend);
    void home(bool extend);
    void end(bool extend);
    void backspace();
    void erase();
    void eraseOctetLeft();
    void eraseOctetRight();
    void selectAll();
    void paste(const QString& text);
    void setText(const QString& text);
    void cut();
    void leave();

    /// Returns the text that copying puts into the clipboard.
    QString copied() const;

    QString address() const;
    QString shown() const;
    int cursor() const { return flat(m_cursor); }
    int anchor() const { return flat(m_anchor); }

private:
    int flat(const Place& place) const;
    bool selects() const;
    bool selected(int octet, int digit) const;
    bool isEmpty() const;
    void go(Place place, bool extend);
    void select(int octet);
    void dropZeros(int keptOctet);
    void eraseSelected();
    void put(const QString& digits);

    std::array<QString, 4> m_octets;
    Place m_cursor;
    Place m_anchor;
    bool m_justFilled = false;
};
