#include "host/widgets/IPEditor.h"

#include "host/widgets/IPOctets.h"

#include <QStringList>

#include <utility>

namespace {

constexpr QLatin1Char kDot('.');

QString octetOf(const QString& text, int octet)
{
    return text.section(kDot, octet, octet);
}

/// Returns `text` with the digits between `start` and `end` replaced by `digits`. Dots are kept.
QString replaced(const QString& text, int start, int end, const QString& digits)
{
    const int dots = text.midRef(start, end - start).count(kDot);
    return text.left(start) + digits + QString(dots, kDot) + text.mid(end);
}

} // namespace

QString IPEditor::address() const
{
    return IPOctets::normalizedAddress(m_text);
}

QString IPEditor::octet(int octet) const
{
    return octetOf(m_text, octet);
}

bool IPEditor::isEmpty() const
{
    return m_text.size() == IPOctets::kOctets - 1;
}

QString IPEditor::copiedText() const
{
    if (!hasSelection() || selectionEnd() - selectionStart() == m_text.size()) {
        QString whole = address();
        if (!whole.isEmpty() || !hasSelection())
            return whole;
    }
    const QString selected = m_text.mid(selectionStart(), selectionEnd() - selectionStart());
    return selected.count(kDot) == selected.size() ? QString() : selected;
}

int IPEditor::octetAt(int place) const
{
    return m_text.leftRef(place).count(kDot);
}

int IPEditor::octetStart(int octet) const
{
    return octet == 0 ? 0 : m_text.section(kDot, 0, octet - 1).size() + 1;
}

int IPEditor::octetEnd(int octet) const
{
    return m_text.section(kDot, 0, octet).size();
}

void IPEditor::moveTo(int place, Selection selection)
{
    const int cursor = qBound(0, place, m_text.size());
    put(selection == Selection::Extend ? m_anchor : cursor, cursor);
}

void IPEditor::moveLeft(Selection selection)
{
    const bool collapses = hasSelection() && selection == Selection::Drop;
    moveTo(collapses ? selectionStart() : m_cursor - 1, selection);
}

void IPEditor::moveRight(Selection selection)
{
    const bool collapses = hasSelection() && selection == Selection::Drop;
    moveTo(collapses ? selectionEnd() : m_cursor + 1, selection);
}

void IPEditor::moveOctetLeft(Selection selection)
{
    const int octet = octetAt(m_cursor);
    const int start = octetStart(octet);
    moveTo(m_cursor > start || octet == 0 ? start : octetStart(octet - 1), selection);
}

void IPEditor::moveOctetRight(Selection selection)
{
    const int octet = octetAt(m_cursor);
    moveTo(octet == IPOctets::kOctets - 1 ? octetEnd(octet) : octetStart(octet + 1), selection);
}

void IPEditor::moveHome(Selection selection)
{
    moveTo(0, selection);
}

void IPEditor::moveEnd(Selection selection)
{
    moveTo(m_text.size(), selection);
}

void IPEditor::select(int anchor, int cursor)
{
    put(qBound(0, anchor, m_text.size()), qBound(0, cursor, m_text.size()));
}

void IPEditor::selectOctet(int octet)
{
    select(octetStart(octet), octetEnd(octet));
}

void IPEditor::selectAll()
{
    if (isEmpty())
        moveTo(0);
    else
        select(0, m_text.size());
}

void IPEditor::type(QChar character)
{
    if (character == kDot)
        moveToNextOctet();
    else if (IPOctets::isOctet(character))
        insert(character);
}

bool IPEditor::paste(const QString& text)
{
    const QString trimmed = text.trimmed();
    const QString address = IPOctets::normalizedAddress(trimmed);
    if (address.isEmpty())
        return IPOctets::isOctet(trimmed) && insert(trimmed);
    setAddress(address);
    return true;
}

void IPEditor::eraseBackward()
{
    if (!hasSelection()) {
        const bool crosses = m_cursor > 0 && m_text.at(m_cursor - 1) == kDot;
        const int end = crosses ? m_cursor - 1 : m_cursor;
        const int start = end > octetStart(octetAt(end)) ? end - 1 : end;
        put(start, end);
    }
    eraseSelection();
}

void IPEditor::eraseForward()
{
    if (!hasSelection()) {
        const QStringRef rest = m_text.midRef(m_cursor);
        const bool crosses = rest.startsWith(kDot) && rest.count(kDot) < rest.size();
        const int start = crosses ? m_cursor + 1 : m_cursor;
        const int end = start < octetEnd(octetAt(start)) ? start + 1 : start;
        put(start, end);
    }
    eraseSelection();
}

void IPEditor::eraseSelection()
{
    const int start = selectionStart();
    m_text = replaced(m_text, start, selectionEnd(), QString());
    put(start, start);
}

void IPEditor::setAddress(const QString& text)
{
    const QString address = IPOctets::normalizedAddress(text);
    m_text = address.isEmpty() ? QStringLiteral("...") : address;
    const int cursor = address.isEmpty() ? 0 : m_text.size();
    put(cursor, cursor);
}

void IPEditor::finish()
{
    put(m_cursor, m_cursor);
    tidy(-1);
}

bool IPEditor::insert(const QString& digits)
{
    const int start = selectionStart();
    const int octet = octetAt(start);
    const QString candidate = replaced(m_text, start, selectionEnd(), digits);
    if (!IPOctets::isOctet(octetOf(candidate, octet)))
        return false;
    m_text = candidate;
    const int cursor = start + digits.size();
    put(cursor, cursor);
    const bool full = octetEnd(octet) - octetStart(octet) == IPOctets::kOctetDigits;
    if (full && cursor == octetEnd(octet) && octet + 1 < IPOctets::kOctets) {
        selectOctet(octet + 1);
        m_movedOn = true;
    }
    return true;
}

void IPEditor::moveToNextOctet()
{
    const int octet = octetAt(m_cursor);
    const bool skips = std::exchange(m_movedOn, false);
    if (!skips && octet + 1 < IPOctets::kOctets && octetEnd(octet) > octetStart(octet))
        selectOctet(octet + 1);
}

void IPEditor::put(int anchor, int cursor)
{
    m_anchor = anchor;
    m_cursor = cursor;
    m_movedOn = false;
    tidy(octetAt(cursor));
}

void IPEditor::tidy(int keptOctet)
{
    const int anchorOctet = octetAt(m_anchor);
    const int cursorOctet = octetAt(m_cursor);
    const int anchorDigits = m_anchor - octetStart(anchorOctet);
    const int cursorDigits = m_cursor - octetStart(cursorOctet);

    QStringList octets = m_text.split(kDot);
    for (int octet = 0; octet < IPOctets::kOctets; ++octet) {
        if (octet != keptOctet)
            octets[octet] = IPOctets::normalizedOctet(octets.at(octet));
    }
    m_text = octets.join(kDot);

    m_anchor = qMin(octetStart(anchorOctet) + anchorDigits, octetEnd(anchorOctet));
    m_cursor = qMin(octetStart(cursorOctet) + cursorDigits, octetEnd(cursorOctet));
}
