#pragma once

#include <QColor>
#include <QString>

/// The findings of the panel's contract checks, as they stand in the log:
/// "TSA-E13 Argument of another type: …", with "file:line function: " before the code.
namespace Findings {

/// Returns the code, such as "TSA-E13"; empty for a text that is no finding.
QString code(const QString& text);

/// Returns whether the finding is a breach of the contract; the others are hints.
bool isBreach(const QString& text);

/// Returns what the manual says about the code, after an empty line; empty if it says nothing.
QString help(const QString& text);

/// Returns the colour of the line, legible on the surfaces of the theme.
QColor colour(const QString& text);

} // namespace Findings
