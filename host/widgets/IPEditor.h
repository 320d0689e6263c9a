#pragma once

#include <QString>

/// The text, cursor and selection of an address while it is edited.
///
/// The text always has four octets, which may be empty, separated by three dots. A place is a
/// number of characters from the start of the text. Each octet has at most three digits and is at
/// most 255. Only the octet with the cursor may have leading zeros.
class IPEditor final
{
public:
    enum class Selection { Drop, Extend };

    /// Returns the address; empty while an octet is empty.
    QString address() const;

    const QString& text() const { return m_text; }
    QString octet(int octet) const;
    bool isEmpty() const;

    int cursor() const { return m_cursor; }
    int anchor() const { return m_anchor; }
    int selectionStart() const { return qMin(m_cursor, m_anchor); }
    int selectionEnd() const { return qMax(m_cursor, m_anchor); }
    bool hasSelection() const { return m_cursor != m_anchor; }

    /// Returns the text to copy: the selection, or the address without one. Empty if it has no
    /// digit.
    QString copiedText() const;

    /// Return the octet at a place, and the places before its first and after its last digit.
    int octetAt(int place) const;
    int octetStart(int octet) const;
    int octetEnd(int octet) const;

    /// Moves the cursor to a place, which is limited to the text.
    void moveTo(int place, Selection selection = Selection::Drop);

    /// Move by one place. If a selection is dropped, move to its end on that side instead.
    void moveLeft(Selection selection);
    void moveRight(Selection selection);

    /// Move to the start of an octet: the current or the previous one, or the next one.
    void moveOctetLeft(Selection selection);
    void moveOctetRight(Selection selection);

    void moveHome(Selection selection);
    void moveEnd(Selection selection);

    void select(int anchor, int cursor);
    void selectOctet(int octet);
    void selectAll();

    /// Types a digit or a dot. Ignores any other character.
    void type(QChar character);

    /// Replaces everything by a whole address, or the selection by one to three digits. Returns
    /// false and changes nothing if `text` is neither of them or does not fit.
    bool paste(const QString& text);

    /// Erase the selection, or the digit before or after the cursor, also across a dot. Forward
    /// does nothing without a digit after the cursor.
    void eraseBackward();
    void eraseForward();

    void eraseSelection();

    /// Sets the whole address. Any other text empties all octets.
    void setAddress(const QString& text);

    /// Removes all leading zeros and the selection, as when the focus leaves the field.
    void finish();

private:
    bool insert(const QString& digits);
    void moveToNextOctet();
    void put(int anchor, int cursor);
    void tidy(int keptOctet);

    QString m_text = QStringLiteral("...");
    int m_cursor = 0;
    int m_anchor = 0;
    bool m_movedOn = false; // the last digit filled its octet, so the next dot is ignored
};
