#include "sdk/validate/ChildSystem.h"

#include <QRegularExpression>

QStringList ChildSystem::arguments(int argc, char** argv)
{
    QStringList all;
    for (int index = 0; index < argc; ++index)
        all.append(QString::fromLocal8Bit(argv[index]));
    return all;
}

void ChildSystem::crashWithoutDialog()
{
}

void ChildSystem::addDefaults(QProcessEnvironment& environment)
{
    Q_UNUSED(environment)
}

QString ChildSystem::quoted(const QString& argument)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_./:=-]+$"));
    if (plain.match(argument).hasMatch())
        return argument;
    return QLatin1Char('\'') + QString(argument).replace(QLatin1Char('\''), QStringLiteral("'\\''"))
           + QLatin1Char('\'');
}

QString ChildSystem::crashOf(const QProcess& process)
{
    Q_UNUSED(process)
    return QStringLiteral("the process was ended by a signal");
}
