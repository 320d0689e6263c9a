#include "plugin/WrappedLabel.h"

#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace {

// More of a name cannot be seen, and takes long to measure.
constexpr int kMostOfName = 1000;

/// Sets `text` in at most `mostLines` lines and returns their height. Line breaks in it count as
/// blanks.
qreal layOut(QTextLayout& layout, int width, int mostLines)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    qreal height = 0;
    layout.beginLayout();
    for (int n = 0; n < mostLines; ++n) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

/// Keeps what follows a colon in its line.
QString joined(QString text)
{
    const QChar wordJoiner(0x2060);
    return text.replace(QLatin1Char(':'), QString(QLatin1Char(':')) + wordJoiner);
}

} // namespace

CWrappedLabel::CWrappedLabel(int width, int mostLines, QWidget* parent)
    : QLabel(parent)
    , m_mostLines(mostLines)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setFixedWidth(width);
}

void CWrappedLabel::setSentence(const QString& sentence, const QStringList& names)
{
    m_sentence = sentence;
    m_names = names;
    setText(sentence.arg(names.join(QLatin1Char(','))));
}

QSize CWrappedLabel::sizeHint() const
{
    QTextLayout layout(shownText(), font(), this);
    const qreal height = layOut(layout, maximumWidth(), m_mostLines);
    return {maximumWidth(), static_cast<int>(std::ceil(height))};
}

QSize CWrappedLabel::minimumSizeHint() const
{
    return sizeHint();
}

int CWrappedLabel::heightForWidth(int) const
{
    return sizeHint().height();
}

QString CWrappedLabel::shownText() const
{
    QString whole = joined(text());
    if (m_sentence.isEmpty() || fits(whole))
        return whole;
    int widest = 0;
    for (int step = maximumWidth() * m_mostLines / 2; step > 0; step /= 2) {
        if (fits(withElidedNames(widest + step)))
            widest += step;
    }
    return withElidedNames(widest);
}

bool CWrappedLabel::fits(const QString& shown) const
{
    QTextLayout layout(shown, font(), this);
    layOut(layout, maximumWidth(), m_mostLines);
    const QTextLine last = layout.lineAt(layout.lineCount() - 1);
    return last.isValid() && last.textStart() + last.textLength() == shown.size();
}

QString CWrappedLabel::withElidedNames(int nameWidth) const
{
    QStringList names;
    for (const QString& name : m_names)
        names.append(fontMetrics().elidedText(name.left(kMostOfName), Qt::ElideRight, nameWidth));
    return joined(m_sentence.arg(names.join(QLatin1Char(','))));
}

void CWrappedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QString shown = shownText();
    QTextLayout layout(shown, font(), this);
    layOut(layout, width(), m_mostLines);
    for (int n = 0; n < layout.lineCount(); ++n) {
        const QTextLine line = layout.lineAt(n);
        const int end = line.textStart() + line.textLength();
        if (n + 1 < layout.lineCount() || end == shown.size()) {
            line.draw(&painter, {0, 0});
            continue;
        }
        const QString rest = shown.mid(line.textStart(), 2 * line.textLength());
        painter.drawText(QPointF(0, line.y() + line.ascent()),
                         fontMetrics().elidedText(rest, Qt::ElideRight, width()));
    }
}
