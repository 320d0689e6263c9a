#include "sdk/validate/ExportedSymbols.h"

#include <QProcess>
#include <QStandardPaths>

std::optional<QStringList> exportedSymbols(const QString& library, QString& problem)
{
    const QString nm = QStandardPaths::findExecutable(QStringLiteral("nm"));
    if (nm.isEmpty()) {
        problem = QStringLiteral("there is no program \"nm\", which lists symbols");
        return std::nullopt;
    }
    QProcess process;
    process.start(nm, {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"),
                       QStringLiteral("--format=posix"), library});
    if (!process.waitForFinished()) {
        problem = QStringLiteral("nm cannot read the library");
        return std::nullopt;
    }
    QStringList names;
    const QStringList lines =
        QString::fromLocal8Bit(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QString name = line.section(QLatin1Char(' '), 0, 0).section(QLatin1Char('@'), 0, 0);
        const QString type = line.section(QLatin1Char(' '), 1, 1);
        if (QStringLiteral("TWVBDR").contains(type) && !type.isEmpty()
            && !name.contains(QLatin1String("_san")))
            names.append(name);
    }
    return names;
}
