#pragma once

#include <QString>

/// The text, cursor and selection of an address while it is edited.
///
/// The text always has four octets with three dots between, of which the octets may be empty; a
/// place in it is the number of characters before. Every octet is at most three digits and 255.
/// Leading zeros stay only in the octet that the cursor is in.
class IPEditor final
{
public:
    enum class Selection { Drop, Extend };

    /// The address; empty while an octet is.
    QString address() const;

    const QString& text() const { return m_text; }
    QString octet(int octet) const;
    bool isEmpty() const;

    int cursor() const { return m_cursor; }
    int anchor() const { return m_anchor; }
    int selectionStart() const { return qMin(m_cursor, m_anchor); }
    int selectionEnd() const { return qMax(m_cursor, m_anchor); }
    bool hasSelection() const { return m_cursor != m_anchor; }

    /// What copying takes: the selection, or else the address. Empty without a digit in it.
    QString copiedText() const;

    /// The octet at a place, and the place before an octet's first digit and after its last.
    int octetAt(int place) const;
    int octetStart(int octet) const;
    int octetEnd(int octet) const;

    /// Moves the cursor to a place, out of range to the nearest one.
    void moveTo(int place, Selection selection = Selection::Drop);

    /// To the next place; with a selection that is dropped, to its end.
    void moveLeft(Selection selection);
    void moveRight(Selection selection);

    /// To the start of the octet, from there of the one before; to the start of the next one.
    void moveOctetLeft(Selection selection);
    void moveOctetRight(Selection selection);

    void moveHome(Selection selection);
    void moveEnd(Selection selection);

    void select(int anchor, int cursor);
    void selectOctet(int octet);
    void selectAll();

    /// Types a digit or a dot; any other character is ignored.
    void type(QChar character);

    /// Puts a whole address in place of all, or one to three digits in place of the selection;
    /// false, and nothing changes, when `text` is neither or does not fit.
    bool paste(const QString& text);

    /// Erases the selection, or else the digit before or behind the cursor, across a dot. Goes
    /// forward only as long as there is a digit left.
    void eraseBackward();
    void eraseForward();

    void eraseSelection();

    /// Takes an address as a whole; any other text empties it.
    void setAddress(const QString& text);

    /// Drops the leading zeros of all octets and the selection, as leaving the field does.
    void finish();

private:
    bool insert(const QString& digits);
    void toNextOctet();
    void put(int anchor, int cursor);
    void tidy(int keptOctet);

    QString m_text = QStringLiteral("...");
    int m_cursor = 0;
    int m_anchor = 0;
    bool m_movedOn = false; // the last digit filled its octet, so that a dot would skip one
};
