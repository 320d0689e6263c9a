#pragma once

#include "processortree/RecordCell.h"

#include <QRegExp>
#include <QString>

/// What a search looks at in a row of the tree.
struct SSearchedRow
{
    QString name;
    QString foldedName; ///< In lower case as far as case counts for nothing, letter by letter.
    QString shown;      ///< The address or the number that a processor is shown with.
};

SSearchedRow searchedRow(const QString& name, const CRecordCell::Key& processor);

/// The address or the number that a processor is shown with.
QString shownText(const CRecordCell::Key& processor);

/// A text to look for in many rows, prepared once.
class CSearchText final
{
public:
    CSearchText() = default;
    explicit CSearchText(const QString& text);

    const QString& text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }

    /// Whether an address or a number can hold it.
    bool isOfNumbers() const { return m_isOfNumbers; }

    /// Whether the address or number shown holds it, or the name does, in whatever case. Not with
    /// an empty text.
    bool isIn(const SSearchedRow& row) const;

private:
    QString m_text;
    QString m_folded;
    bool m_isOfNumbers = false;
    bool m_isPlain = true;
    QRegExp m_pattern; // for what is not plain
};
