#include "sdk/validate/ChildSystem.h"

#include <QRegularExpression>

#include <windows.h>

#include <shellapi.h>

/// `argv` has lost the letters that the code page of the system lacks.
QStringList ChildSystem::arguments(int argc, char** argv)
{
    Q_UNUSED(argc)
    Q_UNUSED(argv)
    QStringList all;
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int index = 0; index < count; ++index)
        all.append(QString::fromWCharArray(words[index]));
    LocalFree(words);
    return all;
}

void ChildSystem::crashWithoutDialog()
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

/// Qt warns if the platform without a display finds no fonts.
void ChildSystem::addDefaults(QProcessEnvironment& environment)
{
    const QString fonts = QStringLiteral("QT_QPA_FONTDIR");
    if (!environment.contains(fonts)) {
        environment.insert(fonts, environment.value(QStringLiteral("SystemRoot"))
                                      + QStringLiteral("\\Fonts"));
    }
}

QString ChildSystem::quoted(const QString& argument)
{
    static const QRegularExpression path(QStringLiteral("^[A-Za-z]:/"));
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_.:=\\\\-]+$"));
    QString word = argument;
    if (path.match(word).hasMatch())
        word.replace(QLatin1Char('/'), QLatin1Char('\\'));
    return plain.match(word).hasMatch() ? word : QLatin1Char('"') + word + QLatin1Char('"');
}

QString ChildSystem::crashOf(const QProcess& process)
{
    return QStringLiteral("the process was ended by exception 0x%1")
        .arg(static_cast<quint32>(process.exitCode()), 8, 16, QLatin1Char('0'));
}
