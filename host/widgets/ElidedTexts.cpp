#include "host/widgets/ElidedTexts.h"

namespace {

/// Texts to keep: two for each row of the largest project, at a few widths.
constexpr int kMostTexts = 2048;

} // namespace

QString ElidedTexts::elided(const QFontMetrics& metrics, const QString& text, int width)
{
    if (width <= 0)
        return {};
    if (m_metrics != metrics || m_texts.size() >= kMostTexts) {
        m_metrics = metrics;
        m_texts.clear();
    }
    QString& kept = m_texts[{text, width}];
    if (kept.isNull())
        kept = metrics.elidedText(text, Qt::ElideRight, width, Qt::TextSingleLine);
    return kept;
}
