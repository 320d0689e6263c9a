#pragma once

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QVariant>

/// While one lives, the user's desktop is another folder.
class OtherDesktop final
{
public:
    OtherDesktop(const OtherDesktop&) = delete;
    OtherDesktop& operator=(const OtherDesktop&) = delete;

#ifdef Q_OS_WIN
    OtherDesktop(const QTemporaryDir&, const QString& desktop)
        : m_folders(QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\"
                                   "CurrentVersion\\Explorer\\User Shell Folders"),
                    QSettings::NativeFormat)
        , m_usual(m_folders.value(QStringLiteral("Desktop")))
    {
        set(QDir::toNativeSeparators(desktop));
    }

    ~OtherDesktop()
    {
        set(m_usual);
    }

private:
    void set(const QVariant& desktop)
    {
        m_folders.setValue(QStringLiteral("Desktop"), desktop);
        m_folders.sync();
    }

    QSettings m_folders;
    const QVariant m_usual;
#else
    OtherDesktop(const QTemporaryDir& folder, const QString& desktop)
        : m_usual(qgetenv("XDG_CONFIG_HOME"))
    {
        QFile folders(folder.filePath(QStringLiteral("user-dirs.dirs")));
        if (folders.open(QIODevice::WriteOnly))
            folders.write("XDG_DESKTOP_DIR=\"" + desktop.toUtf8() + "\"\n");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    }

    ~OtherDesktop()
    {
        if (m_usual.isNull())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", m_usual);
    }

private:
    const QByteArray m_usual;
#endif
};
