#include "host/widgets/MessageText.h"

#include <QEvent>
#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace {

/// Breaks `text` into lines of `width` and returns their total height.
qreal layOut(QTextLayout& layout, qreal width)
{
    layout.setTextOption([] {
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        return option;
    }());
    qreal height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

QString lines(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return text.replace(QLatin1Char('\n'), QChar::LineSeparator);
}

} // namespace

MessageText::MessageText(const QString& text, int width, QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setText(text);
    setFixedWidth(width);
    fitHeight();
}

void MessageText::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitHeight();
}

void MessageText::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    QTextLayout layout(lines(text()), font(), this);
    layOut(layout, width());
    layout.draw(&painter, {0, 0});
}

void MessageText::fitHeight()
{
    QTextLayout layout(lines(text()), font(), this);
    setFixedHeight(static_cast<int>(std::ceil(layOut(layout, width()))));
}
