#include "host/widgets/ToolTip.h"

#include "host/widgets/ToolTipFilter.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr char kFilterName[] = "ToolTipPlacement";
constexpr int kWidestLine = 480;
constexpr int kLongestWord = 40; // longest word that is not broken, in characters

bool isLong(const QString& text)
{
    const QFontMetrics metrics(QToolTip::font());
    const QStringList lines = text.split(QLatin1Char('\n'));
    return std::any_of(lines.cbegin(), lines.cend(), [&metrics](const QString& line) {
        return metrics.horizontalAdvance(line) > kWidestLine;
    });
}

/// Returns rich text, because QToolTip wraps nothing else, with possible breaks in long words.
QString wrappingText(const QString& text)
{
    QString parts;
    int wordLength = 0;
    for (const QChar character : text) {
        wordLength = character.isSpace() ? 0 : wordLength + 1;
        if (wordLength > kLongestWord && !character.isLowSurrogate()) {
            parts += QChar(0x200B); // zero-width space
            wordLength = 1;
        }
        parts += character;
    }
    return QStringLiteral("<p style=\"margin:0; white-space:pre-wrap\">%1</p>")
        .arg(parts.toHtmlEscaped());
}

} // namespace

void CToolTip::ShowText(const QString& text, const QPoint& position, QWidget* widget,
                        const QRect& area, int milliseconds)
{
    const bool plain = !Qt::mightBeRichText(text) && !isLong(text);
    QToolTip::showText(position, plain ? text : wrappingText(text), widget, area, milliseconds);
}

void CToolTip::HideText()
{
    QToolTip::hideText();
}

void installToolTipPlacement(QCoreApplication& application)
{
    const QString name = QLatin1String(kFilterName);
    if (application.findChild<QObject*>(name, Qt::FindDirectChildrenOnly))
        return;
    auto* filter = new ToolTipFilter(&application);
    filter->setObjectName(name);
    application.installEventFilter(filter);
}
