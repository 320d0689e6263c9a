#include "host/workbench/dialogs/PlainText.h"

#include <QTextDocument>

QString PlainText::toolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString PlainText::menuEntry(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString PlainText::windowTitle(QString text)
{
    return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}
