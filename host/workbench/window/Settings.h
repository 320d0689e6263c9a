#pragma once

#include <QSettings>

/// What the workbench keeps from one run to the next, in the user's own settings folder.
class WorkbenchSettings final : public QSettings
{
public:
    WorkbenchSettings()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Workbench"),
                    QStringLiteral("workbench"))
    {
    }
};
