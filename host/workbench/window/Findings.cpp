#include "host/workbench/window/Findings.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace {

const QRegularExpression& codeExpression()
{
    static const QRegularExpression expression(QStringLiteral("TSA-[EW]\\d\\d"));
    return expression;
}

/// Reads the sections of the manual by their codes.
QHash<QString, QString> readManual()
{
    QHash<QString, QString> sections;
    QFile file(QStringLiteral(":/Workbench/diagnostics.md"));
    if (!file.open(QIODevice::ReadOnly))
        return sections;
    const QStringList parts =
        QString::fromUtf8(file.readAll()).split(QStringLiteral("\n### "), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        const QString title = part.section(QLatin1Char('\n'), 0, 0);
        const QString code = Findings::code(title);
        const QString section = part.section(QStringLiteral("\n## "), 0, 0);
        if (!code.isEmpty() && title.startsWith(code))
            sections.insert(code, section.section(QLatin1Char('\n'), 1).trimmed());
    }
    return sections;
}

} // namespace

QString Findings::code(const QString& text)
{
    return codeExpression().match(text).captured();
}

bool Findings::isBreach(const QString& text)
{
    return code(text).startsWith(QStringLiteral("TSA-E"));
}

QString Findings::help(const QString& text)
{
    static const QHash<QString, QString> manual = readManual();
    const QString section = manual.value(code(text));
    return section.isEmpty() ? QString() : QStringLiteral("\n\n") + section;
}

QColor Findings::colour(const QString& text)
{
    return isBreach(text) ? QColor(255, 138, 128) : QColor(240, 196, 96);
}
