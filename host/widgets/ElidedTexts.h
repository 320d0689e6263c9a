#pragma once

#include <QFontMetrics>
#include <QHash>
#include <QString>

#include <optional>
#include <utility>

/// Texts in one line, elided to the room they have, and kept from one paint to the next. To find
/// that a text fits takes as long as to lay it out for drawing, and rows are painted again and
/// again with the same texts. GUI thread.
class ElidedTexts final
{
public:
    /// Returns `text` elided at its right end to `width` pixels, empty if there is no room.
    QString elided(const QFontMetrics& metrics, const QString& text, int width);

private:
    std::optional<QFontMetrics> m_metrics;           // of the texts kept
    QHash<std::pair<QString, int>, QString> m_texts; // by whole text and width
};
