#pragma once

#include "base/RecordCell.h"

#include <QRegExp>
#include <QString>

/// The searched texts of a row of the tree.
struct SSearchedRow
{
    QString name;
    QString foldedName; ///< The name with the case of each letter folded.
    QString shown;      ///< The address or number that the processor is shown with.
};

SSearchedRow searchedRow(const QString& name, const CRecordCell::Key& processor);

/// Returns the address or number that a processor is shown with.
QString shownText(const CRecordCell::Key& processor);

/// A search text, prepared for matching many rows.
class CSearchText final
{
public:
    CSearchText() = default;
    explicit CSearchText(const QString& text);

    const QString& text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }

    /// Returns whether an address or a number can contain the text.
    bool isOfNumbers() const { return m_isOfNumbers; }

    /// Returns whether the shown address or number, or the name in any case, contains the text.
    /// False for an empty text.
    bool isIn(const SSearchedRow& row) const;

private:
    QString m_text;
    QString m_folded;
    bool m_isOfNumbers = false;
    bool m_isPlain = true;
    QRegExp m_pattern; // used if the text is not plain
};
