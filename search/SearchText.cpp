#include "search/SearchText.h"

#include "base/IPText.h"

#include <algorithm>

namespace {

QString folded(QString text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](QChar letter) { return letter.toCaseFolded(); });
    return text;
}

/// Returns whether a case-folded comparison of the letter equals the comparison of Qt's filter,
/// which folds some letters beyond ASCII differently.
bool isPlain(QChar letter)
{
    const QChar::Category category = letter.category();
    const bool hasCase = category == QChar::Letter_Uppercase || category == QChar::Letter_Lowercase
                         || category == QChar::Letter_Titlecase || letter.toCaseFolded() != letter;
    return letter.unicode() < 0x80 || (!hasCase && !letter.isSurrogate());
}

bool isOfNumbers(QChar letter)
{
    return (letter >= QLatin1Char('0') && letter <= QLatin1Char('9')) || letter == QLatin1Char('.')
           || letter == QLatin1Char('-');
}

} // namespace

SSearchedRow searchedRow(const QString& name, const CRecordCell::Key& processor)
{
    return {name, folded(name), shownText(processor)};
}

QString shownText(const CRecordCell::Key& processor)
{
    return processor.reachedByIp ? addressText(processor.ipAddress)
                                 : QString::number(qint64(processor.number) + 1);
}

CSearchText::CSearchText(const QString& text)
    : m_text(text)
    , m_folded(folded(text))
    , m_isOfNumbers(std::all_of(text.begin(), text.end(), ::isOfNumbers))
    , m_isPlain(std::all_of(text.begin(), text.end(), isPlain))
{
    if (!m_isPlain)
        m_pattern = QRegExp(text, Qt::CaseInsensitive, QRegExp::FixedString);
}

bool CSearchText::isIn(const SSearchedRow& row) const
{
    if (isEmpty())
        return false;
    if (m_isOfNumbers && row.shown.contains(m_text, Qt::CaseSensitive))
        return true;
    return m_isPlain ? row.foldedName.contains(m_folded, Qt::CaseSensitive)
                     : row.name.contains(m_pattern);
}
