#pragma once

#include <QSettings>

/// The settings that the workbench keeps between runs, in the user's settings folder.
class WorkbenchSettings final : public QSettings
{
public:
    WorkbenchSettings()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Workbench"),
                    QStringLiteral("workbench"))
    {
    }
};
